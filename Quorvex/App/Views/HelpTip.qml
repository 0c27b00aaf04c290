import QtQuick

// Explains its parent while the pointer rests on it. The text is made when first needed.
HoverHandler {
    id: tip

    property string help: ""
    property var popup: null

    enabled: help !== ""
    onHoveredChanged: {
        if (hovered && !popup) {
            popup = OnDemand.explain(tip, parent)
        }
    }
}
