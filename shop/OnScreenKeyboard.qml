import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// A keyboard for the remote, over the lower half of the screen that it fills, while its field wants it.
FullScreenCover {
    id: keyboard

    required property SearchField field

    readonly property KeyboardController controller: field.keyboard
    readonly property Component keys: FocusScreen {
        id: board

        // On every side of the keys, within what every display shows.
        readonly property real sideMargin: 80
        readonly property real bottomMargin: 60
        readonly property real topMargin: 28

        // The focused key grows over its edge.
        readonly property real spacing: 12
        readonly property real columnPitch: (area.width + spacing) / keyboard.controller.keys.columns
        readonly property real rowPitch: (area.height + spacing) / keyboard.controller.keys.rows

        FullBleed {
            id: bleed
        }

        Rectangle {
            x: bleed.x
            y: board.height / 2
            width: bleed.width
            height: bleed.y + bleed.height - y
            color: StationPalette.inkNavy

            Rectangle {
                width: parent.width
                height: 2
                color: StationPalette.faded(StationPalette.cream, 0.35)
            }
        }

        FocusSection {
            id: area

            anchors.fill: parent
            anchors.leftMargin: board.sideMargin
            anchors.rightMargin: board.sideMargin
            anchors.topMargin: board.height / 2 + board.topMargin
            anchors.bottomMargin: board.bottomMargin

            Repeater {
                model: keyboard.controller.keys

                PlateButton {
                    id: key

                    required property int index
                    required property string caption
                    required property int row
                    required property int column
                    required property int span

                    x: column * board.columnPitch
                    y: row * board.rowPitch
                    z: activeFocus ? 1 : 0
                    width: span * board.columnPitch - board.spacing
                    height: board.rowPitch - board.spacing
                    text: caption
                    size: 36
                    onSelected: keyboard.controller.press(index)
                    Component.onCompleted: keyboard.controller.typeAt(key)
                }
            }
        }
    }

    anchors.fill: parent
    screen: controller.shown ? keys : null
    onDismissed: controller.close()
}
