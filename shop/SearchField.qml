import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// The single line in which a query is typed.
Focusable {
    id: field

    property alias text: line.text

    readonly property string placeholder: "Search"

    // The viewer is done with typing.
    signal submitted

    implicitHeight: 70
    onSelected: field.submitted()
    Keys.forwardTo: [line]
    Accessible.role: Accessible.EditableText
    Accessible.name: field.placeholder
    Accessible.focusable: true
    Accessible.focused: activeFocus

    CardPlate {
        anchors.fill: parent
        radius: 14
        border: StationPalette.faded(StationPalette.cream, 0.35)
        borderWidth: 2
        fill: StationPalette.faded(StationPalette.cream, 0.08)
    }

    Text {
        anchors.fill: line
        verticalAlignment: Text.AlignVCenter
        visible: line.text === ""
        text: field.placeholder
        font: line.font
        color: StationPalette.faded(StationPalette.cream, 0.5)
        textFormat: Text.PlainText
        Accessible.ignored: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    TextInput {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 26
        anchors.rightMargin: 26
        verticalAlignment: TextInput.AlignVCenter
        font: Typography.standard(32)
        color: StationPalette.cream
        clip: true
        maximumLength: 200
        Accessible.ignored: true
        Accessible.role: Accessible.EditableText
        Accessible.name: text
    }

    FocusRing {
        lift: field.activeFocus ? 1 : 0
        corner: 14
    }
}
