pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Front
import Quillmere.News
import Quillmere.Screen

// Row of buttons at the top of the display, one for each station. It scrolls if they do not fit. It must be at the
// origin of the canvas; the row extends to the edges of the display.
FocusSection {
    id: strip

    required property Clock clock
    property alias stations: list.stations
    property alias current: list.current

    signal picked(tunerStation station)

    readonly property real padding: 14

    implicitHeight: plates.height + 2 * padding

    TunerList {
        id: list

        stripWidth: display.width
        onPicked: station => strip.picked(station)
    }

    FullBleed {
        id: display

        PixelRectangle {
            width: parent.width
            height: strip.height
            color: StationPalette.faded(StationPalette.soot, 0.9)
        }

        ScrollArea {
            width: parent.width
            height: strip.height
            orientation: Qt.Horizontal
            // More than the space between two buttons, so that part of the next one is visible.
            revealMargin: 300
            contentExtent: plates.x + plates.width + list.sidePadding

            StationLabel {
                id: caption

                x: list.sidePadding
                anchors.verticalCenter: parent.verticalCenter
                text: NewsTexts.channels
                size: 20
                color: StationPalette.faded(StationPalette.parchment, 0.6)
            }

            LazyStack {
                id: plates

                x: caption.x + caption.width + list.spacing
                y: strip.padding
                height: 64
                orientation: Qt.Horizontal
                spacing: list.spacing
                cacheBuffer: 400
                model: list

                TunerButton {
                    required property int index
                    required property real extent

                    tuner: list
                    clock: strip.clock
                    width: extent
                    height: plates.height
                    preferred: isCurrent
                    onSelected: list.pick(index)
                }
            }
        }
    }
}
