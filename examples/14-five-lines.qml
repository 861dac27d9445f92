// SPDX-License-Identifier: MIT
// Five lines are the whole plot: it fits itself to the values, and mouse, wheel, fingers and keys move it.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    readonly property var counts: Array.from({length: 500}, (_, i) =>
        70 * Math.exp(-i / 120) + 90 * Math.exp(-Math.pow((i - 332) / 8, 2)) + 3 * Math.abs(Math.sin(i * i)))

    width: 640
    height: 360
    visible: true

    PlotView {
        anchors.fill: parent
        axisX { titleText: "energy"; unit: "keV" }
        BarSeries { name: "sample"; values: counts; step: 2 }
    }
}
