import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// The area above the shelves: sign, stock line and controls. As wide as the shelves, so that the up key reaches it from
// every cassette below it.
FocusSection {
    id: counter

    required property string stockLine
    required property MarketList markets
    // The art behind the counter.
    required property PaintedItem background

    signal searched

    implicitHeight: lines.height

    Column {
        id: lines

        width: parent.width
        bottomPadding: 6
        spacing: 22

        Row {
            spacing: 24

            StationText {
                id: sign

                text: RewinderyTexts.sign
                font: Typography.standard(76, Font.Black)
                color: StationPalette.amber
                Accessible.role: Accessible.Heading
            }

            StationText {
                anchors.baseline: sign.baseline
                text: RewinderyTexts.homeVideo
                font: Typography.monospaced(28, Font.DemiBold, 6)
                color: StationPalette.teal
            }

            StationLabel {
                anchors.baseline: sign.baseline
                text: StationTexts.openingHours
                size: 24
                color: StationPalette.faded(StationPalette.cream, 0.5)
            }
        }

        StationText {
            width: parent.width
            text: counter.stockLine
            font: Typography.standard(26)
            color: StationPalette.faded(StationPalette.cream, 0.7)
            wraps: true
        }

        Item {
            width: parent.width
            height: Math.max(search.height, picker.visible ? picker.chipHeight : 0)

            PlateButton {
                id: search

                anchors.verticalCenter: parent.verticalCenter
                text: RewinderyTexts.search
                icon: Icon.MagnifyingGlass
                size: 26
                padding: 12
                onSelected: counter.searched()
            }

            MarketPicker {
                id: picker

                anchors.verticalCenter: parent.verticalCenter
                anchors.left: search.right
                anchors.leftMargin: 20 - margin
                anchors.right: parent.right
                anchors.rightMargin: -margin
                visible: counter.markets.isShown
                markets: counter.markets
                background: counter.background
            }
        }
    }
}
