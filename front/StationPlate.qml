import QtQuick
import Quillmere.Front

// What a button in the set's default style stands on: a dim plate, cream and a little larger under the focus.
Item {
    id: plate

    // From 0 at rest to 1 under the focus.
    required property real lift
    default property alias content: inside.data

    anchors.fill: parent
    scale: 1 + (StationMotion.plateScale - 1) * lift

    CardPlate {
        anchors.fill: parent
        radius: 14
        border: StationPalette.faded(StationPalette.cream, 0.35)
        borderWidth: 2
        fill: StationPalette.faded(StationPalette.cream, 0.08)
    }

    CardPlate {
        anchors.fill: parent
        visible: plate.lift > 0
        opacity: plate.lift
        radius: 14
        fill: StationPalette.cream
    }

    Item {
        id: inside

        anchors.fill: parent
    }
}
