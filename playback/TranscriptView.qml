pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Playback
import Quillmere.Screen

// Shows the transcript of a tape.
ReadingScreen {
    id: view

    required property HubAPI hub

    // Aliases: a QML property would ignore a tape that equals the default one, and tapes are compared by id only.
    property alias tape: controller.tape
    property alias cover: controller.cover

    signal dismissed()

    onAppeared: controller.appear()
    onDisappeared: controller.disappear()

    TranscriptController {
        id: controller

        hub: view.hub
    }

    FullBleed {
        Rectangle {
            anchors.fill: parent
            color: StationPalette.cream
        }
    }

    TranscriptHeader {
        id: header

        width: parent.width
        transcript: controller
        // The other half shows the passages.
        maximumHeight: parent.height / 2
    }

    Item {
        anchors.fill: parent
        anchors.topMargin: header.height
        // Scrolled text is not drawn over the header.
        clip: true

        ScrollArea {
            id: page

            readonly property real margin: 40

            anchors.fill: parent
            visible: controller.state === TranscriptController.Ready
            contentExtent: passages.height + 2 * margin
            revealMargin: margin

            LazyStack {
                id: passages

                x: 110
                y: page.margin
                width: parent.width - 2 * x
                model: controller.passages
                measured: true
                // Estimate: four and a half lines.
                extent: 200
                spacing: 26
                cacheBuffer: 400

                Passage {
                    width: passages.width
                }
            }
        }

        ScrollIndicator {
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            anchors.right: parent.right
            anchors.margins: page.margin
            area: page
            fill: StationPalette.faded(StationPalette.inkNavy, 0.4)
        }

        // Fades out a line that is partly hidden by the header.
        Rectangle {
            width: parent.width
            height: 28
            visible: page.position > 0

            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: StationPalette.cream
                }
                GradientStop {
                    position: 1
                    color: StationPalette.faded(StationPalette.cream, 0)
                }
            }
        }

        Column {
            anchors.centerIn: parent
            visible: controller.state === TranscriptController.Loading
            spacing: 40

            Spinner {
                anchors.horizontalCenter: parent.horizontalCenter
                scale: 1.5
                color: StationPalette.inkNavy
            }

            StationText {
                text: TranscriptTexts.pulling
                font: Typography.standard(28)
                color: StationPalette.faded(StationPalette.inkNavy, 0.6)
            }
        }

        Column {
            anchors.centerIn: parent
            width: parent.width - 400
            visible: controller.state === TranscriptController.Empty
            spacing: 40

            StationText {
                width: parent.width
                text: controller.message
                font: Typography.standard(30)
                color: StationPalette.faded(StationPalette.inkNavy, 0.7)
                horizontalAlignment: Text.AlignHCenter
                wraps: true
                maximumHeight: page.height - back.height - parent.spacing - 2 * page.margin
                Accessible.role: Accessible.AlertMessage
            }

            PlateButton {
                id: back

                anchors.horizontalCenter: parent.horizontalCenter
                text: TranscriptTexts.backToTheTape
                plateColor: StationPalette.inkNavy
                backgroundColor: StationPalette.cream
                size: 26
                onSelected: view.dismissed()
            }
        }
    }
}
