// SPDX-License-Identifier: MIT
// A source that streams: forty times a second twelve new samples come in on the right and old ones go out on the left.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    width: 640
    height: 360
    visible: true
    color: "#0b1016"

    ChartArea {
        id: chart

        anchors.fill: parent
        updateIntervalMs: 20
        onChartRectChanged: resetZoomView()
    }

    AreaPlotter {
        id: curve

        chartArea: chart
        color: "#803ddc97"
        borderColor: "#3ddc97"
        borderWidth: 2
    }

    Filter1D {
        id: window

        area: Qt.rect(0, 0, 1200, 1)
        Component.onCompleted: addPlotter(curve)
    }

    Timer {
        id: feed

        property int time: 0
        property var series: new Array(1200).fill(0)

        function next() {
            ++time;
            return 40 + 25 * Math.sin(time / 30) + 15 * Math.sin(time / 7) * Math.sin(time / 200);
        }

        interval: 25
        repeat: true
        running: true
        onTriggered: {
            series = series.slice(12).concat(Array.from({length: 12}, next));
            window.data = series;
        }
    }
}
