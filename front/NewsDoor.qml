import QtQuick
import Quillmere.Front

// Door to the news channel.
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

            readonly property real minimumHeight: 110
            // Height that the other rows leave free for the television and the subtitle.
            readonly property real availableHeight: parent.height - heading.height - station.height - lampRow.height
                                                    - 4 * parent.spacing

            objectName: "television"
            width: parent.width
            height: availableHeight - subtitle.height
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
                // Half of the letter spacing after the last letter, so that the visible letters are centred.
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
            availableHeight: television.availableHeight - television.minimumHeight
        }

        Row {
            id: lampRow

            spacing: 24

            OnAirLamp {
                id: lamp

                live: door.towerLive
            }

            // Aligned to the baseline of the lamp's text.
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
