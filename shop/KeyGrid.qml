pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// The keys of the on-screen keyboard, on a plate that hides the lower half of the screen below it.
FocusScreen {
    id: grid

    required property KeyboardController controller

    // Around the keys, in points; the keys, also an enlarged focused one, stay in the area that every display shows.
    readonly property real sideMargin: 90
    readonly property real bottomMargin: 64
    readonly property real topMargin: 28

    readonly property real spacing: 12
    readonly property real columnPitch: (area.width + spacing) / controller.keys.columns
    readonly property real rowPitch: (area.height + spacing) / controller.keys.rows

    FullBleed {
        id: display
    }

    Rectangle {
        x: display.x
        y: grid.height / 2
        width: display.width
        height: display.y + display.height - y
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
        anchors.leftMargin: grid.sideMargin
        anchors.rightMargin: grid.sideMargin
        anchors.topMargin: grid.height / 2 + grid.topMargin
        anchors.bottomMargin: grid.bottomMargin

        Repeater {
            model: grid.controller.keys

            PlateButton {
                id: key

                required property int index
                required property string caption
                required property string title
                required property int row
                required property int column
                required property int span

                x: column * grid.columnPitch
                y: row * grid.rowPitch
                z: activeFocus ? 1 : 0
                width: span * grid.columnPitch - grid.spacing
                height: grid.rowPitch - grid.spacing
                name: title
                text: caption
                size: 40
                // A wide key extends over its neighbours by no more points than a narrow one.
                focusScale: 1 + (StationMotion.plateScale - 1) / span
                onSelected: grid.controller.press(index)
                Component.onCompleted: grid.controller.addInputItem(key)
            }
        }
    }
}
