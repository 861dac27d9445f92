// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import VorlixPlugin 1.0

// Charts from a Repeater, plotters and nodes from Instantiators, over models that change.
Item {
    id: root

    property int charts: 3
    property int plotters: 3
    property int nodes: 3

    width: 320
    height: 200

    Filter1D {
        id: trunk

        area: Qt.rect(0, 0, 100, 1)
    }
    Repeater {
        id: repeater

        model: root.charts

        ChartArea {
            id: chart

            height: 40
            updateIntervalMs: 0
            width: 60
            x: index * 20
            y: index * 10

            property var own: BarPlotter { chartArea: chart; data: [1, 2, 3]; plotterArea: Qt.rect(0, 0, 3, 1) }
        }
    }
    Instantiator {
        model: root.plotters
        onObjectAdded: {
            if (repeater.count > 0)
                repeater.itemAt(index % repeater.count).addPlotter(object)
            trunk.addPlotter(object)
        }
        onObjectRemoved: if (index % 2) trunk.removePlotter(object)

        AreaPlotter {}
    }
    Instantiator {
        model: root.nodes
        onObjectAdded: trunk.addFilter(object)

        MovingAvarangeU64 { id: average; property var shown: BarPlotterDx {} Component.onCompleted: addPlotter(shown) }
    }
    function feed(series) { trunk.data = series }
}
