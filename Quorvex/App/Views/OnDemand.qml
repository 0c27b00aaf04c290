pragma Singleton
import QtQuick

// Parts that a control has only once they are needed: most are never pointed at for long and never
// have the keyboard, and windows open sooner without them.
QtObject {
    readonly property Component helpPopup: Component { HelpPopup {} }
    readonly property Component focusRing: Component { FocusRing {} }

    // Explains `owner`, by its `help`, while it is `hovered`.
    function explain(owner, item) {
        return helpPopup.createObject(item, { owner: owner })
    }
    // Marks `frame` while the keyboard is at `target`.
    function mark(target, frame) {
        return focusRing.createObject(frame, { target: target })
    }
}
