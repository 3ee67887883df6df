import QtQuick
import Quillmere.Front
import Quillmere.News
import Quillmere.Screen

// The stations to choose from, across the top of the screen; it moves where they are more than it has room for. It
// stands at the canvas's origin, and its ground reaches to the edges of the display.
FocusSection {
    id: strip

    property alias stations: list.stations
    property alias current: list.current

    signal picked(tunerStation station)

    readonly property real sidePadding: 50
    readonly property real padding: 14
    readonly property real spacing: 18
    // Room for a plate that has grown.
    readonly property real growth: 10

    implicitHeight: 64 + 2 * padding

    TunerList {
        id: list

        onPicked: station => strip.picked(station)
    }

    FullBleed {
        id: display

        Rectangle {
            width: parent.width
            height: strip.height - display.y
            color: StationPalette.faded(StationPalette.soot, 0.9)
        }
    }

    StationLabel {
        id: caption

        x: strip.sidePadding
        anchors.verticalCenter: parent.verticalCenter
        text: NewsTexts.channels
        size: 20
        color: StationPalette.faded(StationPalette.parchment, 0.6)
    }

    ScrollArea {
        id: room

        anchors.left: caption.right
        anchors.leftMargin: strip.spacing - strip.growth
        anchors.right: parent.right
        height: parent.height
        orientation: Qt.Horizontal
        // More than the space between two plates, so that the next one is seen coming.
        lead: 300
        contentExtent: strip.growth + plates.width + strip.sidePadding
        clip: contentExtent > width

        LazyStack {
            id: plates

            x: strip.growth
            y: strip.padding
            height: 64
            orientation: Qt.Horizontal
            spacing: strip.spacing
            ahead: 400
            model: list
            place: list.place
            onHeld: row => list.place = row

            TunerButton {
                required property int index
                required property real extent

                tuner: list
                width: extent
                preferred: isCurrent
                onSelected: list.pick(index)
            }
        }
    }
}
