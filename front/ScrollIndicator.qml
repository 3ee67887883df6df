import QtQuick
import Quillmere.Front
import Quillmere.Screen

// How far a tall content is scrolled: a thin bar, no longer in proportion than what is shown of it.
Item {
    id: indicator

    required property ScrollArea area

    property color fill: StationPalette.faded(StationPalette.cream, 0.5)

    // Of the content, at its length or that of the room.
    readonly property real whole: Math.max(area.contentExtent, area.height, 1)

    implicitWidth: 10
    visible: whole > area.height

    CardPlate {
        width: parent.width
        height: Math.max(40, indicator.height * indicator.area.height / indicator.whole)
        y: (indicator.height - height) * indicator.area.position / Math.max(indicator.whole - indicator.area.height, 1)
        radius: width / 2
        fill: indicator.fill
        // A dark rim, without which it could not be told from a cream box under it.
        border: StationPalette.faded(StationPalette.inkNavy, 0.7)
        borderWidth: 2
    }
}
