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
    /// Which ticks have a label: those whose label does not touch another.
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

        const text = typeof axisTextFunc === "function" ? axisTextFunc(value) : format_num(value);
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

    function chooseLabels() {
        const gap = 4;
        const widths = [];
        for (let i = 0; i < ticks.count; ++i) {
            const tick = ticks.itemAt(i);
            widths.push(tick ? tick.labelWidth : 0);
        }
        const widest = widths.reduce((a, b) => {
            return Math.max(a, b);
        }, 0);
        const step = Math.ceil((widest + gap) / (dxTick / rectArea.width * width));
        // Every n-th multiple, not every n-th tick in view: so a pan does not move labels to other ticks.
        const first = Math.round(xTickOffset / dxTick);
        const skipped = Math.ceil(first / step) * step - first;
        const start = skipped < widths.length ? skipped : 0;
        let taken = -Infinity;
        return widths.map((labelWidth, i) => {
            const left = labelX(i, labelWidth);
            if ((i - start) % step !== 0 || left < taken)
                return false;

            taken = left + labelWidth + gap;
            return true;
        });
    }

    implicitHeight: 30

    Repeater {
        id: ticks

        model: root.tickCount

        Item {
            readonly property real labelWidth: label.implicitWidth

            x: root.tickX(index)

            Rectangle {
                id: mark

                width: 1
                height: 8
                color: root.axisBaseColor
            }

            Text {
                id: label

                x: root.labelX(index, width) - parent.x
                visible: root.labelled[index] === true
                color: root.axisTextColor
                font.pointSize: 9
                text: root.labelText(root.xTickOffset + index * root.dxTick)
                textFormat: Text.PlainText

                anchors {
                    top: mark.bottom
                    topMargin: 1
                }

            }

        }

    }

}
