pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Screen
import Quillmere.Shop

// The rental shop: its sign, its counter and its shelves; a chosen cassette's screen is pushed over them.
NavigationStack {
    id: shop

    required property Store store
    required property HubAPI hub

    // What plays a tape, shows its transcript and searches the tapes; null for none.
    property Component playerScreen
    property Component transcriptScreen
    property Component searchScreen

    property alias searching: controller.searching

    // A tape's screen has come: it may be played soon.
    signal tapeOpened()

    depth: controller.path.depth
    onPopped: controller.path.pop()
    onDisappeared: controller.leave()

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
            id: sight

            anchors.fill: parent

            FullBleed {
                VeneerBackground {
                    id: veneer

                    anchors.fill: parent
                }
            }

            ScrollArea {
                id: room

                x: 70
                width: 1780
                height: parent.height
                visible: controller.showsShelves
                // The neighbours of a shelf look in, and the first one leaves the counter wholly in sight.
                lead: 200
                contentExtent: credits.y + credits.height + 50

                // Placed by bindings and not by a column, so that a change of the shelves is through at once.
                ShopCounter {
                    id: counter

                    y: 50
                    width: parent.width
                    stockLine: controller.stockLine
                    markets: controller.markets
                    ground: veneer
                    onSearched: controller.searching = true
                }

                LazyStack {
                    id: shelves

                    y: counter.y + counter.height + spacing
                    width: parent.width
                    spacing: 54
                    extent: ShelfRow.Size.Length
                    ahead: extent + spacing
                    model: controller.shelves
                    place: controller.shelves.place
                    onHeld: shelf => controller.shelves.place = shelf
                    onContainsFocusChanged: controller.shelves.hasFocus = containsFocus

                    ShelfRow {
                        width: room.width
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
                area: room
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
            beneath: sight
            onDismissed: controller.searching = false
        }
    }
}
