import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Screen
import Quillmere.Shop

// One tape: its box, what is known of it, and the buttons that play it.
FocusScreen {
    id: view

    required property Store store
    required property HubAPI hub

    // An alias, as a property of QML's own would not take a tape that equals the one it has.
    property alias tape: controller.tape

    // What covers this screen, given the controller as `detail`; null until it is built.
    property Component playerScreen
    property Component transcriptScreen

    // A page too long for the display is read by walking it: then its texts can be focused, too.
    readonly property bool overflows: page.contentExtent > page.height

    onAppeared: controller.appear()
    onDisappeared: controller.disappear()

    TapeDetailController {
        id: controller

        store: view.store
        hub: view.hub
    }

    Item {
        id: sight

        anchors.fill: parent

        FullBleed {
            VeneerBackground {
                anchors.fill: parent
            }
        }

        ScrollArea {
            id: page

            readonly property real margin: 60

            anchors.fill: parent
            contentExtent: Math.max(box.y + box.height + margin, information.height)
            lead: margin

            SoftShadow {
                x: box.x
                y: box.y + 16
                width: box.width
                height: box.height
                radius: 13
                color: StationPalette.faded("black", 0.6)
                spread: 60
            }

            VHSBoxFront {
                id: box

                x: 80
                y: page.margin
                width: 420
                height: implicitHeight
                cover: controller.cover
            }

            Column {
                id: information

                x: 560
                width: 1280
                spacing: 26

                ReadingBlock {
                    name: controller.title
                    above: page.margin
                    width: parent.width
                    enabled: view.overflows

                    Column {
                        width: parent.width
                        spacing: 26

                        Text {
                            width: parent.width
                            text: controller.title
                            font: Typography.standard(52, Font.Black)
                            color: StationPalette.cream
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                            textFormat: Text.PlainText
                            Accessible.role: Accessible.Heading
                            Accessible.name: text
                        }

                        Flow {
                            width: parent.width
                            spacing: 12

                            TapeBadge {
                                text: controller.genreBadge
                                color: StationPalette.teal
                            }
                            TapeBadge {
                                text: controller.ratingBadge
                            }
                            TapeBadge {
                                text: controller.runtimeBadge
                            }
                            TapeBadge {
                                text: controller.speedBadge
                            }
                            TapeBadge {
                                text: controller.agendaBadge
                                color: StationPalette.amber
                                ink: StationPalette.inkNavy
                            }
                        }

                        Text {
                            width: parent.width
                            text: controller.tagline
                            font: Typography.standard(30, Font.Normal, 0, true)
                            color: StationPalette.amber
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                            textFormat: Text.PlainText
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                        }

                        Text {
                            width: parent.width
                            text: controller.synopsis
                            font: Typography.standard(26)
                            color: StationPalette.faded(StationPalette.cream, 0.8)
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                            lineHeight: 1 + 6 / line.lineSpacing
                            bottomPadding: -6
                            textFormat: Text.PlainText
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text

                            FontMetrics {
                                id: line

                                font: Typography.standard(26)
                            }
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
                            text: controller.playText
                            icon: Icon.Play
                            preferred: true
                            onSelected: controller.play()
                        }

                        PlateButton {
                            visible: controller.canStartOver
                            text: TapeDetailTexts.startOver
                            icon: Icon.StartOver
                            onSelected: controller.startOver()
                        }

                        PlateButton {
                            visible: controller.hasTranscript
                            text: TapeDetailTexts.readTranscript
                            icon: Icon.TextLines
                            onSelected: controller.readTranscript()
                        }
                    }
                }

                ReadingBlock {
                    name: controller.catalogueLine
                    below: page.margin
                    width: parent.width
                    enabled: view.overflows

                    Column {
                        width: parent.width
                        spacing: 26

                        Column {
                            topPadding: 10
                            spacing: 10

                            Repeater {
                                model: controller.facts

                                FactRow {
                                    width: 1280
                                }
                            }
                        }

                        Text {
                            topPadding: 10
                            width: parent.width
                            text: controller.catalogueLine
                            font: Typography.standard(20, Font.DemiBold)
                            color: StationPalette.faded(StationPalette.cream, 0.4)
                            horizontalAlignment: Text.AlignLeft
                            wrapMode: Text.Wrap
                            textFormat: Text.PlainText
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                        }
                    }
                }
            }
        }

        ScrollIndicator {
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            anchors.right: parent.right
            anchors.margins: 30
            area: page
        }
    }

    FullScreenCover {
        anchors.fill: parent
        screen: controller.playing ? view.playerScreen : null
        properties: ({detail: controller})
        beneath: sight
        onDismissed: controller.playing = false
    }

    FullScreenCover {
        anchors.fill: parent
        screen: controller.readingTranscript ? view.transcriptScreen : null
        properties: ({detail: controller})
        beneath: sight
        onDismissed: controller.readingTranscript = false
    }
}
