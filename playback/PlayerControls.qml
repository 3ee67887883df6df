import QtQuick
import Quillmere.Front
import Quillmere.Playback
import Quillmere.Screen

// Transport bar: title, state and position of the item. Draws nothing while it is hidden.
Item {
    id: transport

    required property PlayerController controls

    // The information panel shows the title itself, larger.
    readonly property bool showsTitle: !controls.panelShown
    // Indexed by PlayerController.State.
    readonly property var stateIcons: [Icon.None, Icon.Play, Icon.Pause, Icon.FastForward, Icon.Rewind]

    opacity: controls.transportShown ? 1 : 0
    visible: opacity > 0

    Behavior on opacity {
        NumberAnimation {
            duration: StationMotion.fadeTime
        }
    }

    FullBleed {
        Scrim {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: 480
            color: StationPalette.faded("black", 0.8)
        }
    }

    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.leftMargin: 80
        anchors.rightMargin: 80
        anchors.bottomMargin: 60
        spacing: 8

        StationText {
            width: parent.width
            visible: transport.showsTitle
            // More lines would reach above the dark part of the scrim.
            maximumLineCount: 3
            wraps: true
            text: transport.controls.title
            font: Typography.standard(44, Font.Black)
            color: StationPalette.cream
            Accessible.role: Accessible.Heading
        }

        StationText {
            width: parent.width
            visible: transport.showsTitle
            text: transport.controls.subtitle
            font: Typography.standard(28)
            color: StationPalette.faded(StationPalette.cream, 0.75)
        }

        Item {
            width: parent.width
            height: 68
            visible: transport.controls.seekable

            PlayheadBar {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width
                played: transport.controls.progress
                buffered: transport.controls.bufferedPart
                scrubbing: transport.controls.scrubbing
                Accessible.role: Accessible.ProgressBar
                Accessible.name: elapsed.text
            }
        }

        Item {
            width: parent.width
            height: 40

            Icon {
                id: stateIcon

                anchors.verticalCenter: parent.verticalCenter
                width: 34
                height: 34
                name: transport.stateIcons[transport.controls.state]
                color: StationPalette.cream
            }

            StationText {
                id: elapsed

                x: stateIcon.name === Icon.None ? 0 : 52
                anchors.verticalCenter: parent.verticalCenter
                text: transport.controls.elapsedText
                font: Typography.monospaced(30, Font.DemiBold)
                color: StationPalette.cream
            }

            StationText {
                anchors.left: elapsed.right
                anchors.leftMargin: elapsed.text === "" ? 0 : 30
                anchors.verticalCenter: parent.verticalCenter
                text: transport.controls.stateText
                font: Typography.standard(28)
                color: StationPalette.faded(StationPalette.cream, 0.75)
            }

            StationText {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: transport.controls.remainingText
                font: Typography.monospaced(30, Font.DemiBold)
                color: StationPalette.cream
            }
        }
    }
}
