pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// Cassettes side by side, along which the viewer walks.
ScrollArea {
    id: strip

    required property CassetteRow cassettes
    // How wide one is.
    required property real extent
    // Above and below them, for the lift and the shadow of the focused one; beside them there is less.
    required property real margin

    readonly property real beside: 6

    signal opened(int cassette)

    orientation: Qt.Horizontal
    // The cassette on either side of the focused one is always in sight.
    lead: stack.extent + stack.spacing
    contentExtent: stack.width + 2 * beside

    LazyStack {
        id: stack

        x: strip.beside
        y: strip.margin
        height: parent.height - 2 * strip.margin
        orientation: Qt.Horizontal
        extent: strip.extent
        spacing: 40
        // The cassettes run on to the edges of the display; a held key should find those beyond it painted.
        ahead: 960
        model: strip.cassettes
        place: strip.cassettes.place
        onHeld: cassette => strip.cassettes.place = cassette

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
