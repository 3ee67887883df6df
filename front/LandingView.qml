import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen

// The front screen: the station's name and its two doors.
FocusScope {
    id: screen

    required property Store store
    required property Timepiece timepiece

    // What stands behind the doors; null until it is built.
    property alias newsScreen: landing.newsScreen
    property alias shopScreen: landing.shopScreen

    property alias showNews: landing.showNews
    property alias showStore: landing.showStore
    readonly property bool covered: landing.cover !== null

    // The viewer switches the set off.
    signal leave

    Component.onCompleted: landing.appear()
    onCoveredChanged: covered ? cover.forceActiveFocus() : doorway.forceActiveFocus()
    Keys.onPressed: (event) => event.accepted = landing.press(event.key)

    LandingController {
        id: landing

        store: screen.store
        timepiece: screen.timepiece
        onLeave: screen.leave()
    }

    FullBleed {
        visible: !screen.covered

        NightSky {
            anchors.fill: parent
        }
    }

    Column {
        anchors.centerIn: parent
        visible: !screen.covered
        spacing: 46

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                // The last letter's spacing is not part of the word's width to the eye.
                anchors.horizontalCenterOffset: 7
                text: StationTexts.stationName
                font: Typography.standard(78, Font.Black, 14)
                color: StationPalette.cream
                textFormat: Text.PlainText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 650
                height: 4
                color: StationPalette.amber
            }

            StationLabel {
                anchors.horizontalCenter: parent.horizontalCenter
                anchors.horizontalCenterOffset: 2
                width: Math.min(implicitWidth, 1760)
                text: landing.hubHost
                size: 24
                color: StationPalette.faded(StationPalette.cream, 0.65)
            }
        }

        FocusScope {
            id: doorway

            width: doors.width
            height: doors.height
            anchors.horizontalCenter: parent.horizontalCenter
            focus: true

            Row {
                id: doors

                spacing: 64

                NewsDoor {
                    id: newsDoor

                    towerLive: landing.towerLive
                    subtitle: landing.newsSubtitle
                    focus: true
                    Keys.onRightPressed: storeDoor.forceActiveFocus()
                    onSelected: landing.showNews = true
                }

                StoreDoor {
                    id: storeDoor

                    subtitle: landing.storeSubtitle
                    Keys.onLeftPressed: newsDoor.forceActiveFocus()
                    onSelected: landing.showStore = true
                }
            }
        }

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 1760
            height: 40

            Text {
                anchors.fill: parent
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                text: landing.statusText
                font: Typography.standard(landing.statusSize)
                color: landing.statusColor
                elide: Text.ElideRight
                maximumLineCount: 1
                textFormat: Text.PlainText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }

    // The notice that back would leave.
    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 22
        visible: landing.noticeShown && !screen.covered
        width: notice.implicitWidth + 56
        height: 46
        radius: 23
        color: StationPalette.soot

        Text {
            id: notice

            anchors.centerIn: parent
            text: StationTexts.leaveNotice
            font: Typography.standard(22)
            color: StationPalette.parchment
            textFormat: Text.PlainText
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }

    // A door's screen, over everything; back dismisses it unless it has a use for back itself.
    Loader {
        id: cover

        anchors.fill: parent
        sourceComponent: landing.cover
        Keys.onBackPressed: landing.dismissCover()
        onLoaded: (item as Item).forceActiveFocus()
    }
}
