import QtQuick

// Three dots that breathe while something takes longer than a moment.
Row {
    id: dots

    property bool running: false

    spacing: 6
    visible: running
    opacity: 0
    Accessible.ignored: true

    SequentialAnimation on opacity {
        running: dots.running
        PropertyAction { value: 0 }
        PauseAnimation { duration: 250 }
        NumberAnimation { to: 1; duration: 200 }
    }

    Repeater {
        model: 3

        Rectangle {
            required property int index

            width: 7
            height: 7
            radius: 4
            color: Theme.secondary

            SequentialAnimation on opacity {
                running: dots.running
                loops: Animation.Infinite
                PauseAnimation { duration: 160 * index }
                NumberAnimation { from: 1; to: 0.25; duration: 450; easing.type: Easing.InOutSine }
                NumberAnimation { from: 0.25; to: 1; duration: 450; easing.type: Easing.InOutSine }
                PauseAnimation { duration: 160 * (2 - index) }
            }
        }
    }
}
