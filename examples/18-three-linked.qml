// SPDX-License-Identifier: MIT
// Three views of one recording. What moves one of them moves all; the strip below shows where they are.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    id: window

    property alias top: speed
    readonly property int samples: 60000

    function recorded(value) {
        return Array.from({length: window.samples}, (_, i) => value(i * 0.01));
    }

    width: 720
    height: 520
    visible: true

    PlotView {
        id: speed

        width: parent.width
        height: parent.height * 0.28
        axisX.labelsVisible: false
        axisY { titleText: "speed"; unit: "m/s" }
        LineSeries {
            step: 0.01
            values: window.recorded((t) => 12 + 9 * Math.sin(t / 40) + Math.sin(t / 1.7))
        }
    }

    PlotView {
        id: acceleration

        anchors.top: speed.bottom
        width: parent.width
        height: parent.height * 0.28
        linkedTo: speed
        axisX.labelsVisible: false
        axisY { titleText: "force"; unit: "N" }
        AreaSeries {
            step: 0.01
            opacity: 0.8
            values: window.recorded((t) => 30 * Math.cos(t / 40) + 22 * Math.cos(t / 1.7) * Math.sin(t / 90))
        }
    }

    PlotView {
        anchors.top: acceleration.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        linkedTo: speed
        overviewVisible: true
        axisX { titleText: "time"; unit: "s" }
        axisY { titleText: "engaged" }
        BarSeries {
            step: 0.01
            values: window.recorded((t) => Math.sin(t / 25) > 0.2 || Math.sin(t / 3) > 0.9 ? 1 : 0)
        }
    }
}
