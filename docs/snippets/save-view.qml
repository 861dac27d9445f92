// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    id: window

    property var told: []

    width: 400
    height: 300
    visible: true

    //! [save]
    PlotView {
        id: plot

        anchors.fill: parent
        onSaved: (file, error) => console.log(file, error.length > 0 ? error : "is written")

        LineSeries {
            name: "signal"
            values: [3, 1, 4, 1, 5]
        }
    }

    Shortcut {
        sequence: StandardKey.Save
        onActivated: {
            plot.saveImage("/tmp/vorlix-view.png", 3); // three pixels for each of the window's
            plot.saveValues("/tmp/vorlix-view.csv");
        }
    }
    //! [save]

    Connections {
        function onSaved(file, error) {
            window.told = window.told.concat(file + error);
        }

        target: plot
    }

    Timer {
        interval: 300
        running: true
        onTriggered: {
            plot.saveImage("/tmp/vorlix-view.png", 3);
            plot.saveValues("/tmp/vorlix-view.csv");
        }
    }
}
