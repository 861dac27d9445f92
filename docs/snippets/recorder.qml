// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias recorder: recorder
    property alias plot: plot

    width: 640
    height: 360
    visible: true

    //! [recorder]
    SeriesStore {
        id: recorder

        maximumCount: 1e7 // of a thousand a second, nearly three hours
    }

    Timer {
        interval: 100
        repeat: true
        running: true
        onTriggered: recorder.append(Array.from({length: 100}, () => Math.random() - 0.5))
    }
    //! [recorder]

    //! [plot]
    PlotView {
        id: plot

        anchors.fill: parent
        followMode: PlotView.FollowEnd
        overviewVisible: true
        axisX { titleText: "time"; unit: "s"; min: 0; max: 60 }
        LineSeries { name: "noise"; store: recorder; step: 0.001 }
    }
    //! [plot]
}
