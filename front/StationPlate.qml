import QtQuick
import Quillmere.Front

// Background of a button in the default style: a dim plate, which becomes bright and a little larger with focus.
Item {
    id: plate

    // Progress of the focus effect: 0 without focus, 1 with focus.
    required property real lift
    // Scale of the plate with focus.
    property real focusScale: StationMotion.plateScale
    // Cream on dark screens; a dark colour on a cream page.
    property color plateColor: StationPalette.cream
    default property alias content: inside.data

    anchors.fill: parent
    scale: 1 + (focusScale - 1) * lift

    CardPlate {
        anchors.fill: parent
        radius: 14
        border: StationPalette.faded(plate.plateColor, 0.35)
        borderWidth: 2
        fill: StationPalette.faded(plate.plateColor, 0.08)
    }

    CardPlate {
        anchors.fill: parent
        visible: plate.lift > 0
        opacity: plate.lift
        radius: 14
        fill: plate.plateColor
    }

    Item {
        id: inside

        anchors.fill: parent
    }
}
