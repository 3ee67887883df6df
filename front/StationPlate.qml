import QtQuick
import Quillmere.Front

// What a button in the set's default style stands on: a dim plate, bright and a little larger under the focus.
Item {
    id: plate

    // From 0 at rest to 1 under the focus.
    required property real lift
    // Of the plate under the focus.
    property real growth: StationMotion.plateScale
    // Cream for the dark screens; a page of cream has dark plates.
    property color tone: StationPalette.cream
    default property alias content: inside.data

    anchors.fill: parent
    scale: 1 + (growth - 1) * lift

    CardPlate {
        anchors.fill: parent
        radius: 14
        border: StationPalette.faded(plate.tone, 0.35)
        borderWidth: 2
        fill: StationPalette.faded(plate.tone, 0.08)
    }

    CardPlate {
        anchors.fill: parent
        visible: plate.lift > 0
        opacity: plate.lift
        radius: 14
        fill: plate.tone
    }

    Item {
        id: inside

        anchors.fill: parent
    }
}
