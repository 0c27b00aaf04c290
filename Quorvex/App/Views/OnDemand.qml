pragma Singleton
import QtQuick

// Parts that a control has only once they are needed: most are never pointed at for long and never
// have the keyboard, and windows open sooner without reading and making them.
QtObject {
    property var parts: ({})

    function part(file) {
        parts[file] = parts[file] ?? Qt.createComponent(file)
        return parts[file]
    }
    // Explains `owner`, by its `help`, while it is `hovered`.
    function explain(owner, item) {
        return part("HelpPopup.qml").createObject(item, { owner: owner })
    }
    // Marks `frame` while the keyboard is at `target`.
    function mark(target, frame) {
        return part("FocusRing.qml").createObject(frame, { target: target })
    }
}
