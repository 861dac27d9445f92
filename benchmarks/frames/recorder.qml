// SPDX-License-Identifier: MIT
import QtQuick 2.14
import VorlixPlugin.Views 1.0

// As an application has it, with all that a view offers.
PlotView {
    property alias store: line.store

    title: "Recorder"
    followMode: PlotView.FollowEnd
    overviewVisible: true
    axisX { titleText: "time"; unit: "s" }
    axisY { titleText: "level"; unit: "V" }

    LineSeries {
        id: line

        name: "noise"
        step: 0.001
    }
}
