pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// A row of cassettes that scrolls with the focus.
ScrollArea {
    id: strip

    required property CassetteRow cassettes
    // Width of a cassette, in points.
    required property real extent
    // Space above and below the cassettes, in points, for the enlarged focused one and its shadow; less at the sides.
    required property real margin

    readonly property real sideMargin: 6

    signal opened(int cassette)

    orientation: Qt.Horizontal
    // The cassettes on both sides of the focused one are always visible.
    revealMargin: stack.extent + stack.spacing
    contentExtent: stack.width + 2 * sideMargin

    LazyStack {
        id: stack

        x: strip.sideMargin
        y: strip.margin
        height: parent.height - 2 * strip.margin
        orientation: Qt.Horizontal
        extent: strip.extent
        spacing: 40
        // The row extends to the edges of the display; with a held key, cassettes beyond it should be painted in time.
        cacheBuffer: 960
        model: strip.cassettes

        CardButton {
            id: button

            required property int index
            required property vhsCover cover
            required property string title

            name: title
            width: stack.extent
            height: card.height
            radius: card.radius
            onSelected: strip.opened(index)

            VHSShelfCard {
                id: card

                width: parent.width
                height: implicitHeight
                cover: button.cover
            }
        }
    }
}
