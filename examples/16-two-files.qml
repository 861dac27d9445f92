// SPDX-License-Identifier: MIT
// Two files over each other, read while you watch, and a region that counts what lies under a peak.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    id: window

    property alias peak: peak
    readonly property bool isRead: sample.status === SeriesReader.Ready && background.status === SeriesReader.Ready

    width: 720
    height: 440
    visible: true

    SeriesReader {
        id: sample

        source: Qt.resolvedUrl("data/sample.csv")
        xColumn: "energy"
    }

    SeriesReader {
        id: background

        source: Qt.resolvedUrl("data/background.csv")
        xColumn: "energy"
    }

    PlotView {
        anchors.fill: parent
        axisX { titleText: "energy"; unit: "keV" }
        axisY { titleText: "counts" }

        BarSeries {
            id: measured

            name: "sample"
            store: sample.store
            xStore: sample.xStore
        }

        LineSeries {
            name: "background"
            store: background.store
            xStore: background.xStore
            width: 2
        }

        PlotRegion {
            id: peak

            name: "peak"
            series: measured
            from: 625
            to: 700
        }
    }
}
