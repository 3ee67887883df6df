import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Screen
import Quillmere.Shop

// Screen of one tape: its box, information about it, and the buttons that play it.
FocusScreen {
    id: view

    required property Store store
    required property HubAPI hub

    // An alias: a QML property would ignore a tape that equals its current one, and tapes are compared by id only.
    property alias tape: controller.tape

    // Screens shown over this one, which get the controller as `detail`; null if not available.
    property Component playerScreen
    property Component transcriptScreen

    // If the page is taller than the display, the texts are focusable too, so that the arrow keys scroll to them.
    readonly property bool overflows: page.contentExtent > page.height

    onAppeared: controller.appear()
    onDisappeared: controller.disappear()

    TapeDetailController {
        id: controller

        store: view.store
        hub: view.hub
    }

    Item {
        id: mainContent

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
            revealMargin: margin

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

            TapeInformation {
                id: information

                x: 560
                width: 1280
                detail: controller
                margin: page.margin
                textsFocusable: view.overflows
            }
        }

        ScrollIndicator {
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            anchors.right: parent.right
            anchors.margins: 30
            anchors.rightMargin: 8
            area: page
        }
    }

    FullScreenCover {
        anchors.fill: parent
        screen: controller.playing ? view.playerScreen : null
        properties: ({detail: controller})
        beneath: mainContent
        onDismissed: controller.playing = false
    }

    FullScreenCover {
        anchors.fill: parent
        screen: controller.readingTranscript ? view.transcriptScreen : null
        properties: ({detail: controller})
        beneath: mainContent
        onDismissed: controller.readingTranscript = false
    }
}
