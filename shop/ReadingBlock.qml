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

    property real lift: activeFocus ? 1 : 0

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

    FocusRing {
        anchors.fill: inside
        lift: block.lift
        corner: 2
        gap: 8
        // Lines of text want more room beside them than above.
        anchors.leftMargin: -24
        anchors.rightMargin: -24
    }

    Behavior on lift {
        NumberAnimation {
            duration: StationMotion.liftTime
        }
    }
}
