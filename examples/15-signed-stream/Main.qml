// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias plot: plot

    width: 640
    height: 360
    visible: true

    PlotView {
        id: plot

        anchors.fill: parent
        title: "Two seconds of a swing"
        followMode: PlotView.FollowEnd
        axisX { titleText: "time"; unit: "s"; min: 0; max: 2 }
        axisY { titleText: "deflection"; unit: "mm"; min: -10; max: 10 }

        LineSeries {
            name: "swing"
            store: recorder
            step: 0.001
            width: 2
        }
    }
}
