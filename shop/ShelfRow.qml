pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// A shelf: its title line, and its cassettes side by side.
FocusSection {
    id: shelf

    required property CassetteRow cassettes

    signal opened(int cassette)

    enum Size {
        // The title line, the cassettes and the space around them.
        Length = 525
    }

    // Around the cassettes, for the lift and the shadow of the focused one.
    readonly property real above: 34
    readonly property real beside: 6

    height: ShelfRow.Size.Length

    Item {
        id: titleLine

        width: parent.width
        height: 48
        // That of the name's own font, so that a letter borrowed from a taller one moves nothing.
        baselineOffset: face.ascent

        FontMetrics {
            id: face

            font: name.font
        }

        Text {
            id: name

            anchors.baseline: parent.baseline
            width: Math.min(implicitWidth, 1000)
            text: shelf.cassettes.name
            font: Typography.standard(38, Font.Black)
            color: StationPalette.cream
            elide: Text.ElideRight
            maximumLineCount: 1
            textFormat: Text.PlainText
            Accessible.role: Accessible.Heading
            Accessible.name: text
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

            Text {
                id: count

                x: 12
                y: 4
                text: shelf.cassettes.count
                font: Typography.monospaced(24, Font.DemiBold)
                color: StationPalette.inkNavy
                textFormat: Text.PlainText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        Text {
            anchors.left: badge.right
            anchors.leftMargin: 16
            anchors.right: parent.right
            anchors.baseline: parent.baseline
            text: shelf.cassettes.caption
            font: Typography.standard(24)
            color: StationPalette.teal
            elide: Text.ElideRight
            maximumLineCount: 1
            textFormat: Text.PlainText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    ScrollArea {
        y: titleLine.height + 18
        width: parent.width
        height: parent.height - y
        orientation: Qt.Horizontal
        // The cassette on either side of the focused one is always in sight.
        lead: stack.extent + stack.spacing
        contentExtent: stack.width + 2 * shelf.beside

        LazyStack {
            id: stack

            x: shelf.beside
            y: shelf.above
            height: parent.height - 2 * shelf.above
            orientation: Qt.Horizontal
            extent: 250
            spacing: 40
            // The cassettes run on to the edges of the display; a held key should find those beyond it painted.
            ahead: 960
            model: shelf.cassettes
            place: shelf.cassettes.place
            onHeld: cassette => shelf.cassettes.place = cassette

            CardButton {
                id: button

                required property int index
                required property vhsCover cover
                required property string title

                name: title
                width: stack.extent
                height: card.height
                radius: card.radius
                onSelected: shelf.opened(index)

                VHSShelfCard {
                    id: card

                    width: parent.width
                    height: implicitHeight
                    cover: button.cover
                }
            }
        }
    }
}
