import QtQuick

Window {
    // Set to the screen's size, because no window manager would make it full-screen.
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
