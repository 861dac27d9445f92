// SPDX-License-Identifier: MIT
// A spectrum over six decades. Two cursors tell the values where they stand, and how far apart those are.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    id: window

    /// Two lines on a floor of noise, in volts.
    readonly property var levels: Array.from({length: 2000}, (_, i) => {
        const noise = 1e-6 * (1.5 + Math.sin(i * 12.9898) * Math.sin(i * 78.233));
        return noise + 1 / (1 + Math.pow((i - 440) / 4, 4)) + 0.02 / (1 + Math.pow((i - 1320) / 4, 4));
    })

    width: 720
    height: 440
    visible: true

    PlotView {
        anchors.fill: parent
        axisX { titleText: "frequency"; unit: "Hz" }
        axisY: LogValueAxis { titleText: "level"; unit: "V"; max: 100 }

        LineSeries {
            name: "microphone"
            values: window.levels
        }

        PlotCursor { x: 440 }
        PlotCursor { x: 1320 }
    }
}
