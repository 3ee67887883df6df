import QtQuick
import Quillmere.Front

// The on-air lamp and its text. It pulses only while live and visible, and the pulse repaints only the glow.
Row {
    id: lamp

    required property bool live

    // Strength of the glow: 0 is the faintest, 1 the full glow.
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
            // A separate property, so that the shadow is repainted once a step and not at every frame.
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
        text: StationTexts.lampText(lamp.live)
        font: Typography.standard(20, Font.DemiBold, 3)
        color: lamp.live ? StationPalette.onAirRed : StationPalette.faded(StationPalette.parchment, 0.4)
    }
}
