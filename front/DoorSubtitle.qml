import QtQuick
import Quillmere.Front

// What a door says of itself now. It has the same room for every ordinary text, so that nothing moves when the text changes.
Item {
    id: subtitle

    required property string text
    // What the door can spare.
    required property real room

    height: Math.max(92, words.height)

    StationText {
        id: words

        width: parent.width
        text: subtitle.text
        font: Typography.standard(22)
        color: StationPalette.faded(StationPalette.cream, 0.6)
        wraps: true
        maximumHeight: subtitle.room
    }
}
