pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// A row of chips: one for all markets and one for each market. Scrolls if it is too narrow for them.
Item {
    id: picker

    required property MarketList markets
    // The art behind the chips.
    required property PaintedItem background

    readonly property real chipHeight: 54
    // Space for the focus ring around a chip, in points.
    readonly property real margin: 10
    // Length of the fade at each end, in points; shorter than what stays visible beside the focused chip.
    readonly property real fade: 120

    height: chipHeight + 2 * margin

    Item {
        id: cut

        // The chips are clipped this far inside the fades, in points, so that rounding shows no chip outside a fade.
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
            // Larger than the spacing, so that the left key finds the previous chip rather than the button beside the
            // row.
            revealMargin: 300
            contentExtent: chips.width + 2 * picker.margin

            LazyStack {
                id: chips

                x: picker.margin
                y: picker.margin
                height: picker.chipHeight
                orientation: Qt.Horizontal
                spacing: 14
                cacheBuffer: 400
                model: picker.markets

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
        background: picker.background
        edge: Qt.LeftEdge
        hiddenLength: area.position
    }

    EdgeFade {
        anchors.right: parent.right
        width: picker.fade
        height: parent.height
        background: picker.background
        edge: Qt.RightEdge
        hiddenLength: area.contentExtent - area.width - area.position
    }
}
