import QtQuick
import Quillmere.Front

// One word about a tape, on a plate that is no wider than what it stands in; none without a text.
CardPlate {
    id: badge

    required property string text
    property color ink: StationPalette.cream

    visible: text !== ""
    width: Math.min(words.implicitWidth + 32, parent.width)
    height: face.height + 16
    radius: 6
    continuous: true
    fill: StationPalette.nightNavy

    Text {
        id: words

        // A sign from a taller face than the letters' makes its badge no taller, and stands on their line.
        anchors.baseline: parent.top
        anchors.baselineOffset: 8 + face.ascent
        x: 16
        width: parent.width - 32
        text: badge.text
        font: Typography.monospaced(20, Font.DemiBold, 2)
        color: badge.ink
        elide: Text.ElideRight
        maximumLineCount: 1
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    FontMetrics {
        id: face

        font: words.font
    }
}
