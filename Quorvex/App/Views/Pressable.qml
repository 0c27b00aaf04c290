import QtQuick

// What is pressed: by the pointer, by the keyboard while it is here, or by assistive technology.
// All of them end in `clicked`.
Item {
    id: control

    property string text: ""
    property string help: ""
    // Around what the keyboard's mark stands.
    property Item frame: control
    property bool takesFocus: true
    readonly property alias hovered: area.containsMouse
    readonly property bool down: area.pressed && hovered
    // The keyboard's place is marked for those only who use the keyboard.
    readonly property bool visualFocus: activeFocus && !focusedByPointer
    property bool focusedByPointer: false

    property var tip: null
    property Item ring: null

    signal clicked()

    function press() {
        if (enabled) {
            clicked()
        }
    }

    activeFocusOnTab: takesFocus
    opacity: enabled ? 1 : 0.45
    // A window that loses the keyboard takes it from its controls, and later gives it back.
    onActiveFocusChanged: if (!activeFocus && Window.active) focusedByPointer = false
    onHoveredChanged: if (hovered && help !== "" && !tip) tip = OnDemand.explain(control, control)
    onVisualFocusChanged: if (visualFocus && !ring) ring = OnDemand.mark(control, frame)
    Keys.onPressed: event => {
        if ([Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter].includes(event.key)) {
            event.accepted = true
            focusedByPointer = false
            if (!event.isAutoRepeat) {
                press()
            }
        }
    }
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: help
    Accessible.focusable: takesFocus
    Accessible.focused: activeFocus
    Accessible.pressed: down
    Accessible.onPressAction: press()

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: control.clicked()
        onPressed: {
            if (control.takesFocus) {
                control.focusedByPointer = true
                control.forceActiveFocus(Qt.MouseFocusReason)
            }
        }
    }
}
