pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Playback
import Quillmere.Screen
import Quillmere.Video

// Plays a tape, full screen.
FocusScreen {
    id: view

    required property Store store
    required property Clock clock

    // Aliases, because a QML property ignores an equal value: tapes are compared by id, and the default one has id 0.
    property alias tape: controller.tape
    property alias cover: controller.cover
    property alias startAt: controller.startAt

    signal dismissed()

    // Picture and sound stop at the key press, not after the slide-out animation.
    onDisappeared: controller.tearDown()
    Keys.onPressed: event => event.accepted = controller.press(event.key, event.isAutoRepeat)
    Keys.onReleased: event => event.accepted = controller.release(event.key)

    TapePlayerController {
        id: controller

        store: view.store
        clock: view.clock
        onDismissRequested: view.dismissed()
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

    // A Repeater, because a Loader is a focus scope of its own, and the panel's tracks could not get the focus.
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
