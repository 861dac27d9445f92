// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import VorlixPlugin 1.0

// The series of all files as bars over one another, fitted to the window.
Window {
    id: window

    property var files: []
    property real binWidth: 1
    property bool dark: false
    property alias chart: chart
    readonly property color ink: dark ? "#d7dde4" : "#30363d"
    // Bars that lie over others let them through.
    readonly property var barColors: ["#07cbf2", "#99f2872a", "#998a5cf0", "#994caf50", "#99e2466b"]

    function barColor(index) {
        return barColors[index % barColors.length];
    }

    function nameOf(path) {
        return path.split("/").pop();
    }

    function shortNumber(number) {
        return String(Number(number.toPrecision(6)));
    }

    title: files.map(nameOf).join(", ") + " – vorlixview"
    color: dark ? "#14181d" : "#ffffff"

    Repeater {
        model: window.files

        delegate: SeriesBars {
            file: modelData
            binWidth: window.binWidth
            chart: window.chart
            barColor: window.barColor(index)
            zOrder: index
        }

    }

    Row {
        id: names

        height: 20
        spacing: 16
        clip: true

        anchors {
            top: parent.top
            left: chart.left
            right: chart.right
            topMargin: 8
        }

        Repeater {
            model: window.files

            delegate: Row {
                spacing: 6

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 12
                    height: 12
                    radius: 6
                    color: window.barColor(index)
                }

                Text {
                    text: window.nameOf(modelData)
                    color: window.ink
                    font.pixelSize: 14
                }

            }

        }

    }

    ChartArea {
        id: chart

        adaptChartHeight: false
        onChartRectChanged: resetZoomView()

        anchors {
            top: names.bottom
            bottom: from.top
            left: parent.left
            right: parent.right
            margins: 12
        }

        Rectangle {
            height: 1
            color: window.ink

            anchors {
                top: parent.bottom
                left: parent.left
                right: parent.right
            }

        }

        Text {
            text: "0 – " + window.shortNumber(chart.zoomRect.height)
            color: window.ink
            font.pixelSize: 12

            anchors {
                top: parent.top
                right: parent.right
            }

        }

    }

    Text {
        id: from

        text: window.shortNumber(chart.zoomRect.left)
        color: window.ink
        font.pixelSize: 12

        anchors {
            bottom: parent.bottom
            left: chart.left
            bottomMargin: 8
        }

    }

    Text {
        text: window.shortNumber(chart.zoomRect.right)
        color: window.ink
        font.pixelSize: 12

        anchors {
            bottom: from.bottom
            right: chart.right
        }

    }

}
