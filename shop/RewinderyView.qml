pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen
import Quillmere.Shop

// Scaffolding: the shop as one plain list, to be taken away together with TapeList once its shelves are built.
FocusScope {
    id: shop

    required property Store store

    // What plays a tape; it takes it from `chosen` and clears `playing` when it is done.
    required property Component playerScreen
    property alias chosen: tapes.chosen
    property alias playing: tapes.playing

    focus: true
    onPlayingChanged: playing ? player.forceActiveFocus() : list.forceActiveFocus()

    FullBleed {
        NightSky {
            anchors.fill: parent
            visible: !shop.playing
        }
    }

    ListView {
        id: list

        anchors.fill: parent
        anchors.leftMargin: 160
        anchors.rightMargin: 160
        visible: !shop.playing
        focus: true
        interactive: false
        keyNavigationEnabled: false
        preferredHighlightBegin: 300
        preferredHighlightEnd: 780
        highlightRangeMode: ListView.ApplyRange
        highlightMoveDuration: 120
        highlightFollowsCurrentItem: true
        model: tapes
        currentIndex: tapes.currentRow
        Keys.onUpPressed: tapes.move(-1)
        Keys.onDownPressed: tapes.move(1)
        Keys.onSelectPressed: tapes.playing = true

        delegate: Item {
            id: row

            required property int index
            required property string text
            required property bool isTape

            width: list.width
            height: isTape ? 62 : 104
            Accessible.role: isTape ? Accessible.ListItem : Accessible.Heading
            Accessible.name: text
            Accessible.focused: ListView.isCurrentItem

            Rectangle {
                anchors.fill: parent
                visible: row.isTape && row.ListView.isCurrentItem
                radius: 14
                color: StationPalette.cream
            }

            Text {
                anchors.fill: parent
                anchors.leftMargin: row.isTape ? 28 : 0
                anchors.rightMargin: 28
                anchors.bottomMargin: row.isTape ? 0 : 10
                verticalAlignment: row.isTape ? Text.AlignVCenter : Text.AlignBottom
                text: row.text
                font: row.isTape ? Typography.standard(28) : Typography.standard(40, Font.Black, 1)
                color: !row.isTape ? StationPalette.amber
                                   : row.ListView.isCurrentItem ? StationPalette.inkNavy : StationPalette.cream
                elide: Text.ElideRight
                maximumLineCount: 1
                textFormat: Text.PlainText
            }
        }
    }

    Text {
        anchors.centerIn: parent
        width: parent.width - 400
        visible: !shop.playing && text !== ""
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        color: StationPalette.cream
        font: Typography.standard(28)
        text: tapes.emptyText
        Accessible.name: text
    }

    TapeList {
        id: tapes

        store: shop.store
    }

    Loader {
        id: player

        anchors.fill: parent
        active: shop.playing
        sourceComponent: shop.playerScreen
        Keys.onBackPressed: shop.playing = false
        onLoaded: (item as Item).forceActiveFocus()
    }
}
