import QtQuick
import Quillmere.Front
import Quillmere.Screen

// Texts that the focus comes to only so that they are in sight; a ring around them shows it.
Focusable {
    id: block

    default property alias content: inside.data

    // What is heard of it.
    required property string name

    // The room above and below the texts that comes into sight with them.
    property real above: 0
    property real below: 0

    // From the texts to the ring's inner edge.
    readonly property real gap: 8
    readonly property real line: 4

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: activeFocus
    implicitHeight: above + inside.childrenRect.height + below

    Item {
        id: inside

        y: block.above
        width: parent.width
        height: childrenRect.height
    }

    Rectangle {
        anchors.fill: inside
        anchors.margins: -block.gap - block.line
        opacity: block.activeFocus ? 1 : 0
        visible: opacity > 0
        color: "transparent"
        radius: 14
        border.color: StationPalette.amber
        border.width: block.line

        Behavior on opacity {
            NumberAnimation {
                duration: StationMotion.liftTime
            }
        }
    }
}
