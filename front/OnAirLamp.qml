import QtQuick
import Quillmere.Front

// The on-air lamp and its words. Only a live one that can be seen pulses; it repaints nothing but its glow.
Row {
    id: lamp

    required property bool live

    // 0 to 1, from the faint glow to the full one.
    property real glow

    spacing: 14
    baselineOffset: words.y + words.baselineOffset

    SequentialAnimation on glow {
        running: lamp.live && lamp.visible
        loops: Animation.Infinite

        NumberAnimation {
            from: 0
            to: 1
            duration: StationMotion.glowTime
            easing: StationMotion.easeInOut
        }
        NumberAnimation {
            from: 1
            to: 0
            duration: StationMotion.glowTime
            easing: StationMotion.easeInOut
        }
    }

    Item {
        width: 26
        height: 26
        anchors.verticalCenter: parent.verticalCenter

        SoftShadow {
            // A property of its own, so that the picture changes with the step and not with every frame.
            readonly property real steppedSpread: StationMotion.glowSpread(lamp.glow)

            anchors.fill: parent
            visible: lamp.live
            radius: 13
            spread: steppedSpread
            color: StationPalette.onAirRed
            opacity: StationMotion.glowOpacity(lamp.glow)
        }

        LampDisc {
            anchors.fill: parent
            live: lamp.live
        }
    }

    StationText {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        text: StationTexts.lampWords(lamp.live)
        font: Typography.standard(20, Font.DemiBold, 3)
        color: lamp.live ? StationPalette.onAirRed : StationPalette.faded(StationPalette.parchment, 0.4)
    }
}
