// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    property alias file: file
    property alias plot: plot

    width: 900
    height: 620
    visible: true

    //! [file]
    PlotView {
        id: plot

        anchors.fill: parent
        axisX.unit: file.xUnit
        axisY.titleText: file.column
        title: file.problem

        FileSeries {
            id: file

            source: Qt.resolvedUrl("../../examples/data/sample.csv")
        }
    }
    //! [file]

    //! [panel]
    ReaderPanel {
        anchors.centerIn: parent
        height: 560
        moreFields: [{ "words": "Step of x", "owner": file, "property": "step", "guess": "1", "least": 0 }]
        reader: file.reader
        theme: plot.theme
        width: 640
    }
    //! [panel]
}
