// SPDX-License-Identifier: MIT
// A line through values of both signs on the ready plot. Its axes tell the true values, and a tooltip follows the mouse.
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    width: 640
    height: 360
    visible: true
    color: "#121212"

    SPlotQML {
        id: plot

        /// What is shown at first: x from 0 to 1000, y from -1 to 1.
        readonly property rect whole: Qt.rect(0, -1, 1000, 2)

        Material.theme: Material.Dark
        anchors.fill: parent
        enableNavigatorBar: false
        Component.onCompleted: {
            // The chart fits its height to the largest value and starts at 0, unless both fits are off.
            refChartArea.adaptAreaToPlotters = refChartArea.adaptChartHeight = false;
            refChartArea.chartRect = whole;
            refChartArea.zoomRect = whole;
            xAxis.axisTextFunc = null; // plain numbers; the plot's own are seconds
            yAxis.axisTextFunc = (value) => (value + refChartArea.zoomRect.y).toFixed(2);
            yAxis.axisLineColor = "#333333";
            xAxis.axisTextColor = yAxis.axisTextColor = "#a0a0a0";
            refLegend.nameColor = "#d7dde4";
        }
    }

    AreaPlotter {
        id: wave

        name: "swing"
        chartArea: plot.refChartArea
        borderColor: "#3ddc97"
        borderWidth: 2
        color: "#303ddc97" // of the area, and of the legend's dot
    }

    Filter1D {
        id: swing

        area: Qt.rect(0, 0, 1000, 1)
        data: Array.from({length: 1000}, (_, i) => Math.exp(-i / 600) * Math.sin(i / 40))
        Component.onCompleted: addPlotter(wave)
    }

    ChartTooltip {
        readonly property var mouse: plot.refChartMouse
        readonly property rect shown: plot.refChartArea.zoomRect
        readonly property int sample: Math.floor(shown.x + mouse.mouseX / mouse.width * shown.width)
        readonly property var value: swing.data[sample]

        x: plot.refChartArea.x + mouse.mouseX - width / 2
        y: plot.refChartArea.y + mouse.mouseY - height
        visible: mouse.containsMouse && value !== undefined

        Text {
            width: parent.width
            height: 0.8 * parent.height
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: visible ? parent.sample + ": " + parent.value.toFixed(3) : ""
        }
    }
}
