import QtQuick
import Quillmere.Screen
import Quillmere.Shop

// On-screen keyboard for the remote, over the lower half of its parent; shown while the field's controller says so.
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
