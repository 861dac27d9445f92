// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias plot: plot

    width: 640
    height: 360
    visible: true

    //! [plot]
    PlotView {
        id: plot

        anchors.fill: parent
        title: "Counts per channel"
        axisX { titleText: "channel"; tickInterval: 1 }
        axisY { min: 0; max: 14; labelFormat: "%d" }
        BarSeries { name: "today"; values: [2, 2, 3, 4, 5, 6] }
        BarSeries { name: "yesterday"; values: [5, 1, 2, 4, 1, 7]; opacity: 0.6 }
    }
    //! [plot]
}
