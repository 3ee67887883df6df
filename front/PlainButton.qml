import QtQuick
import Quillmere.Front

// A button whose content keeps its own look; a ring around it shows the focus.
StationButton {
    id: button

    // Of the content's corners.
    property real radius: height / 2
    default property alias content: inside.data

    Item {
        id: inside

        anchors.fill: parent
    }

    FocusRing {
        lift: button.lift
        corner: button.radius
    }
}
