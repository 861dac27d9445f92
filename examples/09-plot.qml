// SPDX-License-Identifier: MIT
// The ready-made plot: axes, zoom with the left button, pan with the right one, an overview strip and a legend whose
// entries hide a plotter or change its colour.
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    width: 640
    height: 400
    visible: true
    color: "#121212"

    SPlotQML {
        id: plot

        Material.theme: Material.Dark
        anchors.fill: parent
        Component.onCompleted: {
            xAxis.axisTextColor = yAxis.axisTextColor = "#a0a0a0";
            yAxis.axisLineColor = "#333333";
        }
    }

    BarPlotter {
        id: detector

        name: "detector"
        chartArea: plot.refChartArea
        color: "#4dc2e6"
    }

    AreaPlotter {
        id: reference

        name: "reference"
        chartArea: plot.refChartArea
        color: "#60ff7a59"
        borderColor: "#ff7a59"
        borderWidth: 2
        zOrder: 1
    }

    BarPlotter {
        id: overview

        chartArea: plot.refNavigator
        color: "#4dc2e6"
    }

    Filter1D {
        id: spectrum

        function peak(i, at, height, width) {
            return height * Math.exp(-Math.pow((i - at) / width, 2));
        }

        area: Qt.rect(0, 0, 0.002, 1)
        Component.onCompleted: {
            addPlotter(detector);
            addPlotter(overview);
            data = Array.from({length: 1000}, (_, i) => {
                return 300 * Math.exp(-i / 400) + peak(i, 320, 900, 18) + peak(i, 610, 1500, 10) + (i * 37) % 61;
            });
        }
    }

    Filter1D {
        area: spectrum.area
        data: Array.from({length: 1000}, (_, i) => 300 * Math.exp(-i / 400) + 30)
        Component.onCompleted: addPlotter(reference)
    }
}
