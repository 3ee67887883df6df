import QtQuick
import Quillmere.Front
import Quillmere.Shop

// What stands in for the shelves while there are none.
Item {
    id: panel

    required property bool isLoading
    required property string message

    signal retried

    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 26

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: RewinderyTexts.sign
            font: Typography.standard(72, Font.Black)
            color: StationPalette.amber
            textFormat: Text.PlainText
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: panel.isLoading
            scale: 1.6
            color: StationPalette.cream
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: panel.isLoading
            text: RewinderyTexts.checking
            font: Typography.standard(28)
            color: StationPalette.faded(StationPalette.cream, 0.7)
            textFormat: Text.PlainText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            width: parent.width - 400
            visible: !panel.isLoading
            text: panel.message
            font: Typography.standard(28)
            color: StationPalette.faded(StationPalette.cream, 0.75)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 16
            textFormat: Text.PlainText
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }

        PlateButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: !panel.isLoading
            text: RewinderyTexts.tryAgain
            size: 28
            onSelected: panel.retried()
        }
    }
}
