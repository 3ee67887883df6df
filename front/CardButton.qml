import QtQuick
import Quillmere.Front

// A button in the card style: its content lifts under the focus, brightens a little and casts a soft shadow.
StationButton {
    id: card

    // Of the content's corners.
    property real radius
    property real liftScale: StationMotion.cardScale
    // How much of white lies over it under the focus, 0 to 1.
    property real brightening: StationMotion.cardBrightening
    default property alias content: lifted.data

    z: activeFocus ? 1 : 0

    // Shadow and sheen stand unscaled around the content, so that they are painted once for all cards of a size and only
    // fade; at rest there are none.
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
            // No linter knows that a Loader's component sees the file's own names.
            radius: card.radius * card.liftScale // qmllint disable unqualified
            fill: "white"
        }
    }
}
