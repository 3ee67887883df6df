import QtQuick
import Quillmere.Front
import Quillmere.Hub
import Quillmere.News
import Quillmere.Screen

// What stands in for the picture of a dark tower: colour bars, what is to come and when, and the ticker. It stands at the
// canvas's origin; bars and ticker reach to the edges of the display.
Item {
    id: standby

    required property newsStatus news
    required property tunerStation station // part of what it is given; it shows none of it
    required property bool checking
    required property Timepiece timepiece

    // Within the card, above and below its rows.
    readonly property real padding: 56
    // Of the tallest card from the top of the display and from the ticker: of the card, the tuner strip may cover no more
    // than what is free above its rows.
    readonly property real margin: 40

    FullBleed {
        ColorBars {
            anchors.fill: parent
            bars: StationPalette.colorBars
        }

        TickerCrawl {
            id: ticker

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            lines: standby.news.ticker
            timepiece: standby.timepiece
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    StandbyLines {
        id: lines

        title: NewsTexts.cardLine(standby.news.programTitle)
        note: NewsTexts.cardLine(standby.news.programNote)
        label: countdown.detailText
        labelFont: countdown.detailFont
        width: rows.widest
        rowGap: rows.spacing
        labelGap: countdown.spacing
        // What the rows that are always there leave free on the tallest card.
        height: standby.height - ticker.height - 2 * (standby.margin + standby.padding) - heading.height - rule.height
                - status.height - station.height - countdown.headlineHeight - 4 * rows.spacing
    }

    SoftShadow {
        anchors.fill: card
        color: StationPalette.faded("black", 0.5)
        // A shadow of some radius has faded out at twice that from the card.
        spread: 2 * 30
        radius: card.radius
    }

    CardPlate {
        id: card

        x: Math.round((parent.width - width) / 2)
        y: Math.round((parent.height - ticker.height - height) / 2)
        width: rows.width + 2 * 90
        height: rows.height + 2 * standby.padding
        radius: 12
        fill: StationPalette.faded(StationPalette.soot, 0.97)
        border: StationPalette.faded(StationPalette.parchment, 0.18)
        borderWidth: 2
    }

    Column {
        id: rows

        // What the widest card leaves free.
        readonly property real widest: 1500 - 2 * 90

        x: card.x + 90
        y: card.y + standby.padding
        spacing: 24

        StationText {
            id: heading

            anchors.horizontalCenter: parent.horizontalCenter
            // The last letter's spacing is not part of the word's width to the eye.
            anchors.horizontalCenterOffset: 4
            text: NewsTexts.heading
            font: Typography.standard(92, Font.Black, 8)
            color: StationPalette.parchment
            Accessible.role: Accessible.Heading
        }

        PixelRectangle {
            id: rule

            anchors.horizontalCenter: parent.horizontalCenter
            width: 420
            height: 3
            keepsSize: true
            color: StationPalette.brick
        }

        StationText {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, rows.widest)
            visible: text !== ""
            text: lines.title
            font: lines.titleFont
            color: StationPalette.faded(StationPalette.parchment, 0.9)
            horizontalAlignment: Text.AlignHCenter
            wraps: true
            maximumLineCount: lines.titleLines
        }

        StationText {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, rows.widest)
            visible: text !== ""
            text: lines.note
            font: lines.noteFont
            color: StationPalette.faded(StationPalette.parchment, 0.6)
            horizontalAlignment: Text.AlignHCenter
            wraps: true
            maximumLineCount: lines.noteLines
        }

        Row {
            id: status

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 14

            CardPlate {
                anchors.verticalCenter: parent.verticalCenter
                width: 14
                height: 14
                radius: 7
                fill: standby.checking ? StationPalette.olive : StationPalette.brick
            }

            StationText {
                text: NewsTexts.towerLine(standby.checking)
                font: Typography.standard(21, Font.DemiBold, 3)
                color: StationPalette.faded(StationPalette.parchment, 0.7)
            }
        }

        StationLabel {
            id: station

            anchors.horizontalCenter: parent.horizontalCenter
            anchors.horizontalCenterOffset: 3
            text: StationTexts.televisionName
            size: 28
            color: StationPalette.olive
        }

        Countdown {
            id: countdown

            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, rows.widest)
            nextBroadcast: standby.news.nextBroadcast
            label: standby.news.nextBroadcastLabel
            timepiece: standby.timepiece
            detailLines: lines.labelLines
        }
    }
}
