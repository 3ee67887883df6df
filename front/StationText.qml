import QtQuick
import Quillmere.Front

// A text of the station's: every text of every screen. An edit item that cannot be edited draws the letters, as Text would
// let those of other fonts make a line taller, and has only one font for all of them.
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
