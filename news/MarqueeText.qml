import QtQuick
import Quillmere.Front
import Quillmere.News

// A text on one line, cut where its room ends; while `running`, all of it passes through that room.
Marquee {
    id: marquee

    required property font font
    required property color color

    implicitHeight: words.implicitHeight
    textExtent: words.implicitWidth

    StationText {
        id: words

        x: marquee.offset
        width: marquee.showsWhole ? implicitWidth : marquee.width
        text: marquee.text
        font: marquee.font
        color: marquee.color
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
}
