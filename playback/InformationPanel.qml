import QtQuick
import Quillmere.Front
import Quillmere.Playback

// Metadata of the current item, and its tracks to choose from. Slides down from the top.
Item {
    id: panel

    required property PlayerController controls

    // 0 when hidden, 1 when fully shown.
    property real shownFraction: controls.panelShown ? 1 : 0

    readonly property real padding: 44
    // Height of all rows together, in points; the rest of the display belongs to the transport bar.
    readonly property real availableHeight: parent.height - y - 200 - 2 * padding

    width: plate.width
    height: plate.height
    opacity: shownFraction
    visible: shownFraction > 0
    // Disabled as soon as it starts to hide, so that it loses the focus at once.
    enabled: controls.panelShown

    Behavior on shownFraction {
        NumberAnimation {
            duration: StationMotion.fadeTime
            easing.type: Easing.OutCubic
        }
    }

    Binding {
        target: panel.controls
        property: "panelTopFocused"
        value: !(subtitles.containsFocus && sound.hasChoice)
    }

    CardPlate {
        id: plate

        y: -40 * (1 - panel.shownFraction)
        width: 1760
        height: information.height + 2 * panel.padding
        radius: 28
        fill: StationPalette.faded(StationPalette.inkNavy, 0.92)
        border: StationPalette.faded(StationPalette.cream, 0.18)
        borderWidth: 2

        Column {
            id: information

            x: panel.padding
            y: panel.padding
            width: parent.width - 2 * x
            spacing: 18

            StationText {
                id: title

                width: parent.width
                maximumHeight: panel.availableHeight / 3
                visible: text !== ""
                text: panel.controls.title
                font: Typography.standard(42, Font.Black)
                color: StationPalette.cream
                wraps: true
                Accessible.role: Accessible.Heading
            }

            StationText {
                id: subtitle

                width: parent.width
                visible: text !== ""
                text: panel.controls.subtitle
                font: Typography.standard(28, Font.DemiBold)
                color: StationPalette.amber
            }

            StationText {
                width: parent.width
                maximumHeight: panel.availableHeight - title.height - subtitle.height - publisher.height - tracks.height
                               - 4 * parent.spacing
                visible: text !== ""
                text: panel.controls.description
                font: Typography.standard(28)
                color: StationPalette.faded(StationPalette.cream, 0.85)
                wraps: true
                lineSpacing: 5
            }

            StationText {
                id: publisher

                width: parent.width
                visible: text !== ""
                text: panel.controls.publisher
                font: Typography.standard(24, Font.DemiBold)
                color: StationPalette.faded(StationPalette.cream, 0.55)
            }

            Column {
                id: tracks

                width: parent.width
                visible: sound.hasChoice || subtitles.hasChoice

                TrackRow {
                    id: sound

                    width: parent.width
                    name: TapePlayerTexts.sound
                    tracks: panel.controls.audioTracks
                }

                TrackRow {
                    id: subtitles

                    width: parent.width
                    name: TapePlayerTexts.subtitles
                    tracks: panel.controls.subtitleTracks
                }
            }
        }
    }
}
