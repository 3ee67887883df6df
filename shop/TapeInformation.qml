pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// The column beside a tape's box: information about the tape, and the buttons that play it.
Column {
    id: information

    required property TapeDetailController detail

    // Space above the first text and below the last one, in points.
    required property real margin

    // Whether the texts can have the focus, so that the arrow keys scroll to them.
    required property bool textsFocusable

    spacing: 26

    ReadingBlock {
        name: information.detail.title
        spaceAbove: information.margin
        width: parent.width
        enabled: information.textsFocusable

        Column {
            width: parent.width
            spacing: 26

            StationText {
                width: parent.width
                text: information.detail.title
                font: Typography.standard(52, Font.Black)
                color: StationPalette.cream
                horizontalAlignment: Text.AlignLeft
                wraps: true
                Accessible.role: Accessible.Heading
            }

            Flow {
                width: parent.width
                spacing: 12

                TapeBadge {
                    text: information.detail.genreBadge
                    fill: StationPalette.teal
                }
                TapeBadge {
                    text: information.detail.ratingBadge
                }
                TapeBadge {
                    text: information.detail.runtimeBadge
                }
                TapeBadge {
                    text: information.detail.speedBadge
                }
                TapeBadge {
                    text: information.detail.agendaBadge
                    fill: StationPalette.amber
                    ink: StationPalette.inkNavy
                }
            }

            StationText {
                width: parent.width
                text: information.detail.tagline
                font: Typography.standard(30, Font.Normal, 0, true)
                color: StationPalette.amber
                horizontalAlignment: Text.AlignLeft
                wraps: true
            }

            StationText {
                width: parent.width
                text: information.detail.synopsis
                font: Typography.standard(26)
                color: StationPalette.faded(StationPalette.cream, 0.8)
                horizontalAlignment: Text.AlignLeft
                wraps: true
                lineSpacing: 6
            }
        }
    }

    FocusSection {
        width: parent.width
        height: buttons.height + 8

        Row {
            id: buttons

            y: 8
            spacing: 22

            PlateButton {
                text: information.detail.playText
                icon: Icon.Play
                preferred: true
                onSelected: information.detail.play()
            }

            PlateButton {
                visible: information.detail.canStartOver
                text: TapeDetailTexts.startOver
                icon: Icon.StartOver
                onSelected: information.detail.startOver()
            }

            PlateButton {
                visible: information.detail.hasTranscript
                text: TapeDetailTexts.readTranscript
                icon: Icon.TextLines
                onSelected: information.detail.readTranscript()
            }
        }
    }

    ReadingBlock {
        name: information.detail.catalogueLine
        spaceBelow: information.margin
        width: parent.width
        enabled: information.textsFocusable

        Column {
            width: parent.width
            spacing: 26

            Column {
                topPadding: 10
                spacing: 10

                Repeater {
                    model: information.detail.facts

                    FactRow {
                        width: information.width
                    }
                }
            }

            StationText {
                topPadding: 10
                width: parent.width
                text: information.detail.catalogueLine
                font: Typography.standard(20, Font.DemiBold)
                color: StationPalette.faded(StationPalette.cream, 0.4)
                horizontalAlignment: Text.AlignLeft
                wraps: true
            }
        }
    }
}
