// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

PlotView {
    id: plot

    property string kind: "bars"
    property real highest: 1
    property QtObject series: kind === "bars" ? bars : kind === "line" ? line : area

    interactive: false
    legendVisible: false
    overviewVisible: false
    readoutVisible: false

    theme: PlotTheme {
        backgroundColor: "black"
    }

    axisX: ValueAxis {
        labelsVisible: false
        gridVisible: false
    }

    axisY: ValueAxis {
        labelsVisible: false
        gridVisible: false
        min: 0
        max: plot.highest
    }

    BarSeries {
        id: bars
        color: "#07CBF2"
        visible: plot.kind === "bars"
    }

    LineSeries {
        id: line
        color: "#07CBF2"
        visible: plot.kind === "line"
    }

    AreaSeries {
        id: area
        color: "#07CBF2"
        visible: plot.kind === "area"
    }
}
