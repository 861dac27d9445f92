// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    property alias plot: plot

    width: 640
    height: 360
    visible: true
    color: "#fafafa"

    SPlotQML {
        id: plot

        anchors.fill: parent

        //! [axes]
        Component.onCompleted: {
            const chart = refChartArea;
            chart.adaptAreaToPlotters = chart.adaptChartHeight = false; // so that y may begin below 0
            chart.chartRect = chart.zoomRect = Qt.rect(0, -1, 16000, 2);
            yAxis.axisTextFunc = (v) => (v + chart.zoomRect.y).toFixed(2); // from -1.00 to 1.00 instead of 0 to 2
            xAxis.axisTextFunc = null; // 16000.00 instead of 16000.00 s
        }
        //! [axes]
    }

    AreaPlotter {
        id: sine

        chartArea: plot.refChartArea
        name: "sine"
    }

    AreaPlotter {
        id: overview

        chartArea: plot.refNavigator
    }

    Filter1D {
        area: Qt.rect(0, 0, 16000, 1)
        data: Array.from({length: 16000}, (_, i) => Math.sin(i / 2500))
        Component.onCompleted: {
            addPlotter(sine);
            addPlotter(overview);
        }
    }

    //! [hover]
    BarDecorator {
        active: plot.refChartMouse.containsMouse
        chartArea: plot.refChartArea
        drawLayer: 4 // not 1: the legend doesn't list it
        mouseX: plot.refChartMouse.mouseX
        mouseY: plot.refChartMouse.mouseY
        Component.onCompleted: addPlotter(sine)
    }
    //! [hover]

    //! [wheel]
    Connections {
        function onWheel(wheel) {
            const chart = plot.refChartArea;
            const whole = chart.chartRect;
            const shown = chart.zoomRect;
            const width = Math.min(shown.width * Math.pow(0.8, wheel.angleDelta.y / 120), whole.width);
            const x = shown.x + (shown.width - width) * wheel.x / chart.width; // the mouse stays over its value
            chart.zoomRect = Qt.rect(Math.max(whole.left, Math.min(x, whole.right - width)), shown.y, width, shown.height);
            plot.recalcNavigator(); // else the band in the strip may become too narrow to be seen or taken
        }

        target: plot.refChartMouse
    }
    //! [wheel]
}
