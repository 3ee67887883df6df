import QtQuick
import Quillmere.Front

// One fact about a tape: its label and, beside it, its value.
Row {
    id: fact

    required property string label
    required property string value

    spacing: 16

    StationText {
        id: name

        width: 240
        text: fact.label
        font: Typography.monospaced(20, Font.DemiBold, 2)
        color: StationPalette.faded(StationPalette.cream, 0.45)
    }

    StationText {
        width: fact.width - name.width - fact.spacing
        text: fact.value
        font: Typography.standard(24)
        color: StationPalette.faded(StationPalette.cream, 0.85)
        horizontalAlignment: Text.AlignLeft
        wraps: true
    }
}
