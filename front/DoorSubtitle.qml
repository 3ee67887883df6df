import QtQuick
import Quillmere.Front

// Text on a door that describes its current state. Its minimum height fits every text of ordinary length, so that the
// layout does not move when the text changes.
Item {
    id: subtitle

    required property string text
    // Maximum height of the text, in points.
    required property real availableHeight

    height: Math.max(92, words.height)

    StationText {
        id: words

        width: parent.width
        text: subtitle.text
        font: Typography.standard(22)
        color: StationPalette.faded(StationPalette.cream, 0.6)
        wraps: true
        maximumHeight: subtitle.availableHeight
    }
}
