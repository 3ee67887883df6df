import QtQuick
import Quillmere.Front

// One word about a tape, on a plate that is no wider than what it stands in; none without a text.
CardPlate {
    id: badge

    required property string text
    property color ink: StationPalette.cream

    visible: text !== ""
    width: Math.min(words.implicitWidth + 32, parent.width)
    height: words.height + 16
    radius: 6
    continuous: true
    fill: StationPalette.nightNavy

    StationText {
        id: words

        x: 16
        y: 8
        width: parent.width - 32
        text: badge.text
        font: Typography.monospaced(20, Font.DemiBold, 2)
        color: badge.ink
    }
}
