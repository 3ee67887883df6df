import QtQuick
import Quillmere.Front

// A small caption in capitals.
Item {
    id: label

    required property string text
    required property int size
    required property color color

    implicitWidth: caption.implicitWidth
    implicitHeight: caption.implicitHeight
    baselineOffset: caption.baselineOffset

    StationText {
        id: caption

        anchors.fill: parent
        text: Typography.capitals(label.text)
        font: Typography.label(label.size)
        color: label.color
        verticalAlignment: Text.AlignVCenter
    }
}
