import QtQuick
import Quillmere.Front

// Spinner on a dark disc, visible on any picture.
Item {
    id: sign

    required property bool shown

    opacity: shown ? 1 : 0
    visible: opacity > 0
    width: 150
    height: width

    Behavior on opacity {
        NumberAnimation {
            duration: StationMotion.fadeTime
        }
    }

    CardPlate {
        anchors.fill: parent
        radius: width / 2
        fill: StationPalette.faded("black", 0.5)
    }

    Spinner {
        anchors.centerIn: parent
        width: 84
        height: 84
        color: StationPalette.cream
    }
}
