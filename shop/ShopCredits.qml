import QtQuick
import Quillmere.Front
import Quillmere.Shop

// Credits and disclaimer below the shelves.
Column {
    topPadding: 20
    spacing: 8

    StationText {
        width: parent.width
        text: RewinderyTexts.creditLine
        font: Typography.standard(22)
        color: StationPalette.faded(StationPalette.cream, 0.45)
    }

    StationText {
        width: parent.width
        text: RewinderyTexts.disclaimer
        font: Typography.standard(20)
        color: StationPalette.faded(StationPalette.cream, 0.3)
    }
}
