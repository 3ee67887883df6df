import QtQuick
import Quillmere.Front

// A short text about a tape on a plate, at most as wide as the parent item. Hidden without a text.
CardPlate {
    id: badge

    required property string text
    property color ink: StationPalette.cream

    visible: text !== ""
    width: Math.min(label.implicitWidth + 32, parent.width)
    height: label.height + 16
    radius: 6
    continuous: true
    fill: StationPalette.nightNavy

    StationText {
        id: label

        x: 16
        y: 8
        width: parent.width - 32
        text: badge.text
        font: Typography.monospaced(20, Font.DemiBold, 2)
        color: badge.ink
    }
}
