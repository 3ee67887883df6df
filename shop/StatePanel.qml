import QtQuick
import Quillmere.Front
import Quillmere.Shop

// Shown while there are no shelves: a spinner, or a message and a button to try again.
Item {
    id: panel

    required property bool isLoading
    required property string message

    signal retried

    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 26

        StationText {
            id: sign

            anchors.horizontalCenter: parent.horizontalCenter
            text: RewinderyTexts.sign
            font: Typography.standard(72, Font.Black)
            color: StationPalette.amber
            Accessible.role: Accessible.Heading
        }

        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: panel.isLoading
            scale: 1.6
            color: StationPalette.cream
        }

        StationText {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: panel.isLoading
            text: RewinderyTexts.checking
            font: Typography.standard(28)
            color: StationPalette.faded(StationPalette.cream, 0.7)
        }

        StationText {
            anchors.horizontalCenter: parent.horizontalCenter
            width: parent.width - 400
            visible: !panel.isLoading
            text: panel.message
            font: Typography.standard(28)
            color: StationPalette.faded(StationPalette.cream, 0.75)
            horizontalAlignment: Text.AlignHCenter
            wraps: true
            maximumHeight: panel.height - sign.height - retry.height - 2 * parent.spacing - 2 * 60
            Accessible.role: Accessible.AlertMessage
        }

        PlateButton {
            id: retry

            anchors.horizontalCenter: parent.horizontalCenter
            visible: !panel.isLoading
            text: RewinderyTexts.tryAgain
            size: 28
            onSelected: panel.retried()
        }
    }
}
