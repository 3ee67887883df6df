pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.App
import Quillmere.Front
import Quillmere.Playback
import Quillmere.Screen
import Quillmere.Shop

ScreenWindow {
    id: window

    required property QuillmereTVApp app

    title: "Quillmere Television"
    color: StationPalette.inkNavy

    Canvas {
        LandingView {
            anchors.fill: parent
            focus: true
            store: window.app.store
            timepiece: window.app.timepiece
            onLeave: Qt.quit()

            shopScreen: Component {
                RewinderyView {
                    id: shop

                    store: window.app.store

                    playerScreen: Component {
                        TapePlayerView {
                            store: window.app.store
                            tape: shop.chosen
                            onDismissed: shop.playing = false
                        }
                    }
                }
            }
        }
    }
}
