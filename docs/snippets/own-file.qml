// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias reader: reader

    width: 640
    height: 360
    visible: true
    color: "#10181f"

    ChartArea {
        id: chart

        anchors.fill: parent
        onChartRectChanged: resetZoomView()
    }

    BarPlotter {
        id: bars

        chartArea: chart
    }

    //! [reader]
    SCSVReader {
        id: reader

        binWidth: 0.5
        Component.onCompleted: {
            addPlotter(bars);
            file = "docs/snippets/numbers.txt"; // after binWidth, which applies to what is read from now on
        }
    }
    //! [reader]
}
