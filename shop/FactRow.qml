import QtQuick
import Quillmere.Front

// What is known of a tape: what it is, and beside it the value.
Row {
    id: fact

    required property string label
    required property string value

    spacing: 16

    Text {
        id: name

        width: 240
        text: fact.label
        font: Typography.monospaced(20, Font.DemiBold, 2)
        color: StationPalette.faded(StationPalette.cream, 0.45)
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        width: fact.width - name.width - fact.spacing
        text: fact.value
        font: Typography.standard(24)
        color: StationPalette.faded(StationPalette.cream, 0.85)
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
