import QtQuick
import Quillmere.Front

// A button in the card style. With focus, its content grows, brightens a little and casts a soft shadow.
StationButton {
    id: card

    // Corner radius of the content, in points.
    property real radius
    // Scale of the content with focus.
    property real liftScale: StationMotion.cardScale
    // Opacity of the white overlay with focus, 0 to 1.
    property real brightening: StationMotion.cardBrightening
    default property alias content: lifted.data

    z: activeFocus ? 1 : 0

    // The shadow and the white overlay are siblings of the content and do not scale with it. So each is painted once
    // for all cards of one size, and only its opacity animates. Neither item exists without focus.
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
    }

    Loader {
        anchors.centerIn: parent
        width: card.width * card.liftScale
        height: card.height * card.liftScale
        active: card.lift > 0 && card.brightening > 0
        opacity: card.lift * card.brightening
        sourceComponent: CardPlate {
            // The linter does not know that a component inside a Loader can access the ids of this file.
            radius: card.radius * card.liftScale // qmllint disable unqualified
            fill: "white"
        }
    }
}
