import QtQuick
import Quillmere.Front
import Quillmere.News

// Remaining time until the next broadcast, and its label. If narrower than its implicit width, it wraps the label.
Item {
    id: countdown

    required property string nextBroadcast
    required property string label
    required property Clock clock
    // Maximum number of lines of the row under the headline.
    required property int detailLines

    readonly property alias detailText: timer.detail
    readonly property alias detailFont: detail.font
    readonly property alias headlineHeight: headline.height
    readonly property alias spacing: rows.spacing

    implicitWidth: Math.max(headline.implicitWidth, detail.visible ? detail.implicitWidth : 0)
    implicitHeight: rows.implicitHeight

    CountdownTimer {
        id: timer

        nextBroadcast: countdown.nextBroadcast
        label: countdown.label
        clock: countdown.clock
        running: countdown.visible
    }

    Column {
        id: rows

        width: countdown.width
        spacing: 10

        StationText {
            id: headline

            width: parent.width
            text: timer.headline
            font: timer.counting ? Typography.monospaced(64, Font.Bold, 0) : Typography.standard(28)
            color: timer.counting ? StationPalette.brick : StationPalette.faded(StationPalette.parchment, 0.65)
            horizontalAlignment: Text.AlignHCenter
        }

        StationText {
            id: detail

            width: parent.width
            visible: text !== ""
            text: timer.detail
            font: Typography.standard(timer.counting ? 24 : 22)
            color: StationPalette.faded(StationPalette.parchment, timer.counting ? 0.7 : 0.4)
            horizontalAlignment: Text.AlignHCenter
            wraps: true
            maximumLineCount: countdown.detailLines
        }
    }
}
