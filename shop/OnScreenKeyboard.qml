import QtQuick
import Quillmere.Screen
import Quillmere.Shop

// A keyboard for the remote, over the lower half of the screen that it fills, while its field wants it.
FullScreenCover {
    id: keyboard

    required property SearchField field

    readonly property KeyboardController controller: field.keyboard
    readonly property Component keys: KeyGrid {}

    anchors.fill: parent
    screen: controller.shown ? keys : null
    properties: ({
            controller: keyboard.controller
        })
    onDismissed: controller.close()
}
