// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias chart: chart
    property alias maker: maker

    width: 320
    height: 240
    visible: true
    color: "#10181f"

    ChartArea {
        id: chart

        anchors.fill: parent
        onChartRectChanged: resetZoomView()
    }

    Filter1D {
        id: node

        area: Qt.rect(0, 0, 5, 1)
        data: [3, 1, 4, 1, 5]
    }

    //! [maker]
    Component {
        id: bars

        BarPlotter {
            chartArea: chart
            Component.onCompleted: node.addPlotter(this)
        }
    }

    Timer {
        id: maker

        property var present: null
        property int made: 0

        interval: 30
        repeat: true
        running: true
        onTriggered: {
            if (present)
                present.destroy(); // the chart and the node forget it
            present = bars.createObject(node);
            ++made;
        }
    }
    //! [maker]
}
