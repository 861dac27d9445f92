// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

/// A plot in a window of its own size, with two plotters of 1000 values from 0 to 100 and one of the overview strip.
Rectangle {
    id: scene

    property alias plot: plot
    property alias bars: bars
    property alias other: other
    property alias overview: overview
    readonly property alias chart: plot.refChartArea
    readonly property alias strip: plot.refNavigator

    /// Ascending from 0, 1000 values.
    function ramp(top) {
        const values = [];
        for (let i = 0; i < 1000; ++i)
            values.push(i * top / 1000);
        return values;
    }

    width: 600
    height: 400
    color: Material.background

    SPlotQML {
        id: plot

        anchors.fill: parent

        BarPlotter {
            id: bars

            name: "bars"
            color: "#2040c0"
            chartArea: plot.refChartArea
            data: scene.ramp(100)
            plotterArea: Qt.rect(0, 0, 1000, 0)
        }

        BarPlotter {
            id: other

            name: "other"
            color: "#c04020"
            chartArea: plot.refChartArea
            visible: false
        }

        BarPlotter {
            id: overview

            color: "#2040c0"
            chartArea: plot.refNavigator
            data: scene.ramp(100)
            plotterArea: Qt.rect(0, 0, 1000, 0)
        }
    }
}
