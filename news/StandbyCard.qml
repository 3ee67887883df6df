import QtQuick
import Quillmere.Front
import Quillmere.Hub
import Quillmere.News
import Quillmere.Screen

// Replaces the live picture while the tower is dark. It shows colour bars, a card with the next programme and a
// countdown, and the ticker. It must be at the origin of the canvas; bars and ticker extend to the edges of the
// display.
Item {
    id: standby

    required property newsStatus news
    required property tunerStation station // not shown
    required property bool checking
    required property Clock clock

    // Padding of the card above and below its rows.
    readonly property real padding: 56
    // Distance of a card of maximum height from the top of the display and from the ticker. With it, the tuner strip
    // covers at most the padding above the rows.
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
            clock: standby.clock
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    LineBudget {
        // Height that the fixed rows leave free in a card of maximum height.
        height: standby.height - ticker.height - 2 * (standby.margin + standby.padding) - heading.height - rule.height
                - status.height - station.height - countdown.headlineHeight - 4 * rows.spacing

        BudgetedText {
            id: labelBudget

            text: countdown.detailText
            font: countdown.detailFont
            width: rows.maximumWidth
            gap: countdown.spacing
            minimumLines: 2
        }

        BudgetedText {
            id: titleBudget

            text: NewsTexts.cardLine(standby.news.programTitle)
            font: Typography.standard(30)
            width: rows.maximumWidth
            gap: rows.spacing
            minimumLines: 2
        }

        BudgetedText {
            id: noteBudget

            text: NewsTexts.cardLine(standby.news.programNote)
            font: Typography.standard(24)
            width: rows.maximumWidth
            gap: rows.spacing
            minimumLines: 4
        }
    }

    SoftShadow {
        anchors.fill: card
        color: StationPalette.faded("black", 0.5)
        // A blur of radius 30 fades out at twice the radius.
        spread: 2 * 30
        radius: card.radius
    }

    CardPlate {
        id: card

        objectName: "card"
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

        // Width of a row in a card of maximum width.
        readonly property real maximumWidth: 1500 - 2 * 90

        x: card.x + 90
        y: card.y + standby.padding
        spacing: 24

        StationText {
            id: heading

            anchors.horizontalCenter: parent.horizontalCenter
            // Half of the letter spacing after the last letter, so that the visible letters are centred.
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
            width: Math.min(implicitWidth, rows.maximumWidth)
            visible: text !== ""
            text: titleBudget.text
            font: titleBudget.font
            color: StationPalette.faded(StationPalette.parchment, 0.9)
            horizontalAlignment: Text.AlignHCenter
            wraps: true
            maximumLineCount: titleBudget.lines
        }

        StationText {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(implicitWidth, rows.maximumWidth)
            visible: text !== ""
            text: noteBudget.text
            font: noteBudget.font
            color: StationPalette.faded(StationPalette.parchment, 0.6)
            horizontalAlignment: Text.AlignHCenter
            wraps: true
            maximumLineCount: noteBudget.lines
        }

        Row {
            id: status

            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 14

            CardPlate {
                objectName: "statusDot"
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
            width: Math.min(implicitWidth, rows.maximumWidth)
            nextBroadcast: standby.news.nextBroadcast
            label: standby.news.nextBroadcastLabel
            clock: standby.clock
            detailLines: labelBudget.lines
        }
    }
}
