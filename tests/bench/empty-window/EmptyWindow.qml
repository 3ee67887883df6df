import QtQuick

Window {
    visible: true
    visibility: Window.FullScreen

    Rectangle {
        property bool pressed: false

        anchors.fill: parent
        focus: true
        color: pressed ? "#12183a" : "#0b1026"
        Keys.onPressed: pressed = !pressed
    }
}
