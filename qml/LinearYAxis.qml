// SPDX-License-Identifier: MIT
import QtQuick 2.0
import QtQuick.Controls.Material 2.0

/// The lines behind a plot, as large as itself, and their labels left of it. They count from the value 0, whatever
/// rectArea.y is. A rectangle without a finite, positive height has none.
Item {
    id: root

    property color axisLineColor: Material.color(Material.Grey, Material.Shade300)
    property color axisBaseColor: Material.color(Material.Grey, Material.Shade400)
    property color axisTextColor: Material.color(Material.Grey, Material.Shade700)
    /// What the plot shows, in data coordinates.
    property rect rectArea
    /// Turns a tick's value into its label; null for the value itself.
    property var axisTextFunc: null
    /// Whether values are decimal logarithms. Concerns the labels only.
    property bool isLogScale: false
    /// Pixels between two lines, at least.
    property real tickHeight: 50
    readonly property real minDyTick: Math.pow(1000, Math.floor(Math.log10(rectArea.height) / 3))
    readonly property real maxNumYTicks: Math.floor(height / tickHeight)
    readonly property real dyTicks: Math.pow(2, Math.ceil(Math.log2(rectArea.height / minDyTick / maxNumYTicks))) * minDyTick
    readonly property real yTicks: Math.min(Math.floor(rectArea.height / dyTicks) + 1, maxNumYTicks)
    readonly property int tickCount: isDrawable() ? Math.max(yTicks, 0) : 0

    /// The label of a value; empty where it can't be computed.
    function labelText(value) {
        const func = axisTextFunc;
        const text = typeof func === "function" ? func(value) : value;
        if (text === undefined || text === null || text === "")
            return "";

        if (isLogScale)
            return isFinite(Math.floor(text)) ? "10<sup>" + Math.floor(text) + "</sup>" : "";

        return /NaN|Infinity/.test(text) ? "" : String(text);
    }

    function isDrawable() {
        return dyTicks > 0 && isFinite(dyTicks) && isFinite(yTicks);
    }

    z: -1

    Repeater {
        id: lines

        // Where the axis has room on its left, labels stay inside it.
        readonly property real room: root.x > 40 ? root.x - 4 : Infinity
        readonly property real margin: Math.max(0, Math.min(room - widestLabel(), 16))

        function widestLabel() {
            let widest = 0;
            for (let i = 0; i < count; ++i) {
                const line = itemAt(i);
                if (line && line.isShown)
                    widest = Math.max(widest, line.labelWidth);

            }
            return widest;
        }

        model: root.tickCount

        Rectangle {
            readonly property real value: index * root.dyTicks
            readonly property bool isShown: !root.isLogScale || Number.isInteger(value)
            readonly property real labelWidth: label.implicitWidth

            y: root.height - value / root.rectArea.height * root.height
            width: root.width
            height: 1
            visible: isShown
            color: root.axisLineColor

            Text {
                id: label

                color: root.axisTextColor
                font.pointSize: 9
                scale: Math.min(1, lines.room / implicitWidth)
                text: root.labelText(parent.value)
                textFormat: Text.RichText
                transformOrigin: Item.Right

                anchors {
                    right: parent.left
                    rightMargin: lines.margin
                    verticalCenter: parent.verticalCenter
                }

            }

        }

    }

}
