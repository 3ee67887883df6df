import QtQuick
import Quillmere.Front

// A ring around a focused item whose own appearance does not change. A gap separates the two, so that the ring is
// visible around items of the same colour, too.
CardPlate {
    id: ring

    // Progress of the focus effect: 0 without focus, 1 with focus.
    required property real lift
    // Corner radius of the surrounded item, in points.
    property real corner
    // Distance from the surrounded item to the inner edge of the ring.
    property real gap: 4

    // Width of the ring.
    readonly property real line: 4

    anchors.fill: parent
    anchors.margins: -gap - line
    visible: lift > 0
    opacity: lift
    radius: corner + gap + line
    border: StationPalette.amber
    borderWidth: line
}
