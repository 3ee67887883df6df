import QtQuick
import Quillmere.Front
import Quillmere.News

// One station of the tuner strip: its number, which alone tells that it is the current one, and its label.
StationButton {
    id: button

    required property TunerList tuner
    required property Timepiece timepiece
    required property string number
    required property string label
    required property real numberExtent
    required property bool isCurrent

    name: number + " " + label
    Accessible.checkable: true
    Accessible.checked: isCurrent

    StationPlate {
        lift: button.lift
        growth: button.tuner.growth(button.width)

        MarqueeText {
            id: digits

            x: button.tuner.margin
            anchors.verticalCenter: parent.verticalCenter
            width: button.numberExtent
            timepiece: button.timepiece
            running: button.activeFocus
            text: button.number
            font: button.tuner.numberFont
            color: button.isCurrent ? StationPalette.onAirRed
                                    : StationPalette.mixed(StationPalette.parchment, StationPalette.inkNavy, button.lift)
        }

        MarqueeText {
            anchors.left: digits.right
            anchors.leftMargin: button.tuner.gap
            anchors.right: parent.right
            anchors.rightMargin: button.tuner.margin
            anchors.verticalCenter: parent.verticalCenter
            timepiece: button.timepiece
            running: button.activeFocus
            text: button.label
            font: button.tuner.labelFont
            color: StationPalette.mixed(StationPalette.faded(StationPalette.parchment, 0.85), StationPalette.inkNavy,
                                        button.lift)
        }
    }
}
