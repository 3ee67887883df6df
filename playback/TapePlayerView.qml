pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Playback
import Quillmere.Screen
import Quillmere.Video

// A tape, full screen.
FocusScreen {
    id: view

    required property Store store
    required property Timepiece timepiece

    // Aliases, as a property of QML's own would not take a tape that equals the default one.
    property alias tape: controller.tape
    property alias cover: controller.cover
    property alias startAt: controller.startAt

    signal dismissed()

    // Picture and sound end with the press that leaves, not with the slide that follows.
    onDisappeared: controller.dismantle()
    Keys.onPressed: event => event.accepted = controller.press(event.key, event.isAutoRepeat)
    Keys.onReleased: event => event.accepted = controller.release(event.key)

    TapePlayerController {
        id: controller

        store: view.store
        timepiece: view.timepiece
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

    // No Loader, as that would keep the focus of the panel's tracks to itself.
    Repeater {
        model: controller.controls ? 1 : 0

        Item {
            anchors.fill: parent

            LoadingSign {
                anchors.centerIn: parent
                shown: controller.controls.spinnerShown
            }

            PlayerControls {
                anchors.fill: parent
                controls: controller.controls
            }

            InformationPanel {
                x: 80
                y: 60
                controls: controller.controls
            }
        }
    }

    FailurePanel {
        anchors.fill: parent
        visible: controller.failed
        message: controller.failure
        onDismissed: view.dismissed()
    }
}
