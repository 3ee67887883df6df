import QtQuick
import Quillmere.Front
import Quillmere.Playback

// Header of the transcript: a caption with body and date, the tape's title and the word count.
Column {
    id: header

    required property TranscriptController transcript
    // Maximum height, in points.
    required property real maximumHeight

    leftPadding: 110
    rightPadding: 110
    topPadding: 50
    bottomPadding: 8
    spacing: 10

    Item {
        width: header.width - header.leftPadding - header.rightPadding
        height: caption.height

        StationText {
            id: caption

            width: Math.min(implicitWidth, parent.width - 100)
            maximumHeight: header.maximumHeight / 3
            wraps: true
            text: header.transcript.caption
            font: Typography.standard(20, Font.DemiBold, 3)
            color: StationPalette.teal
        }

        // From the caption to the end of the row, on the caption's baseline.
        Rectangle {
            anchors.left: caption.right
            anchors.leftMargin: 16
            anchors.right: parent.right
            y: caption.baselineOffset - height
            height: 3
            color: StationPalette.inkNavy
        }
    }

    StationText {
        width: header.width - header.leftPadding - header.rightPadding
        maximumHeight: header.maximumHeight - header.topPadding - caption.height - words.height - 2 * header.spacing
                       - header.bottomPadding
        text: header.transcript.title
        font: Typography.standard(44, Font.Black)
        color: StationPalette.inkNavy
        horizontalAlignment: Text.AlignLeft
        wraps: true
        Accessible.role: Accessible.Heading
    }

    StationText {
        id: words

        visible: text !== ""
        text: header.transcript.wordCount
        font: Typography.standard(22, Font.DemiBold)
        color: StationPalette.faded(StationPalette.inkNavy, 0.5)
    }
}
