pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// A row of chips, one for all markets and one for each; it moves where they are more than it has room for.
Item {
    id: picker

    required property MarketList markets
    // What the chips stand on.
    required property PaintedItem ground

    readonly property real chipHeight: 54
    // Room for the ring around a chip.
    readonly property real margin: 10
    // At either end, less than stays in view beside the focused chip.
    readonly property real fade: 120

    height: chipHeight + 2 * margin

    Item {
        id: cut

        // Within the fades by more than what is rounded.
        readonly property real inset: 1

        anchors.fill: parent
        anchors.leftMargin: inset
        anchors.rightMargin: inset
        clip: area.contentExtent > area.width

        ScrollArea {
            id: area

            x: -cut.inset
            width: picker.width
            height: parent.height
            orientation: Qt.Horizontal
            // More than the space between two chips, so that left is the chip before and not the button that it lies under.
            lead: 300
            contentExtent: chips.width + 2 * picker.margin

            LazyStack {
                id: chips

                x: picker.margin
                y: picker.margin
                height: picker.chipHeight
                orientation: Qt.Horizontal
                spacing: 14
                ahead: 400
                model: picker.markets
                place: picker.markets.place
                onHeld: chip => picker.markets.place = chip
                onContainsFocusChanged: picker.markets.hasFocus = containsFocus

                PlainButton {
                    id: chip

                    required property int index
                    required property string title
                    required property string count
                    required property bool isSelected
                    required property real extent

                    readonly property color ink: isSelected ? StationPalette.inkNavy : StationPalette.cream

                    name: title + " " + count
                    width: extent
                    height: picker.chipHeight
                    onSelected: picker.markets.pick(index)
                    Accessible.checkable: true
                    Accessible.checked: isSelected

                    CardPlate {
                        anchors.fill: parent
                        radius: height / 2
                        border: StationPalette.faded(StationPalette.cream, 0.2)
                        borderWidth: 1
                        fill: chip.isSelected ? StationPalette.amber : StationPalette.nightNavy
                    }

                    StationText {
                        anchors.left: parent.left
                        anchors.leftMargin: picker.markets.padding
                        anchors.right: tapes.left
                        anchors.rightMargin: picker.markets.gap
                        anchors.verticalCenter: parent.verticalCenter
                        text: chip.title
                        font: picker.markets.titleFont
                        color: chip.ink
                        Accessible.ignored: true
                    }

                    StationText {
                        id: tapes

                        anchors.right: parent.right
                        anchors.rightMargin: picker.markets.padding
                        anchors.verticalCenter: parent.verticalCenter
                        text: chip.count
                        font: picker.markets.countFont
                        color: chip.ink
                        Accessible.ignored: true
                    }
                }
            }
        }
    }

    EdgeFade {
        width: picker.fade
        height: parent.height
        ground: picker.ground
        edge: Qt.LeftEdge
        hidden: area.position
    }

    EdgeFade {
        anchors.right: parent.right
        width: picker.fade
        height: parent.height
        ground: picker.ground
        edge: Qt.RightEdge
        hidden: area.contentExtent - area.width - area.position
    }
}
