import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Playback
import Quillmere.Screen
import Quillmere.Video

// A tape, full screen. Select or play/pause holds it, back leaves.
FocusScope {
    id: view

    required property Store store
    required property tape tape
    property double startAt: 0

    signal dismissed()

    focus: true
    Keys.onBackPressed: dismissed()
    Keys.onPressed: event => event.accepted = controller.takeKey(event.key)

    TapePlayer {
        id: controller

        tape: view.tape
        startAt: view.startAt
    }

    FullBleed {
        Rectangle {
            anchors.fill: parent
            color: "black"
        }

        VideoView {
            anchors.fill: parent
            player: controller.player
        }
    }

    Text {
        anchors.centerIn: parent
        width: parent.width - 400
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        color: StationPalette.faded(StationPalette.parchment, 0.75)
        font: Typography.standard(28)
        text: controller.failure
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
