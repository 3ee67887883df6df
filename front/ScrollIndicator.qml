import QtQuick
import Quillmere.Front
import Quillmere.Screen

// How far a tall content is scrolled: a thin bar, no longer in proportion than what is shown of it.
Item {
    id: indicator

    required property ScrollArea area

    readonly property real hidden: area.contentExtent - area.height

    implicitWidth: 6
    visible: hidden > 0

    CardPlate {
        width: parent.width
        height: Math.max(40, indicator.height * indicator.area.height / indicator.area.contentExtent)
        y: (indicator.height - height) * indicator.area.position / indicator.hidden
        radius: width / 2
        fill: StationPalette.faded(StationPalette.cream, 0.35)
    }
}
