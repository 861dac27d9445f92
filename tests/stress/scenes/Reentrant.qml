// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0

// Handlers that change what has just told them about a change.
Item {
    id: root

    property int turns: 0
    property int depth: 0
    function within(change) { // a handler may call itself through what it changes; this one only so often
        if (depth >= 3)
            return
        depth += 1
        turns += 1
        change(turns)
        depth -= 1
    }
    function begin(series) {
        trunk.data = series
        trunk.area = Qt.rect(0, 0, 1 + series.length, 1)
        chart.zoomRect = Qt.rect(turns % 7, 0, 5, 5)
        decorator.mouseX = turns % 200
    }

    width: 200
    height: 100

    ChartArea {
        id: chart

        anchors.fill: parent
        updateIntervalMs: 0
        onChartRectChanged: root.within(n => {
            bars.data = [n, n + 1, 3]
            if (n % 3) addPlotter(filled)
            else removePlotter(filled)
        })
        onPlotterChanged: root.within(n => {
            zoomRect = Qt.rect(n % 5, 0, 3, 9)
            plotter = n % 2 ? [bars, exact] : [exact, filled, bars]
        })
        onZoomRectChanged: root.within(n => {
            if (n % 2) resetZoomView()
            else zoomRect = Qt.rect(n % 11, 0, 2, 2)
            trunk.data = [n, 1, 4]
        })
    }
    BarPlotter {
        id: bars

        chartArea: chart
        plotterArea: Qt.rect(0, 0, 10, 1)
        onDataChanged: root.within(n => {
            data = [n]
            trunk.removePlotter(bars)
            trunk.addPlotter(bars)
            visible = n % 2
        })
        onPlotterAreaChanged: root.within(n => {
            plotterArea = Qt.rect(n % 3, 0, 10, 1)
            chartArea = n % 4 ? chart : null
        })
        onVisibleChanged: root.within(n => {
            color = Qt.rgba(n % 2, 1, 0, 1)
        })
        onChartAreaChanged: root.within(n => {
            chartArea = chart
        })
    }
    BarPlotterDx {
        id: exact

        chartArea: chart
        onDataChanged: root.within(n => {
            data = [1, n, 2, 3]
            chart.removePlotter(exact)
            chart.addPlotter(exact)
        })
    }
    AreaPlotter {
        id: filled

        chartArea: chart
        onDataChanged: root.within(n => {
            data = [n, 2]
            drawLayer = n % 8
        })
        onDrawLayerChanged: root.within(n => {
            zOrder = n
            showLegend = n % 2
        })
    }
    BarDecorator {
        id: decorator

        active: true
        chartArea: chart
        onInfoMapChanged: root.within(n => {
            mouseY = n % 100
            bars.data = [1, n]
            plotters = [bars, exact]
            removePlotter(bars)
        })
        onPlottersChanged: root.within(n => {
            addPlotter(filled)
            removeAllPlotter()
            active = n % 2
        })
        onActiveChanged: root.within(n => {
            addPlotter(bars)
        })
    }
    Filter1D {
        id: trunk

        onAreaChanged: root.within(n => {
            area = Qt.rect(0, -1, 1 + n % 9, 2)
            data = [1, 2, n]
            removeFilter(twig)
        })
        onDataChanged: root.within(n => {
            data = [n, n]
            addFilter(twig)
            addPlotter(exact)
            removePlotter(filled)
            decorator.mouseX = n % 200
        })
    }
    MovingAvarangeU64 {
        id: twig

        depth: 3
        onDataChanged: root.within(n => {
            trunk.removeFilter(twig)
            depth = n % 6
            trunk.addFilter(twig)
            trunk.addPlotter(filled)
        })
    }
}
