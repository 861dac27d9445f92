// SPDX-License-Identifier: MIT
import QtQuick 2.15
import org.kde.quickcharts 1.0 as Charts

Item {
    id: root

    property string kind: "bars"
    property QtObject model
    property real ceiling: 1.05

    Charts.BarChart {
        anchors.fill: parent
        visible: root.kind === "bars"
        spacing: 0
        valueSources: root.kind === "bars" ? [source] : []
        colorSource: ink
        yRange.from: 0
        yRange.to: root.ceiling
        yRange.automatic: false
    }

    Charts.LineChart {
        anchors.fill: parent
        visible: root.kind !== "bars"
        lineWidth: root.kind === "line" ? 1 : 0
        fillOpacity: root.kind === "line" ? 0 : 1
        valueSources: root.kind !== "bars" ? [source] : []
        colorSource: ink
        yRange.from: 0
        yRange.to: root.ceiling
        yRange.automatic: false
    }

    Charts.ModelSource {
        id: source
        model: root.model
        roleName: "value"
    }

    Charts.SingleValueSource {
        id: ink
        value: "#07CBF2"
    }
}
