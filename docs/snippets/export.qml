// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "qrc:/qml"

Window {
    id: window

    property string saved: ""
    property bool grabbed: false

    width: 320
    height: 240
    visible: true

    //! [plot]
    SPlotQML {
        id: plot

        anchors.fill: parent
        Material.background: window.color // the picture's ground
        onExportComplete: (path) => console.log("saved", path)
    }

    Shortcut {
        sequence: StandardKey.Save
        onActivated: plot.exportImage("/tmp/vorlix-plot.png", 4)
    }
    //! [plot]

    Connections {
        function onExportComplete(path) {
            window.saved = path;
        }

        target: plot
    }

    BarPlotter {
        id: bars

        chartArea: plot.refChartArea
    }

    Filter1D {
        area: Qt.rect(0, 0, 5, 1)
        data: [3, 1, 4, 1, 5]
        Component.onCompleted: addPlotter(bars)
    }

    Timer {
        interval: 300
        running: true
        onTriggered: {
            plot.exportImage("/tmp/vorlix-plot.png", 4);
            //! [grab]
            plot.refChartArea.grabToImage((result) => window.grabbed = result.saveToFile("/tmp/vorlix-chart.png"),
                                          Qt.size(1280, 720));
            //! [grab]
        }
    }
}
