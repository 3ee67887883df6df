import QtQuick
import Quillmere.Front
import Quillmere.Playback

// What the transcript is of.
Column {
    id: header

    required property TranscriptController transcript

    leftPadding: 110
    rightPadding: 110
    topPadding: 50
    bottomPadding: 8
    spacing: 10

    Item {
        width: header.width - header.leftPadding - header.rightPadding
        height: caption.height

        Text {
            id: caption

            width: Math.min(implicitWidth, parent.width - 100)
            text: header.transcript.caption
            font: Typography.standard(20, Font.DemiBold, 3)
            color: StationPalette.teal
            elide: Text.ElideRight
            maximumLineCount: 1
            textFormat: Text.PlainText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        // On the line that the letters stand on, to the end of the row.
        Rectangle {
            anchors.left: caption.right
            anchors.leftMargin: 16
            anchors.right: parent.right
            y: caption.baselineOffset - height
            height: 3
            color: StationPalette.inkNavy
        }
    }

    Text {
        width: header.width - header.leftPadding - header.rightPadding
        text: header.transcript.title
        font: Typography.standard(44, Font.Black)
        color: StationPalette.inkNavy
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 2
        textFormat: Text.PlainText
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        visible: text !== ""
        text: header.transcript.wordCount
        font: Typography.standard(22, Font.DemiBold)
        color: StationPalette.faded(StationPalette.inkNavy, 0.5)
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
