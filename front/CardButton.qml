import QtQuick
import Quillmere.Front

// A button in the card style: its content lifts under the focus, brightens a little and casts a soft shadow.
StationButton {
    id: card

    // Of the content's corners.
    property real radius
    property real liftScale: StationMotion.cardScale
    default property alias content: lifted.data

    z: activeFocus ? 1 : 0

    // Stands unscaled behind the content, so that it is painted once and only fades; there is none at rest.
    Loader {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: 16
        width: card.width * card.liftScale - 20
        height: card.height * card.liftScale - 20
        active: card.lift > 0
        opacity: card.lift
        sourceComponent: SoftShadow {
            radius: 30
            spread: 54
            color: StationPalette.faded("black", 0.75)
        }
    }

    Item {
        id: lifted

        anchors.fill: parent
        scale: 1 + (card.liftScale - 1) * card.lift

        Rectangle {
            anchors.fill: parent
            z: 1
            radius: card.radius
            color: "white"
            opacity: StationMotion.cardBrightening * card.lift
        }
    }
}
