pragma Singleton
import QtQuick
import Quorvex.Items

// The one place of sizes and colours, and of the type scale for views.
QtObject {
    readonly property bool isDark: SystemAppearance.isDark

    // Spacing is counted in this unit. Sizes and radii are even numbers, which are whole pixels on
    // screens of one and a half times the scale too.
    readonly property int unit: 4
    readonly property int tiny: unit / 2
    readonly property int small: unit
    // Between a symbol and its text.
    readonly property int gap: small + tiny
    readonly property int medium: 2 * unit
    readonly property int roomy: 3 * unit
    readonly property int large: 4 * unit
    readonly property int huge: 6 * unit
    readonly property int radius: 2 * unit
    readonly property int controlHeight: 7 * unit

    readonly property font caption: TypeScale.caption
    readonly property font captionStrong: TypeScale.captionStrong
    readonly property font body: TypeScale.body
    readonly property font bodyStrong: TypeScale.bodyStrong
    readonly property font title: TypeScale.title
    readonly property font headline: TypeScale.headline
    readonly property font hero: TypeScale.hero

    readonly property color window: isDark ? "#1b1b1d" : "#f4f4f6"
    readonly property color card: isDark ? "#28282b" : "#ffffff"
    readonly property color field: isDark ? "#1f1f22" : "#ffffff"
    readonly property color control: isDark ? "#3a3a3e" : "#e9e9ed"
    readonly property color controlHover: isDark ? "#444449" : "#e0e0e5"
    readonly property color controlPressed: isDark ? "#4f4f55" : "#d3d3da"
    readonly property color line: isDark ? "#3b3b3f" : "#e1e1e6"
    readonly property color track: isDark ? "#3b3b3f" : "#e6e6eb"
    readonly property color primary: isDark ? "#f3f3f5" : "#1c1c1f"
    readonly property color secondary: isDark ? "#a4a4ab" : "#66666d"
    readonly property color accent: isDark ? "#4c9dff" : "#0a64d6"
    readonly property color accentText: isDark ? "#0b1420" : "#ffffff"

    // The colours that the rules name by what they mean.
    readonly property var named: ({
        primary: primary,
        secondary: secondary,
        green: isDark ? Qt.color("#3ecf62") : Qt.color("#1e8a3c"),
        yellow: isDark ? Qt.color("#f5c542") : Qt.color("#a87400"),
        orange: isDark ? Qt.color("#ff9f2e") : Qt.color("#c95200"),
        red: isDark ? Qt.color("#ff6b62") : Qt.color("#cf1f2b"),
        blue: isDark ? Qt.color("#5aa9ff") : Qt.color("#0a64d6"),
        mint: isDark ? Qt.color("#5fe0d3") : Qt.color("#00857c")
    })

    // The same for symbols, which may be brighter than letters.
    readonly property var symbols: Object.assign({}, named, {
        yellow: isDark ? named.yellow : Qt.color("#e0a100")
    })

    function tinted(color, opacity) {
        return Qt.rgba(color.r, color.g, color.b, opacity)
    }
}
