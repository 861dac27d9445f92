// SPDX-License-Identifier: MIT
import QtQuick 2.0
import QtQuick.Controls.Material 2.0

/// The axis under a plot as wide as itself. Ticks lie at multiples of a power of two times a power of 1000.
/// A rectangle without a finite, positive width has no ticks.
Item {
    id: root

    property color axisLineColor: Material.color(Material.Grey, Material.Shade300)
    property color axisBaseColor: Material.color(Material.Grey, Material.Shade400)
    property color axisTextColor: Material.color(Material.Grey, Material.Shade700)
    /// What the plot shows, in data coordinates.
    property rect rectArea
    /// Pixels between two ticks, at least.
    property real minTickWidth: 70
    /// Turns a tick's value into its label; null for format_num().
    property var axisTextFunc: null
    readonly property real maxNumTick: width / minTickWidth
    readonly property real minDxTick: Math.pow(1000, Math.floor(Math.log10(rectArea.width) / 3))
    readonly property real dxTick: Math.pow(2, Math.ceil(Math.log2(rectArea.width / minDxTick / maxNumTick))) * minDxTick
    readonly property real xTickOffset: Math.ceil(rectArea.x / dxTick) * dxTick
    readonly property real xTicks: Math.floor((rectArea.width - xTickOffset + rectArea.x) / dxTick) + 1
    readonly property int tickCount: isDrawable() ? Math.max(Math.round(Math.min(xTicks, maxNumTick)), 0) : 0
    /// Which ticks have a label: all of them, unless two labels would overlap.
    readonly property var labelled: chooseLabels()

    function format_num(num, decimals = 2) {
        return withSuffix(num, decimals, ["e-18", "e-15", "e-12", "e-9", "e-6", "e-3", ""]);
    }

    /// num in the largest step of 1000 that it reaches, from 1e-18 to 1, with that step's suffix.
    function withSuffix(num, decimals, suffixes) {
        const ends = [1e-15, 1e-12, 1e-09, 1e-06, 0.001, 1];
        const factors = [1e+18, 1e+15, 1e+12, 1e+09, 1e+06, 1000, 1];
        const size = Math.abs(num);
        if (size < 1e-18)
            return "0";

        let step = ends.findIndex((end) => {
            return size < end;
        });
        if (step < 0)
            step = ends.length;

        return (num * factors[step]).toFixed(decimals) + suffixes[step];
    }

    /// The label of a value; empty where it can't be computed.
    function labelText(value) {
        if (!isFinite(value))
            return "";

        const func = axisTextFunc;
        const text = typeof func === "function" ? func(value) : format_num(value);
        return text === undefined || text === null || /NaN|Infinity/.test(text) ? "" : String(text);
    }

    function isDrawable() {
        return dxTick > 0 && isFinite(dxTick) && isFinite(xTicks);
    }

    function tickX(index) {
        return (xTickOffset - rectArea.x + index * dxTick) / rectArea.width * width;
    }

    /// Where the label of a tick begins: centred, but inside the axis or what it lies in.
    function labelX(index, labelWidth) {
        const edge = 4;
        const left = Math.min(0, edge - x);
        const right = parent ? Math.max(width, parent.width - x - edge) : width;
        return Math.max(Math.min(tickX(index) - labelWidth / 2, right - labelWidth), left);
    }

    /// For each tick, whether it has a label. Where two would overlap, every n-th multiple has one, not every n-th tick
    /// in view: so a pan does not move labels to other ticks.
    function chooseLabels() {
        const widths = ticks.labelWidths();
        const step = ticks.stepWithoutOverlap(widths);
        const first = Math.round(xTickOffset / dxTick);
        const skipped = Math.ceil(first / step) * step - first;
        const start = skipped < widths.length ? skipped : 0;
        let taken = -Infinity;
        return widths.map((labelWidth, i) => {
            const left = labelX(i, labelWidth);
            if ((i - start) % step !== 0 || left < taken)
                return false;

            taken = left + labelWidth;
            return true;
        });
    }

    implicitHeight: 30

    Repeater {
        id: ticks

        /// Of all labels: a little less than 1 where they could not be told apart otherwise.
        readonly property real labelScale: Math.max(0.9, Math.min(scaleForGap(4), 1))

        function labelWidths() {
            const widths = [];
            for (let i = 0; i < count; ++i) {
                const tick = itemAt(i);
                widths.push(tick ? tick.labelWidth : 0);
            }
            return widths;
        }

        /// In pixels, between ticks that are so many apart.
        function distanceOf(step) {
            return step * root.dxTick / root.rectArea.width * root.width;
        }

        /// What two centred labels take of the way between their ticks, at most.
        function mostTaken(step, widths) {
            return widths.slice(step).reduce((most, width, i) => {
                return Math.max(most, (widths[i] + width) / 2);
            }, 0);
        }

        function stepWithoutOverlap(widths) {
            for (let step = 1; step < widths.length; ++step) {
                if (mostTaken(step, widths) <= distanceOf(step))
                    return step;

            }
            return Math.max(1, widths.length);
        }

        function scaleForGap(gap) {
            const widths = labelWidths();
            const step = stepWithoutOverlap(widths);
            return (distanceOf(step) - gap) / mostTaken(step, widths);
        }

        model: root.tickCount

        Item {
            readonly property real labelWidth: label.implicitWidth
            /// Of its own, because the function reads some properties more than once, which not every Qt allows in a
            /// binding of an item's place.
            readonly property real labelLeft: root.labelX(index, label.width)

            x: root.tickX(index)

            Rectangle {
                id: mark

                width: 1
                height: 8
                color: root.axisBaseColor
            }

            Text {
                id: label

                x: parent.labelLeft - parent.x
                visible: root.labelled[index] === true
                color: root.axisTextColor
                font.pointSize: 9
                scale: ticks.labelScale
                text: root.labelText(root.xTickOffset + index * root.dxTick)
                textFormat: Text.PlainText
                transformOrigin: Item.Top

                anchors {
                    top: mark.bottom
                    topMargin: 1
                }

            }

        }

    }

}
