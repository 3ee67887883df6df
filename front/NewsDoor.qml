import QtQuick
import Quillmere.Front

// The door to the live channel.
DoorCard {
    id: door

    required property bool towerLive

    title: StationTexts.newsDoor
    background: VeneerBackground {}
    border: StationPalette.faded(StationPalette.parchment, 0.25)

    Column {
        anchors.fill: parent
        spacing: 22

        CardPlate {
            id: television

            readonly property real leastHeight: 110
            // What the texts leave, and a long subtitle's is some of it.
            readonly property real room: parent.height - heading.height - station.height - lampRow.height
                                         - 4 * parent.spacing

            width: parent.width
            height: room - subtitle.height
            radius: 18
            background: DiagonalGradient {
                from: Qt.rgba(42 / 255, 39 / 255, 35 / 255, 1)
                to: Qt.rgba(20 / 255, 18 / 255, 15 / 255, 1)
            }

            MiniColorBars {
                anchors.fill: parent
                anchors.margins: 22
                visible: !door.towerLive
                opacity: 0.85
                bars: StationPalette.colorBars
            }

            StationText {
                anchors.centerIn: parent
                // The last letter's spacing is not part of the word's width to the eye.
                anchors.horizontalCenterOffset: 4
                visible: door.towerLive
                text: StationTexts.live
                font: Typography.standard(44, Font.Black, 8)
                color: StationPalette.onAirRed
            }
        }

        StationText {
            id: heading

            width: parent.width
            text: door.title
            font: Typography.standard(46, Font.Black, 2)
            color: StationPalette.parchment
        }

        StationText {
            id: station

            width: parent.width
            text: StationTexts.televisionName
            font: Typography.standard(24)
            color: StationPalette.olive
        }

        DoorSubtitle {
            id: subtitle

            width: parent.width
            text: door.subtitle
            room: television.room - television.leastHeight
        }

        Row {
            id: lampRow

            spacing: 24

            OnAirLamp {
                id: lamp

                live: door.towerLive
            }

            // The words of both stand on one line.
            StationLabel {
                anchors.baseline: lamp.baseline
                text: StationTexts.towerCaption(door.towerLive)
                size: 20
                color: door.towerLive ? StationPalette.onAirRed
                                      : StationPalette.faded(StationPalette.parchment, 0.55)
            }
        }
    }
}
