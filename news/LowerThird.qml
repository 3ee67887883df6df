import QtQuick
import Quillmere.Front
import Quillmere.News

// What lies over the live picture for its first seconds: that it is live, whose it is, and what is on.
Item {
    id: third

    required property Timepiece timepiece
    required property string stationLabel
    required property string program
    required property string note
    required property string tagline
    required property var ticker // a list of texts, part of what it is given; it shows none of it

    property alias shown: lower.isShown

    // From 0 below the edge to 1 in its place.
    property real presence: 0

    readonly property real padding: 24

    Component.onCompleted: presence = Qt.binding(() => lower.isShown ? 1 : 0)

    LowerThirdController {
        id: lower

        timepiece: third.timepiece
    }

    Behavior on presence {
        NumberAnimation {
            duration: lower.slideTime
            easing.type: Easing.InOutQuad
        }
    }

    Rectangle {
        readonly property real rest: parent.height - 24 - height

        x: 70
        y: rest + (parent.height - rest) * (1 - third.presence)
        visible: third.presence > 0
        opacity: third.presence
        width: rows.width + 2 * third.padding
        height: rows.height + 2 * third.padding
        color: StationPalette.faded(StationPalette.soot, 0.88)

        Column {
            id: rows

            readonly property real widest: 1200 - 2 * third.padding

            x: third.padding
            y: third.padding
            spacing: 14

            Row {
                spacing: 16

                Rectangle {
                    id: badge

                    anchors.verticalCenter: parent.verticalCenter
                    width: live.implicitWidth + 2 * 18
                    height: live.implicitHeight + 2 * 8
                    color: StationPalette.onAirRed

                    StationText {
                        id: live

                        anchors.centerIn: parent
                        // The last letter's spacing is not part of the word's width to the eye.
                        anchors.horizontalCenterOffset: 2
                        text: StationTexts.live
                        font: Typography.standard(30, Font.Black, 4)
                        color: "white"
                    }
                }

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(station.implicitWidth + 2 * 18, rows.widest - badge.width - parent.spacing)
                    height: station.implicitHeight + 2 * 10
                    color: StationPalette.faded(StationPalette.olive, 0.9)

                    StationText {
                        id: station

                        x: 18
                        y: 10
                        width: parent.width - 2 * 18
                        text: NewsTexts.onAirStation(third.stationLabel)
                        font: Typography.standard(26, Font.DemiBold, 4)
                        color: StationPalette.parchment
                        horizontalAlignment: Text.AlignLeft
                    }
                }
            }

            Column {
                spacing: 6

                StationText {
                    width: Math.min(implicitWidth, rows.widest)
                    text: NewsTexts.onAirTitle(third.program)
                    font: Typography.standard(40, Font.Black)
                    color: StationPalette.parchment
                    horizontalAlignment: Text.AlignLeft
                    wraps: true
                    maximumLineCount: 2
                }

                StationText {
                    width: Math.min(implicitWidth, rows.widest)
                    visible: text !== ""
                    text: NewsTexts.onAirDetail(third.note, third.tagline)
                    font: Typography.standard(26)
                    color: StationPalette.faded(StationPalette.parchment, 0.75)
                    horizontalAlignment: Text.AlignLeft
                }
            }
        }
    }
}
