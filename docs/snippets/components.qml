// SPDX-License-Identifier: MIT
//! [import]
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"
import "qrc:/qml/Legend"
import "qrc:/qml/utils.js" as Utils
//! [import]

Window {
    property alias legend: legend

    width: 320
    height: 240
    visible: true
    title: Utils.format_event(12345)

    SPlotQML {
        id: plot

        anchors.fill: parent
    }

    VerticalLegend {
        id: legend

        plotterList: plot.refChartArea.plotter
    }
}
