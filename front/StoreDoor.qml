import QtQuick
import Quillmere.Front

// Door to the tape shop.
DoorCard {
    id: door

    title: StationTexts.storeDoor
    background: DiagonalGradient {
        from: StationPalette.nightNavy
        to: StationPalette.inkNavy
    }
    border: StationPalette.faded(StationPalette.amber, 0.35)

    Column {
        id: lines

        // Bottom-aligned, so that the text rows are level with those of the news door.
        anchors.bottom: parent.bottom
        width: parent.width
        spacing: 22

        SpineShelf {
            id: spines

            width: parent.width
        }

        StationText {
            id: heading

            width: parent.width
            text: door.title
            font: Typography.standard(46, Font.Black, 2)
            color: StationPalette.amber
        }

        StationText {
            id: motto

            width: parent.width
            text: StationTexts.storeMotto
            font: Typography.standard(24)
            color: StationPalette.teal
        }

        DoorSubtitle {
            width: parent.width
            text: door.subtitle
            availableHeight: lines.parent.height - spines.height - heading.height - motto.height - captions.height
                  - 4 * lines.spacing
        }

        Row {
            id: captions

            spacing: 36

            StationLabel {
                text: StationTexts.openingHours
                size: 20
                color: StationPalette.amber
            }

            StationLabel {
                text: StationTexts.homeVideo
                size: 20
                color: StationPalette.faded(StationPalette.cream, 0.5)
            }
        }
    }
}
