import QtQuick
import Quillmere.Front

// A button in the default style of the program: a plate with an optional icon and a text.
StationButton {
    id: button

    property string text
    // An Icon.Name.
    property int icon: Icon.None
    // Font size of the text and side of the icon, in points.
    property int size: 28
    // Padding left and right of the label, in addition to `margin`.
    property real padding: 14
    property alias focusScale: plate.focusScale

    // Colour of the plate, and of the text without focus, when the plate is nearly transparent.
    property color plateColor: StationPalette.cream
    // Colour of the screen behind the button, and of the text with focus.
    property color backgroundColor: StationPalette.inkNavy

    readonly property real margin: 26
    readonly property color ink: StationPalette.mixed(plateColor, backgroundColor, lift)

    name: text
    implicitWidth: label.implicitWidth + 2 * (margin + padding)
    implicitHeight: size + 38

    StationPlate {
        id: plate

        lift: button.lift
        plateColor: button.plateColor

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
