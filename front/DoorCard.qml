import QtQuick
import Quillmere.Front
import Quillmere.Screen

// Common frame of the two doors of the front screen.
CardButton {
    id: card

    property PaintedItem background
    property color border
    property string title
    property string subtitle
    default property alias inside: inside.data

    // Padding at the left and right. The longest fixed text just fits between.
    readonly property real sidePadding: 36
    readonly property real padding: 54

    name: title
    implicitWidth: 620
    implicitHeight: 620
    radius: 24
    liftScale: StationMotion.liftScale
    brightening: 0 // a focused door keeps its colours
    Accessible.description: subtitle

    CardPlate {
        anchors.fill: parent
        background: card.background
        radius: card.radius
        continuous: true
        border: card.border
        borderWidth: 3
    }

    Item {
        id: inside

        anchors.fill: parent
        anchors.margins: card.padding
        anchors.leftMargin: card.sidePadding
        anchors.rightMargin: card.sidePadding
    }
}
