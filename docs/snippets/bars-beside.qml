// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias today: today
    property alias yesterday: yesterday

    function thirds(values) {
        return values.reduce((all, value) => all.concat(value, NaN, NaN), []);
    }

    width: 640
    height: 360
    visible: true

    PlotView {
        anchors.fill: parent
        axisX { titleText: "channel"; tickInterval: 1; min: 0; max: 6 }

        //! [series]
        BarSeries {
            id: today

            name: "today"
            step: 1 / 3 // thirds(): each value and two NaN
            start: 1 / 6
            values: thirds([2, 2, 3, 4, 5, 6])
        }

        BarSeries {
            id: yesterday

            name: "yesterday"
            step: 1 / 3
            start: 1 / 2
            values: thirds([5, 1, 2, 4, 1, 7])
        }
        //! [series]
    }
}
