import QtQuick
import Quillmere.Front
import Quillmere.News

// Panel over the live picture during its first seconds. It shows a LIVE badge, the station and the programme.
Item {
    id: third

    required property Clock clock
    required property string stationLabel
    required property string program
    required property string note
    required property string tagline
    required property var ticker // list of strings; not shown

    property alias shown: lower.isShown

    // Progress of sliding in: 0 is below the bottom edge, 1 the final position.
    property real slideProgress: 0

    readonly property real padding: 24
    // Minimum distance of the panel from the top and the bottom of this item.
    readonly property real margin: 24

    Component.onCompleted: slideProgress = Qt.binding(() => lower.isShown ? 1 : 0)

    LowerThirdController {
        id: lower

        clock: third.clock
    }

    Behavior on slideProgress {
        NumberAnimation {
            duration: lower.slideTime
            easing: StationMotion.easeInOut
        }
    }

    LineBudget {
        // Height for these two texts in a panel of maximum height.
        height: third.height - 2 * third.margin - 2 * third.padding - 2 * 10 - rows.spacing
                - (detail.text !== "" ? titles.spacing + detail.height : 0)

        BudgetedText {
            id: titleBudget

            text: NewsTexts.onAirTitle(third.program)
            font: Typography.standard(40, Font.Black)
            width: rows.maximumWidth
            minimumLines: 2
        }

        BudgetedText {
            id: stationBudget

            text: NewsTexts.onAirStation(third.stationLabel)
            font: Typography.standard(26, Font.DemiBold, 4)
            width: rows.maximumStationWidth
            minimumLines: 2
        }
    }

    PixelRectangle {
        objectName: "panel"

        readonly property real restingY: parent.height - third.margin - height

        x: 70
        y: restingY + (parent.height - restingY) * (1 - third.slideProgress)
        visible: third.slideProgress > 0
        opacity: third.slideProgress
        width: rows.width + 2 * third.padding
        height: rows.height + 2 * third.padding
        color: StationPalette.faded(StationPalette.soot, 0.88)

        Column {
            id: rows

            readonly property real maximumWidth: 1200 - 2 * third.padding
            readonly property real maximumStationWidth: maximumWidth - badge.width - badges.spacing - 2 * 18

            x: third.padding
            y: third.padding
            spacing: 14

            Row {
                id: badges

                spacing: 16

                PixelRectangle {
                    id: badge

                    objectName: "badge"
                    anchors.verticalCenter: parent.verticalCenter
                    width: live.implicitWidth + 2 * 18
                    // As tall as the station name beside it if that has one line, and vice versa.
                    height: Math.max(live.implicitHeight + 2 * 8, station.lineCount > 1 ? 0 : station.height + 2 * 10)
                    color: StationPalette.onAirRed

                    StationText {
                        id: live

                        anchors.centerIn: parent
                        // Half of the letter spacing after the last letter, so that the visible letters are centred.
                        anchors.horizontalCenterOffset: 2
                        text: StationTexts.live
                        font: Typography.standard(30, Font.Black, 4)
                        color: "white"
                    }
                }

                PixelRectangle {
                    objectName: "stationPlate"
                    anchors.verticalCenter: parent.verticalCenter
                    width: station.width + 2 * 18
                    height: Math.max(badge.height, station.height + 2 * 10)
                    color: StationPalette.faded(StationPalette.olive, 0.9)

                    StationText {
                        id: station

                        x: 18
                        anchors.verticalCenter: parent.verticalCenter
                        width: Math.min(implicitWidth, rows.maximumStationWidth)
                        text: stationBudget.text
                        font: stationBudget.font
                        color: StationPalette.parchment
                        horizontalAlignment: Text.AlignLeft
                        wraps: true
                        maximumLineCount: stationBudget.lines
                    }
                }
            }

            Column {
                id: titles

                spacing: 6

                StationText {
                    width: Math.min(implicitWidth, rows.maximumWidth)
                    text: titleBudget.text
                    font: titleBudget.font
                    color: StationPalette.parchment
                    horizontalAlignment: Text.AlignLeft
                    wraps: true
                    maximumLineCount: titleBudget.lines
                }

                StationText {
                    id: detail

                    width: Math.min(implicitWidth, rows.maximumWidth)
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
