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
    // Of the panel from the edge below it, and from whatever there is above.
    readonly property real margin: 24

    Component.onCompleted: presence = Qt.binding(() => lower.isShown ? 1 : 0)

    LowerThirdController {
        id: lower

        timepiece: third.timepiece
    }

    Behavior on presence {
        NumberAnimation {
            duration: lower.slideTime
            easing: StationMotion.easeInOut
        }
    }

    LowerThirdLines {
        id: lines

        title: NewsTexts.onAirTitle(third.program)
        station: NewsTexts.onAirStation(third.stationLabel)
        titleWidth: rows.widest
        stationWidth: rows.widestStation
        // What the display leaves free for the two on the tallest panel.
        height: third.height - 2 * third.margin - 2 * third.padding - 2 * 10 - rows.spacing
                - (detail.text !== "" ? titles.spacing + detail.height : 0)
    }

    PixelRectangle {
        readonly property real rest: parent.height - third.margin - height

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
            readonly property real widestStation: widest - badge.width - badges.spacing - 2 * 18

            x: third.padding
            y: third.padding
            spacing: 14

            Row {
                id: badges

                spacing: 16

                PixelRectangle {
                    id: badge

                    anchors.verticalCenter: parent.verticalCenter
                    width: live.implicitWidth + 2 * 18
                    // As tall as the name beside it, if that is of one line, and that as tall as this.
                    height: Math.max(live.implicitHeight + 2 * 8, station.lineCount > 1 ? 0 : station.height + 2 * 10)
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

                PixelRectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: station.width + 2 * 18
                    height: Math.max(badge.height, station.height + 2 * 10)
                    color: StationPalette.faded(StationPalette.olive, 0.9)

                    StationText {
                        id: station

                        x: 18
                        anchors.verticalCenter: parent.verticalCenter
                        width: Math.min(implicitWidth, rows.widestStation)
                        text: lines.station
                        font: lines.stationFont
                        color: StationPalette.parchment
                        horizontalAlignment: Text.AlignLeft
                        wraps: true
                        maximumLineCount: lines.stationLines
                    }
                }
            }

            Column {
                id: titles

                spacing: 6

                StationText {
                    width: Math.min(implicitWidth, rows.widest)
                    text: lines.title
                    font: lines.titleFont
                    color: StationPalette.parchment
                    horizontalAlignment: Text.AlignLeft
                    wraps: true
                    maximumLineCount: lines.titleLines
                }

                StationText {
                    id: detail

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
