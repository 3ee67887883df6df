import QtQuick
import Quillmere.App
import Quillmere.Front
import Quillmere.News
import Quillmere.Playback
import Quillmere.Screen
import Quillmere.Shop

ScreenWindow {
    id: window

    required property QuillmereTVApp app

    title: StationTexts.televisionName
    color: window.isBlank ? "black" : StationPalette.inkNavy

    Canvas {
        visible: !window.isBlank

        LandingView {
            anchors.fill: parent
            focus: true
            store: window.app.store
            clock: window.app.clock
            onQuitRequested: Qt.quit()

            // In Qt 6.4, a Loader cannot create a component with bound context (ComponentBehavior: Bound). So the
            // linter warning about unqualified access is disabled for these components.
            // qmllint disable unqualified
            newsScreen: Component {
                NewsView {
                    store: window.app.store
                    hub: window.app.hub
                    clock: window.app.clock
                    onAppeared: window.app.preparePlayer()
                }
            }

            shopScreen: Component {
                RewinderyView {
                    id: shop

                    store: window.app.store
                    hub: window.app.hub
                    onTapeOpened: window.app.preparePlayer()

                    playerScreen: Component {
                        TapePlayerView {
                            id: player

                            required property TapeDetailController detail

                            store: window.app.store
                            clock: window.app.clock
                            tape: player.detail.shownTape
                            cover: player.detail.cover
                            startAt: player.detail.startAt
                            onDismissed: player.detail.playing = false
                        }
                    }

                    transcriptScreen: Component {
                        TranscriptView {
                            id: reader

                            required property TapeDetailController detail

                            hub: window.app.hub
                            tape: reader.detail.shownTape
                            cover: reader.detail.cover
                            onDismissed: reader.detail.readingTranscript = false
                        }
                    }

                    searchScreen: Component {
                        TapeSearchView {
                            store: window.app.store
                            hub: window.app.hub
                            playerScreen: shop.playerScreen
                            transcriptScreen: shop.transcriptScreen
                            onTapeOpened: window.app.preparePlayer()
                        }
                    }
                }
            }
            // qmllint enable unqualified
        }
    }
}
