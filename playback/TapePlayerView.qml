import QtQuick
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Playback
import Quillmere.Screen
import Quillmere.Video

// A tape, full screen.
FocusScreen {
    id: view

    // An alias, as a property of QML's own would not take a tape that equals the default one.
    property alias tape: controller.tape
    property alias startAt: controller.startAt

    signal dismissed()

    // Picture and sound end with the press that leaves, not with the slide that follows.
    onDisappeared: controller.end()
    Keys.onPressed: event => event.accepted = controller.press(event.key)

    TapePlayer {
        id: controller

        onLeave: view.dismissed()
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
