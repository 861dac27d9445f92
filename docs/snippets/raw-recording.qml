// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias recording: recording
    property alias plot: plot

    width: 640
    height: 360
    visible: true

    //! [reader]
    SeriesReader {
        id: recording

        source: Qt.resolvedUrl("recording.raw")
        format: SeriesReader.Raw
        sampleType: SeriesStore.Int16
    }

    PlotView {
        id: plot

        anchors.fill: parent
        title: recording.errorString
        overviewVisible: true
        axisX { titleText: "time"; unit: "s" }
        LineSeries { store: recording.store; step: 1 / 44100 }
    }
    //! [reader]
}
