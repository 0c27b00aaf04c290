import QtQuick

// Explains its parent while the pointer rests on it. The text's window is made when first needed.
HoverHandler {
    id: tip

    property string text: ""
    property var popup: null
    readonly property Component popupKind: Component { HelpPopup {} }

    enabled: text !== ""
    onHoveredChanged: {
        if (hovered && !popup) {
            popup = popupKind.createObject(parent, { tip: tip })
        }
    }
}
