import QtQuick
import Quillmere.Front

// A button whose content looks the same with and without focus. A ring around it shows the focus.
StationButton {
    id: button

    // Corner radius of the content, in points.
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
