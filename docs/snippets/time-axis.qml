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

        //! [time]
        axisX.startTime: Date.UTC(2026, 0, 31, 22, 0, 0) / 1000 // the moment of value 0, in seconds since 1970

        LineSeries {
            step: 60 // a value a minute
            values: Array.from({length: 600}, (_, i) => 20 + 3 * Math.sin(i / 90))
        }
        //! [time]
    }
}
