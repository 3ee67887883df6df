import QtQuick
import Quillmere.Front
import Quillmere.Screen

// What every button of the set has in common: it is heard as one, and it knows how far its focused look has come.
Focusable {
    id: button

    // What is heard.
    required property string name

    // From 0 at rest to 1 under the focus.
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
