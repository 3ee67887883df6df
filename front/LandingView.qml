import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen

// The front screen: the station's name and its two doors.
FocusScreen {
    id: screen

    required property Store store
    required property Timepiece timepiece

    // What stands behind the doors, FocusScreens; null for none.
    property alias newsScreen: landing.newsScreen
    property alias shopScreen: landing.shopScreen

    property alias showNews: landing.showNews
    property alias showStore: landing.showStore

    // The viewer switches the set off.
    signal leave

    Component.onCompleted: landing.appear()
    Keys.onPressed: (event) => event.accepted = landing.press(event.key)

    LandingController {
        id: landing

        store: screen.store
        timepiece: screen.timepiece
        onLeave: screen.leave()
    }

    Item {
        id: front

        anchors.fill: parent

        FullBleed {
            NightSky {
                anchors.fill: parent
            }
        }

        Column {
            anchors.centerIn: parent
            spacing: 46

            Column {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 12

                StationText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    // The last letter's spacing is not part of the word's width to the eye.
                    anchors.horizontalCenterOffset: 7
                    text: StationTexts.stationName
                    font: Typography.standard(78, Font.Black, 14)
                    color: StationPalette.cream
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

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 64

                NewsDoor {
                    towerLive: landing.towerLive
                    subtitle: landing.newsSubtitle
                    onSelected: landing.showNews = true
                }

                StoreDoor {
                    subtitle: landing.storeSubtitle
                    onSelected: landing.showStore = true
                }
            }

            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 1760
                height: 40

                StationText {
                    anchors.fill: parent
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    text: landing.statusText
                    font: Typography.standard(landing.statusSize)
                    color: landing.statusColor
                }
            }
        }

        // The notice that back would leave.
        CardPlate {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 22
            visible: landing.noticeShown
            width: notice.implicitWidth + 56
            height: 46
            radius: 23
            fill: StationPalette.soot

            StationText {
                id: notice

                anchors.centerIn: parent
                text: StationTexts.leaveNotice
                font: Typography.standard(22)
                color: StationPalette.parchment
                Accessible.role: Accessible.AlertMessage
            }
        }
    }

    // A door's screen, over everything; back dismisses it unless it has a use for back itself.
    FullScreenCover {
        anchors.fill: parent
        screen: landing.cover
        beneath: front
        onDismissed: landing.dismissCover()
    }
}
