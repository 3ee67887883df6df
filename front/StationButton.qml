import QtQuick
import Quillmere.Front
import Quillmere.Screen

// Base of all buttons: accessibility properties, and the animated progress of the focus effect.
Focusable {
    id: button

    // Name for screen readers.
    required property string name

    // Progress of the focus effect: 0 without focus, 1 with focus.
    property real lift: activeFocus ? 1 : 0

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: button.selected()

    Behavior on lift {
        NumberAnimation {
            duration: StationMotion.liftTime
            easing.type: Easing.OutQuad
        }
    }
}
