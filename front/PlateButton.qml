import QtQuick
import Quillmere.Front

// A button in the set's default style, with an icon and a text.
StationButton {
    id: button

    property string text
    // One of Icon's names.
    property int icon: Icon.None
    // Of the letters.
    property int size: 28
    // Beside the label, within what every plate leaves free.
    property real padding: 14
    property alias growth: plate.growth

    // Of the plate, and of the letters while they are on the ground that is seen through it.
    property color tone: StationPalette.cream
    property color ground: StationPalette.inkNavy

    readonly property real margin: 26
    readonly property color ink: StationPalette.mixed(tone, ground, lift)

    name: text
    implicitWidth: label.implicitWidth + 2 * (margin + padding)
    implicitHeight: size + 38

    StationPlate {
        id: plate

        lift: button.lift
        tone: button.tone

        Row {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 14

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.icon !== Icon.None
                width: button.size
                height: button.size
                name: button.icon
                color: button.ink
            }

            StationText {
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                font: Typography.standard(button.size)
                color: button.ink
                Accessible.ignored: true
            }
        }
    }
}
