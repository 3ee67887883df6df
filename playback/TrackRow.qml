pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Front
import Quillmere.Playback
import Quillmere.Screen

// A name and the tracks of one kind as chips. Empty where there is nothing to choose.
FocusSection {
    id: row

    required property string name
    required property TrackList tracks

    readonly property bool hasChoice: tracks.count > 0
    // Whether one of the chips is focused.
    property bool containsFocus: false

    readonly property real chipHeight: 60
    // Space for the focus ring around a chip, in points.
    readonly property real margin: 10

    visible: hasChoice
    height: hasChoice ? chipHeight + 2 * margin : 0

    StationText {
        anchors.verticalCenter: parent.verticalCenter
        width: area.x
        text: row.name
        font: Typography.standard(26, Font.DemiBold)
        color: StationPalette.faded(StationPalette.cream, 0.7)
    }

    ScrollArea {
        id: area

        x: 190
        width: parent.width - x
        height: parent.height
        orientation: Qt.Horizontal
        revealMargin: 200
        contentExtent: chips.width + 2 * row.margin
        clip: contentExtent > width

        Row {
            id: chips

            x: row.margin
            y: row.margin
            spacing: 16

            Repeater {
                model: row.tracks

                PlainButton {
                    id: chip

                    required property int index
                    required property string title
                    required property bool isSelected

                    name: title
                    preferred: isSelected
                    width: label.width + 56
                    height: row.chipHeight
                    Accessible.checkable: true
                    Accessible.checked: isSelected
                    onActiveFocusChanged: row.containsFocus = activeFocus
                    onSelected: row.tracks.pick(index)

                    CardPlate {
                        anchors.fill: parent
                        radius: height / 2
                        fill: chip.isSelected ? StationPalette.amber : StationPalette.nightNavy
                        border: StationPalette.faded(StationPalette.cream, 0.25)
                        borderWidth: chip.isSelected ? 0 : 2
                    }

                    StationText {
                        id: label

                        anchors.centerIn: parent
                        width: Math.min(implicitWidth, area.width - 2 * row.margin - 56)
                        text: chip.title
                        font: Typography.standard(26, Font.DemiBold)
                        color: chip.isSelected ? StationPalette.inkNavy : StationPalette.cream
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
