import QtQuick
import Quillmere.Front
import Quillmere.News

// One station on the tuner strip: its number and label. The colour of the number marks the current station.
StationButton {
    id: button

    required property TunerList tuner
    required property Clock clock
    required property string number
    required property string label
    required property real numberWidth
    required property bool isCurrent

    name: number + " " + label
    Accessible.checkable: true
    Accessible.checked: isCurrent

    StationPlate {
        lift: button.lift
        focusScale: button.tuner.focusScale(button.width)

        MarqueeText {
            id: digits

            objectName: "number"
            x: button.tuner.margin
            anchors.verticalCenter: parent.verticalCenter
            width: button.numberWidth
            clock: button.clock
            running: button.activeFocus
            text: button.number
            font: button.tuner.numberFont
            color: button.isCurrent
                   ? StationPalette.onAirRed
                   : StationPalette.mixed(StationPalette.parchment, StationPalette.inkNavy, button.lift)
        }

        MarqueeText {
            objectName: "label"
            anchors.left: digits.right
            anchors.leftMargin: button.tuner.gap
            anchors.right: parent.right
            anchors.rightMargin: button.tuner.margin
            anchors.verticalCenter: parent.verticalCenter
            clock: button.clock
            running: button.activeFocus
            text: button.label
            font: button.tuner.labelFont
            color: StationPalette.mixed(StationPalette.faded(StationPalette.parchment, 0.85), StationPalette.inkNavy,
                                        button.lift)
        }
    }
}
