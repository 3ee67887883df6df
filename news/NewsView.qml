pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.News
import Quillmere.Screen
import Quillmere.Video

// The news channel, full screen: the live picture while the station's tower is lit, the standby card while it is dark.
FocusScreen {
    id: view

    required property Store store
    required property HubAPI hub
    required property Timepiece timepiece

    onAppeared: controller.appear()
    // Picture and sound end with the press that leaves, not with the slide that follows.
    onDisappeared: controller.disappear()
    Keys.onPressed: event => event.accepted = controller.press(event.key)

    NewsController {
        id: controller

        store: view.store
        hub: view.hub
        timepiece: view.timepiece
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

    // Made anew for each showing, as each begins with its first seconds.
    Repeater {
        model: controller.onAir

        LowerThird {
            anchors.fill: parent
            anchors.topMargin: tuner.visible ? tuner.height : 0
            timepiece: view.timepiece
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
            timepiece: view.timepiece
        }
    }

    TunerStrip {
        id: tuner

        anchors.left: parent.left
        anchors.right: parent.right
        visible: controller.hasTuner
        timepiece: view.timepiece
        stations: controller.stations
        current: controller.currentStation
        onPicked: station => controller.pick(station)
    }
}
