import QtQuick
import Quillmere.Front

// The ring around what has the focus and keeps its own look, so far outside that it shows beside its own colour, too.
CardPlate {
    id: ring

    // From 0 at rest to 1 under the focus.
    required property real lift
    // Of the corners of what it surrounds.
    property real corner
    // From what it surrounds to its inner edge.
    property real gap: 4

    readonly property real line: 4

    anchors.fill: parent
    anchors.margins: -gap - line
    visible: lift > 0
    opacity: lift
    radius: corner + gap + line
    border: StationPalette.amber
    borderWidth: line
}
