import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Screen

// The front screen: the name of the station, two doors and a status line.
FocusScreen {
    id: screen

    required property Store store
    required property Clock clock

    // Screens behind the doors (FocusScreens); null for none.
    property alias newsScreen: landing.newsScreen
    property alias shopScreen: landing.shopScreen

    property alias showNews: landing.showNews
    property alias showStore: landing.showStore

    // The viewer quits the program.
    signal quitRequested

    Component.onCompleted: landing.appear()
    Keys.onPressed: (event) => event.accepted = landing.press(event.key)

    LandingController {
        id: landing

        store: screen.store
        clock: screen.clock
        onQuitRequested: screen.quitRequested()
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
                    // Half of the letter spacing after the last letter, so that the visible letters are centred.
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

        // Notice that a second press of back quits the program.
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
                text: StationTexts.quitNotice
                font: Typography.standard(22)
                color: StationPalette.parchment
                Accessible.role: Accessible.AlertMessage
            }
        }
    }

    // Screen of the open door, on top of everything. Back dismisses it, unless that screen handles back itself.
    FullScreenCover {
        anchors.fill: parent
        screen: landing.cover
        beneath: front
        onDismissed: landing.dismissCover()
    }
}
