pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.News
import Quillmere.Screen
import Quillmere.Video

// The news channel, full screen. It shows the live picture while the tower of the station is lit, else the standby
// card.
FocusScreen {
    id: view

    required property Store store
    required property HubAPI hub
    required property Clock clock

    onAppeared: controller.appear()
    // Picture and sound stop when the key that dismisses the screen is pressed, not after the slide animation.
    onDisappeared: controller.disappear()
    Keys.onPressed: event => event.accepted = controller.press(event.key)

    NewsController {
        id: controller

        store: view.store
        hub: view.hub
        clock: view.clock
    }

    FullBleed {
        Rectangle {
            anchors.fill: parent
            color: "black"
        }

        VideoView {
            anchors.fill: parent
            visible: controller.isLit
            player: controller.player
        }
    }

    // The Repeater creates a new LowerThird for each shown picture, since it appears in the first seconds of each.
    Repeater {
        model: controller.shownStationNumbers

        LowerThird {
            anchors.fill: parent
            anchors.topMargin: tuner.visible ? tuner.height : 0
            clock: view.clock
            stationLabel: controller.currentStation.label
            program: view.store.status.news.programTitle
            note: view.store.status.news.programNote
            tagline: view.store.status.news.tagline
            ticker: view.store.status.news.ticker
        }
    }

    Repeater {
        model: controller.isOnStandby ? 1 : 0

        StandbyCard {
            anchors.fill: parent
            news: view.store.status.news
            station: controller.currentStation
            checking: controller.checking
            clock: view.clock
        }
    }

    TunerStrip {
        id: tuner

        anchors.left: parent.left
        anchors.right: parent.right
        visible: controller.hasTuner
        clock: view.clock
        stations: controller.stations
        current: controller.currentStation
        onPicked: station => controller.pick(station)
    }
}
