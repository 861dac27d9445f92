// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias stack: stack
    property alias current: current
    property alias voltage: voltage

    width: 700
    height: 400
    visible: true

    //! [stack]
    PlotStack {
        id: stack

        anchors.fill: parent
        Keys.onPressed: (event) => saveImage("/tmp/vorlix-stack.png", 2)

        PlotView {
            id: current

            axisY.titleText: "I"
            axisY.unit: "mA"

            LineSeries {
                values: [1, 4, 2, 8, 5, 7]
            }
        }

        PlotView {
            id: voltage

            axisX.titleText: "t"
            axisX.unit: "s"
            axisY.titleText: "U"
            axisY.unit: "V"

            AreaSeries {
                values: [230, 231, 229, 233, 230, 228]
            }
        }
    }
    //! [stack]
}
