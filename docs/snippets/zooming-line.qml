// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias plot: plot
    property alias line: line

    width: 640
    height: 360
    visible: true

    //! [plot]
    PlotView {
        id: plot

        anchors.fill: parent
        title: "Click and drag to pan, wheel to zoom"

        LineSeries {
            id: line

            name: "signal"
            xValues: [0, 1.1, 1.9, 2.1, 2.9, 3.4, 4.1]
            values: [0, 2.1, 3.3, 2.1, 4.9, 3, 3.3]
            width: 2
        }
    }
    //! [plot]
}
