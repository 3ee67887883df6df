import QtQuick

Window {
    // Of the screen's size rather than full-screen: there is no window manager to make it so.
    width: Screen.width
    height: Screen.height
    visible: true

    Rectangle {
        property bool pressed: false

        anchors.fill: parent
        focus: true
        color: pressed ? "#12183a" : "#0b1026"
        Keys.onPressed: pressed = !pressed
    }
}
