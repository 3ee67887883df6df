pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Catalogue
import Quillmere.Front
import Quillmere.Hub
import Quillmere.Screen
import Quillmere.Shop

// The tape search: search field and results. The screen of a selected cassette is pushed over them.
NavigationStack {
    id: search

    required property Store store
    required property HubAPI hub

    // Screens that play a tape and show its transcript; null if not available.
    property Component playerScreen
    property Component transcriptScreen

    // A tape's screen was shown, so the tape may be played soon.
    signal tapeOpened

    depth: controller.path.depth
    onPopped: controller.path.pop()
    onDisappeared: controller.disappear()

    page: Component {
        TapeDetailView {
            required property int level

            store: search.store
            hub: search.hub
            tape: controller.path.tapeAt(level)
            playerScreen: search.playerScreen
            transcriptScreen: search.transcriptScreen
            onAppeared: search.tapeOpened()
        }
    }

    TapeSearchController {
        id: controller

        store: search.store
        query: field.text
    }

    FocusScreen {
        anchors.fill: parent

        FullBleed {
            VeneerBackground {
                anchors.fill: parent
            }
        }

        // Positioned by bindings, because a Column would apply a change of the outcome only later, when polished.
        Item {
            id: sheet

            readonly property real spacing: 34

            anchors.fill: parent
            anchors.leftMargin: 90
            anchors.rightMargin: 90
            anchors.topMargin: 60
            anchors.bottomMargin: 60

            StationText {
                id: title

                text: TapeSearchTexts.title
                font: Typography.standard(56, Font.Black)
                color: StationPalette.amber
                Accessible.role: Accessible.Heading
            }

            StationText {
                id: invitation

                y: title.height + sheet.spacing
                text: TapeSearchTexts.invitation
                font: Typography.standard(26)
                color: StationPalette.faded(StationPalette.cream, 0.65)
            }

            SearchField {
                id: field

                y: invitation.y + invitation.height + sheet.spacing
                width: parent.width
                height: implicitHeight
                preferred: true
                onSubmitted: controller.search()
            }

            Item {
                id: outcome

                y: field.y + field.height + sheet.spacing
                width: parent.width
                height: parent.height - y

                Spinner {
                    visible: controller.busy
                    scale: 1.4
                    // Scaled from its top left corner, so that it stays aligned with the left edge.
                    transformOrigin: Item.TopLeft
                    color: StationPalette.cream
                }

                StationText {
                    id: count

                    visible: controller.showsResults
                    text: controller.countLine
                    font: Typography.monospaced(24, Font.DemiBold)
                    color: StationPalette.teal
                }

                // Created again for each outcome, so that it starts at its first cassette. Not a Loader, which is a
                // focus scope of its own.
                Repeater {
                    model: controller.showsResults ? 1 : 0

                    FocusSection {
                        y: count.height + sheet.spacing
                        width: outcome.width
                        height: outcome.height - y
                        // Not at the cassette nearest below the middle of the search field.
                        entersAtFirst: true

                        CassetteStrip {
                            anchors.fill: parent
                            cassettes: controller.cassettes
                            extent: 230
                            margin: 30
                            onOpened: cassette => controller.path.open(controller.cassettes, cassette)
                        }
                    }
                }

                StationText {
                    width: parent.width
                    visible: controller.showsNoMatch
                    text: controller.noMatchLine
                    font: Typography.standard(28)
                    color: StationPalette.faded(StationPalette.cream, 0.7)
                    wraps: true
                    Accessible.role: Accessible.AlertMessage
                }
            }
        }

        OnScreenKeyboard {
            field: field
        }
    }
}
