import QtQuick
import Quillmere.Front

// What a door says of itself now. Its room is the same for every text, so that nothing moves when the text changes.
StationText {
    height: 92
    font: Typography.standard(22)
    color: StationPalette.faded(StationPalette.cream, 0.6)
    wraps: true
}
