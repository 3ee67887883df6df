import QtQuick
import Quillmere.Front
import Quillmere.Screen

// A group of texts that can have the focus, so that they are scrolled into view. Shows a focus ring.
Focusable {
    id: block

    default property alias content: inside.data

    // Name for screen readers.
    required property string name

    // Space above and below the texts that is scrolled into view with them, in points.
    property real spaceAbove: 0
    property real spaceBelow: 0

    property real lift: activeFocus ? 1 : 0

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: activeFocus
    implicitHeight: spaceAbove + inside.childrenRect.height + spaceBelow

    Item {
        id: inside

        y: block.spaceAbove
        width: parent.width
        height: childrenRect.height
    }

    FocusRing {
        anchors.fill: inside
        lift: block.lift
        corner: 2
        gap: 8
        // Text needs more space to the ring at its sides than above.
        anchors.leftMargin: -24
        anchors.rightMargin: -24
    }

    Behavior on lift {
        NumberAnimation {
            duration: StationMotion.liftTime
        }
    }
}
