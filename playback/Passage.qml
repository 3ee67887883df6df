import QtQuick
import Quillmere.Front
import Quillmere.Screen

// One paragraph of a transcript.
Focusable {
    id: passage

    required property string text

    property real lift: activeFocus ? 1 : 0

    Accessible.role: Accessible.Paragraph
    Accessible.name: text
    Accessible.focusable: true
    Accessible.focused: activeFocus
    implicitHeight: words.implicitHeight + 2 * words.y

    // Plain rectangles: a paragraph may be far taller than the display, and a painted plate needs a picture as large.
    Rectangle {
        anchors.fill: parent
        visible: passage.lift > 0
        opacity: passage.lift
        radius: 10
        color: StationPalette.faded(StationPalette.amber, 0.35)
    }

    Rectangle {
        width: 6
        height: parent.height
        visible: passage.lift > 0
        opacity: passage.lift
        radius: 2
        color: StationPalette.teal
    }

    // No horizontalAlignment: each paragraph starts at the side where its script starts. The colour is opaque, because
    // translucent text takes the software renderer twice as long to scroll.
    StationText {
        id: words

        x: 24
        y: 16
        width: parent.width - 2 * x
        text: passage.text
        font: Typography.standard(30)
        color: StationPalette.mixed(StationPalette.cream, StationPalette.inkNavy, 0.72 + 0.28 * passage.lift)
        wraps: true
        Accessible.ignored: true
    }

    Behavior on lift {
        NumberAnimation {
            duration: StationMotion.liftTime
            easing: StationMotion.easeOut
        }
    }
}
