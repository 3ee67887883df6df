import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// The line in which a query is typed: on a real keyboard at once, with the remote on the OnScreenKeyboard that its screen
// has for it.
Focusable {
    id: field

    property alias text: line.text
    readonly property alias keyboard: controller

    // The viewer has finished the text and wants it searched.
    signal submitted

    readonly property real corner: 14
    readonly property real margin: 26
    // Between the cursor and the placeholder.
    readonly property real gap: 8

    implicitHeight: 72
    onSelected: controller.open()
    Component.onCompleted: controller.typeAt(field)
    Accessible.role: Accessible.EditableText
    Accessible.name: line.text === "" ? controller.placeholder : line.text
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: field.selected()

    KeyboardController {
        id: controller

        line: line
        onSubmitted: field.submitted()
    }

    CardPlate {
        anchors.fill: parent
        radius: field.corner
        border: StationPalette.faded(StationPalette.cream, 0.35)
        borderWidth: 2
        fill: StationPalette.faded(StationPalette.cream, 0.08)
    }

    StationText {
        anchors.fill: line
        anchors.leftMargin: field.gap
        verticalAlignment: Text.AlignVCenter
        visible: line.text === "" && line.preeditText === ""
        text: controller.placeholder
        font: line.font
        color: StationPalette.faded(StationPalette.cream, 0.5)
        Accessible.ignored: true
    }

    TextInput {
        id: line

        anchors.fill: parent
        anchors.leftMargin: field.margin
        anchors.rightMargin: field.margin
        verticalAlignment: TextInput.AlignVCenter
        font: Typography.standard(32)
        color: StationPalette.cream
        selectionColor: StationPalette.teal
        selectedTextColor: StationPalette.cream
        clip: true
        activeFocusOnPress: false
        maximumLength: controller.longestText
        cursorVisible: field.activeFocus || controller.shown
        onCursorRectangleChanged: controller.tellInputMethod()
        Accessible.ignored: true
        Accessible.role: Accessible.EditableText
        Accessible.name: text

        // It does not blink, so that a set at rest draws nothing.
        cursorDelegate: Rectangle {
            width: 3
            visible: line.cursorVisible // qmllint disable unqualified
            color: StationPalette.amber
        }
    }

    FocusRing {
        lift: field.activeFocus ? 1 : 0
        corner: field.corner
    }
}
