// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// As an application has it: the file is chosen while the window is there already.
PlotView {
    property alias reader: reader
    property bool hasSamples: false
    readonly property real count: reader.store ? reader.store.count : 0

    overviewVisible: true

    SeriesReader {
        id: reader

        format: hasSamples ? SeriesReader.Raw : SeriesReader.Text
        sampleType: SeriesStore.Float32
    }

    LineSeries {
        store: reader.store
    }
}
