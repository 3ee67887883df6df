import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// Text field for a query. A real keyboard types into it directly; with the remote, the viewer uses the OnScreenKeyboard
// that the screen provides for it.
Focusable {
    id: field

    property alias text: input.text
    readonly property alias keyboard: controller

    // The viewer submitted the text.
    signal submitted

    readonly property real corner: 14
    readonly property real margin: 26
    // Space between the cursor and the placeholder, in points.
    readonly property real gap: 8

    implicitHeight: 72
    onSelected: controller.open()
    Component.onCompleted: controller.addInputItem(field)
    Accessible.role: Accessible.EditableText
    Accessible.name: input.text === "" ? controller.placeholder : input.text
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: field.selected()

    KeyboardController {
        id: controller

        textInput: input
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
        anchors.fill: input
        anchors.leftMargin: field.gap
        verticalAlignment: Text.AlignVCenter
        visible: input.text === "" && input.preeditText === ""
        text: controller.placeholder
        font: input.font
        color: StationPalette.faded(StationPalette.cream, 0.5)
        Accessible.ignored: true
    }

    TextInput {
        id: input

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
        onCursorRectangleChanged: controller.updateInputMethod()
        Accessible.ignored: true
        Accessible.role: Accessible.EditableText
        Accessible.name: text

        // Does not blink, so that nothing is redrawn while the program is idle.
        cursorDelegate: Rectangle {
            width: 3
            visible: input.cursorVisible // qmllint disable unqualified
            color: StationPalette.amber
        }
    }

    FocusRing {
        lift: field.activeFocus ? 1 : 0
        corner: field.corner
    }
}
