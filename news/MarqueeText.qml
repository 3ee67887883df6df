import QtQuick
import Quillmere.Front
import Quillmere.News

// A one-line text, elided if it does not fit. While `running`, a text that does not fit scrolls instead.
Marquee {
    id: marquee

    required property font font
    required property color color

    implicitHeight: words.implicitHeight
    textWidth: words.implicitWidth

    StationText {
        id: words

        x: marquee.offset
        width: marquee.showsFullText ? implicitWidth : marquee.width
        text: marquee.text
        font: marquee.font
        color: marquee.color
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true
    }
}
