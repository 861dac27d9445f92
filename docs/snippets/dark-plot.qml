// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    property alias plot: plot

    Material.theme: Material.Dark
    Material.background: "#14181d"
    width: 640
    height: 360
    visible: true
    color: Material.background

    SPlotQML {
        id: plot

        anchors.fill: parent

        //! [colors]
        Component.onCompleted: {
            for (const axis of [xAxis, yAxis]) {
                axis.axisTextColor = "#b4bcc6";
                axis.axisLineColor = "#2c333b";
            }
            refLegend.nameColor = "#d7dde4";
            refLegend.hiddenColor = "#747e89";
        }
        //! [colors]
    }

    RandomU64Data {
        area: Qt.rect(0, 0, 1000, 1)
        interval: 40
        Component.onCompleted: addPlotter(bars)
    }

    BarPlotter {
        id: bars

        chartArea: plot.refChartArea
        name: "random"
    }
}
