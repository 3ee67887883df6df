pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Screen
import Quillmere.Shop

// The rental shop: sign, counter and shelves. The screen of a selected cassette is pushed over them.
NavigationStack {
    id: shop

    required property Store store
    required property HubAPI hub

    // Screens that play a tape, show its transcript and search the tapes; null if not available.
    property Component playerScreen
    property Component transcriptScreen
    property Component searchScreen

    property alias searching: controller.searching

    // A tape's screen was shown, so the tape may be played soon.
    signal tapeOpened()

    depth: controller.path.depth
    onPopped: controller.path.pop()
    onDisappeared: controller.disappear()

    page: Component {
        TapeDetailView {
            required property int level

            store: shop.store
            hub: shop.hub
            tape: controller.path.tapeAt(level)
            playerScreen: shop.playerScreen
            transcriptScreen: shop.transcriptScreen
            onAppeared: shop.tapeOpened()
        }
    }

    RewinderyController {
        id: controller

        store: shop.store
    }

    FocusScreen {
        anchors.fill: parent

        Item {
            id: mainContent

            anchors.fill: parent

            FullBleed {
                VeneerBackground {
                    id: veneer

                    anchors.fill: parent
                }
            }

            ScrollArea {
                id: scrollArea

                x: 70
                width: 1780
                height: parent.height
                visible: controller.showsShelves
                // Keeps a part of the neighbouring shelves visible, and the whole counter with the first shelf.
                revealMargin: 200
                contentExtent: credits.y + credits.height + 50

                // Positioned by bindings, because a Column would apply a change of the shelves only later, when
                // polished.
                ShopCounter {
                    id: counter

                    y: 50
                    width: parent.width
                    stockLine: controller.stockLine
                    markets: controller.markets
                    background: veneer
                    onSearched: controller.searching = true
                }

                LazyStack {
                    id: shelves

                    y: counter.y + counter.height + spacing
                    width: parent.width
                    spacing: 54
                    extent: ShelfRow.Size.Length
                    cacheBuffer: extent + spacing
                    model: controller.shelves

                    ShelfRow {
                        width: scrollArea.width
                        onOpened: cassette => controller.path.open(cassettes, cassette)
                    }
                }

                ShopCredits {
                    id: credits

                    y: shelves.y + shelves.height + shelves.spacing
                    width: parent.width
                }
            }

            ScrollIndicator {
                anchors.right: parent.right
                anchors.rightMargin: 8
                y: 50
                height: parent.height - 100
                area: scrollArea
            }

            StatePanel {
                anchors.fill: parent
                visible: !controller.showsShelves
                isLoading: controller.isLoading
                message: controller.message
                onRetried: controller.retry()
            }
        }

        FullScreenCover {
            anchors.fill: parent
            screen: controller.searching ? shop.searchScreen : null
            beneath: mainContent
            onDismissed: controller.searching = false
        }
    }
}
