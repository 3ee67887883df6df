import QtQuick
import Quillmere.Front

// A button whose content keeps its own look; a ring around it shows the focus.
StationButton {
    id: button

    // Of the content's corners.
    property real radius: height / 2
    default property alias content: inside.data

    // So far from the content that it shows beside a ring of its own colour, too.
    readonly property real gap: 4
    readonly property real line: 4

    implicitWidth: inside.childrenRect.width
    implicitHeight: inside.childrenRect.height

    Item {
        id: inside

        anchors.fill: parent
    }

    CardPlate {
        anchors.fill: parent
        anchors.margins: -button.gap - button.line
        visible: button.lift > 0
        opacity: button.lift
        radius: button.radius + button.gap + button.line
        border: StationPalette.amber
        borderWidth: button.line
    }
}
