// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias plot: plot
    property alias points: points
    property alias places: places

    width: 640
    height: 360
    visible: true

    //! [plot]
    SeriesStore { id: places }
    SeriesStore { id: points }

    PlotView {
        id: plot

        anchors.fill: parent
        followMode: PlotView.FollowEnd
        axisX { min: 0; max: 10 }
        axisY { min: -5; max: 10 }
        LineSeries { xStore: places; store: points; width: 2; color: "red" }
    }

    Timer {
        property real x: 4

        interval: 100
        repeat: true
        running: true
        onTriggered: {
            x += 0.1 + 0.3 * Math.random();
            places.append(x);
            points.append(Math.random() * 5 - 2.5);
        }
    }
    //! [plot]
}
