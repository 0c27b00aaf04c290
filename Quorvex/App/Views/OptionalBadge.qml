import QtQuick

// A badge that exists only while there is something to say.
Loader {
    id: place

    property var entry: null

    active: !!entry
    visible: active
    sourceComponent: Badge {
        text: place.entry?.text ?? place.entry?.label ?? ""
        symbol: place.entry?.symbol ?? ""
        tone: place.entry?.color ?? "secondary"
        help: place.entry?.help ?? ""
    }
}
