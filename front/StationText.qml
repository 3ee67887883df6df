import QtQuick
import Quillmere.Front

// The text item that every screen uses for all of its texts. A read-only TextEdit draws the glyphs, because Text makes
// a line taller if it contains glyphs of fallback fonts, and supports only one font for the whole text.
StationTextItem {
    id: words

    property color color: "black"

    document: letters.textDocument
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    TextEdit {
        id: letters

        y: words.documentTop
        width: words.width
        enabled: false
        readOnly: true
        font: words.font
        color: words.color
        wrapMode: words.wraps ? TextEdit.Wrap : TextEdit.NoWrap
        textFormat: TextEdit.PlainText
        Accessible.ignored: true
    }
}
