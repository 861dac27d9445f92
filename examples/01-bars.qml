// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0
Window {
    width: 640; height: 360; visible: true; color: "#10181f"
    ChartArea { id: chart; anchors.fill: parent; onChartRectChanged: resetZoomView() }
    BarPlotter { id: bars; chartArea: chart }
    RandomU64Data {
        area: Qt.rect(0, 0, 1024, 1); interval: 40
        Component.onCompleted: addPlotter(bars)
    }
}
