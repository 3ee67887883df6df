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
            timepiece: window.app.timepiece
            onLeave: Qt.quit()

            // Qt 6.4 lets no Loader make a component that is bound to its context, so the linter is told to trust these.
            // qmllint disable unqualified
            newsScreen: Component {
                NewsView {
                    store: window.app.store
                    hub: window.app.hub
                    timepiece: window.app.timepiece
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
                            timepiece: window.app.timepiece
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
