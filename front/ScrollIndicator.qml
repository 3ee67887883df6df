import QtQuick
import Quillmere.Front
import Quillmere.Screen

// A thin vertical bar that shows which part of a scroll area's content is visible. Hidden if all of it is.
Item {
    id: indicator

    required property ScrollArea area

    property color fill: StationPalette.faded(StationPalette.cream, 0.5)

    // Height of the content, at least that of the scroll area.
    readonly property real contentHeight: Math.max(area.contentExtent, area.height, 1)

    implicitWidth: 10
    visible: contentHeight > area.height

    CardPlate {
        width: parent.width
        height: Math.max(40, indicator.height * indicator.area.height / indicator.contentHeight)
        y: (indicator.height - height) * indicator.area.position
           / Math.max(indicator.contentHeight - indicator.area.height, 1)
        radius: width / 2
        fill: indicator.fill
        // The dark rim keeps the bar visible on a cream background.
        border: StationPalette.faded(StationPalette.inkNavy, 0.7)
        borderWidth: 2
    }
}
