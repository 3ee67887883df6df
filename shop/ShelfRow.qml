import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// A shelf: its title line and a row of cassettes.
FocusSection {
    id: shelf

    required property CassetteRow cassettes

    signal opened(int cassette)

    enum Size {
        // Height in points: the title line, the cassettes and the space around them.
        Length = 525
    }

    height: ShelfRow.Size.Length

    Item {
        id: titleLine

        width: parent.width
        height: 48
        // From the name's font, so that a taller fallback font does not move the baseline.
        baselineOffset: metrics.ascent

        FontMetrics {
            id: metrics

            font: name.font
        }

        StationText {
            id: name

            anchors.baseline: parent.baseline
            width: Math.min(implicitWidth, 1000)
            text: shelf.cassettes.name
            font: Typography.standard(38, Font.Black)
            color: StationPalette.cream
            Accessible.role: Accessible.Heading
        }

        CardPlate {
            id: badge

            anchors.left: name.right
            anchors.leftMargin: 16
            anchors.baseline: parent.baseline
            baselineOffset: count.y + count.baselineOffset
            width: count.width + 24
            height: count.height + 8
            radius: 8
            fill: StationPalette.amber

            StationText {
                id: count

                x: 12
                y: 4
                text: shelf.cassettes.count
                font: Typography.monospaced(24, Font.DemiBold)
                color: StationPalette.inkNavy
            }
        }

        StationText {
            anchors.left: badge.right
            anchors.leftMargin: 16
            anchors.right: parent.right
            anchors.baseline: parent.baseline
            text: shelf.cassettes.caption
            font: Typography.standard(24)
            color: StationPalette.teal
        }
    }

    CassetteStrip {
        y: titleLine.height + 18
        width: parent.width
        height: parent.height - y
        cassettes: shelf.cassettes
        extent: 250
        margin: 34
        onOpened: cassette => shelf.opened(cassette)
    }
}
