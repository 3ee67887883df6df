import QtQuick
import Quillmere.Front
import Quillmere.Playback

// What a viewer reads when a tape does not play, and the way back.
Item {
    id: panel

    required property string message

    readonly property color outline: StationPalette.faded("black", 0.9)
    // Above and below the panel's rows at least.
    readonly property real margin: 60

    signal dismissed()

    Column {
        id: rows

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        spacing: 26

        Text {
            id: heading

            anchors.horizontalCenter: parent.horizontalCenter
            text: TapePlayerTexts.tracking
            font: Typography.standard(64, Font.Black, 10)
            color: StationPalette.parchment
            // To be read on a bright picture, too.
            style: Text.Outline
            styleColor: panel.outline
            // The last letter's tracking would push the word off the centre.
            leftPadding: 10
            textFormat: Text.PlainText
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            x: 200
            width: parent.width - 2 * x
            height: Math.min(implicitHeight,
                             panel.height - 2 * panel.margin - heading.height - back.height - 2 * rows.spacing)
            text: panel.message
            font: Typography.standard(28)
            color: StationPalette.faded(StationPalette.parchment, 0.75)
            style: Text.Outline
            styleColor: panel.outline
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }

        PlateButton {
            id: back

            anchors.horizontalCenter: parent.horizontalCenter
            preferred: true
            text: TapePlayerTexts.backToTheShelves
            size: 26
            onSelected: panel.dismissed()
        }
    }
}
