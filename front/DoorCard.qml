import QtQuick
import Quillmere.Front
import Quillmere.Screen

// The common frame of both doors: a button that lifts under the focus.
FocusScope {
    id: card

    property PaintedItem background
    property color border
    property string title
    property string subtitle
    default property alias content: inside.data

    // Of the sides; the longest fixed line just fits.
    readonly property real sidePadding: 36
    readonly property real padding: 54

    signal selected

    implicitWidth: 620
    implicitHeight: 620
    z: activeFocus ? 1 : 0
    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: subtitle
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: card.selected()
    Keys.onSelectPressed: card.selected()

    // Stands unscaled behind the plate, so that it is painted once and only fades.
    SoftShadow {
        anchors.centerIn: parent
        anchors.verticalCenterOffset: 16
        width: card.width * StationMotion.liftScale - 20
        height: card.height * StationMotion.liftScale - 20
        radius: 30
        spread: 54
        color: StationPalette.faded("black", 0.75)
        opacity: card.activeFocus ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: StationMotion.liftTime
                easing.type: Easing.OutQuad
            }
        }
    }

    Item {
        anchors.fill: parent
        scale: card.activeFocus ? StationMotion.liftScale : 1

        Behavior on scale {
            NumberAnimation {
                duration: StationMotion.liftTime
                easing.type: Easing.OutQuad
            }
        }

        CardPlate {
            anchors.fill: parent
            background: card.background
            radius: 24
            continuous: true
            border: card.border
            borderWidth: 3
        }

        Item {
            id: inside

            anchors.fill: parent
            anchors.margins: card.padding
            anchors.leftMargin: card.sidePadding
            anchors.rightMargin: card.sidePadding
        }
    }
}
