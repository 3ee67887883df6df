import QtQuick
import Quillmere.Front
import Quillmere.Playback

// Message for a tape that does not play, and a button that goes back.
Item {
    id: panel

    required property string message

    readonly property color outline: StationPalette.faded("black", 0.9)
    // Minimum space above and below the rows, in points.
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
            // Keeps the text readable on a bright picture.
            style: Text.Outline
            styleColor: panel.outline
            // Balances the letter spacing after the last letter, which would push the word off the centre.
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
