// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0
import VorlixView 1.0

// One file in a plot: read in the background, reduced to the resolution of the chart and of the navigator, drawn as
// bars or as an area. The item itself shows nothing.
Item {
    id: view

    property ChartArea chart
    property ChartArea navigator
    /// Asked about what lies under the mouse.
    property BarDecorator decorator
    property alias file: source.file
    property alias binWidth: source.binWidth
    property alias smoothDepth: source.smoothDepth
    property alias logarithmic: source.logarithmic
    property alias name: bars.name
    property color barColor
    property real layerOrder: 0
    property bool asArea: false
    /// To be closed once it is no longer busy.
    property bool isUnwanted: false
    readonly property alias busy: source.busy
    readonly property alias progress: source.progress
    readonly property alias problem: source.problem
    readonly property alias hasNumbers: source.hasNumbers
    readonly property alias maximum: source.maximum
    /// The one that draws, of the two.
    readonly property QtObject plotter: asArea ? area : bars
    property bool ready: false

    /// The series and its extent have changed: the charts' rectangles must stand before it is drawn.
    signal seriesChanged()

    /// How far the file's values reach along x.
    function extent() {
        return source.count * source.binWidth;
    }

    /// Gives the series to what draws it.
    function feed() {
        if (!source.chartNode)
            return ;

        source.spreadNodes();
        source.chartNode.chartArea = chart;
        source.navigatorNode.chartArea = navigator;
        // A node chooses its resolution when it hears of the zoom, not when it meets its chart.
        chart.zoomRectChanged();
        navigator.zoomRectChanged();
        source.chartNode.addPlotter(bars);
        source.navigatorNode.addPlotter(overview);
        line.node = source.chartNode;
    }

    /// What the plotter shows at x, and what the file has there: null for nothing.
    function lookUp(x) {
        const bar = line.barAt(x);
        if (bar.width === 0)
            return null;

        const found = source.highestIn(bar.left, bar.right);
        return found.count === undefined ? null : Object.assign(found, {
            "bar": bar,
            "name": name,
            "color": plotter.color
        });
    }

    function swapPlotters() {
        if (!ready)
            return ;

        const old = plotter === area ? bars : area;
        plotter.color = Qt.rgba(old.color.r, old.color.g, old.color.b, plotter.color.a);
        plotter.visible = old.visible;
        chart.removePlotter(old);
        decorator.removePlotter(old);
        chart.addPlotter(plotter);
        decorator.addPlotter(plotter);
    }

    onPlotterChanged: swapPlotters()
    Component.onCompleted: {
        ready = true;
        bars.color = barColor;
        area.color = Qt.rgba(barColor.r, barColor.g, barColor.b, 0.5);
        chart.addPlotter(plotter);
        decorator.addPlotter(plotter);
        navigator.addPlotter(overview);
    }
    Component.onDestruction: {
        for (const drawn of [bars, area]) {
            if (chart)
                chart.removePlotter(drawn);

        }
        if (navigator)
            navigator.removePlotter(overview);

    }

    SeriesFile {
        id: source

        onSeriesChanged: view.seriesChanged()

        reader: Component {
            SCSVReader {
            }

        }

        average: Component {
            MovingAvarangeU64 {
            }

        }

        // As many values as a chart has pixels, at every zoom: the maxima of what lies under a pixel.
        decimator: Component {
            DecimatorU64 {
            }

        }

    }

    LineOfBars {
        id: line

        chart: view.chart
        plotter: view.asArea ? area : null
    }

    BarPlotter {
        id: bars

        zOrder: view.layerOrder
    }

    AreaPlotter {
        id: area

        borderColor: Qt.rgba(color.r, color.g, color.b, 1)
        borderWidth: 1.5
        name: bars.name
        zOrder: view.layerOrder
    }

    BarPlotter {
        id: overview

        color: Qt.rgba(view.plotter.color.r, view.plotter.color.g, view.plotter.color.b, Math.max(view.plotter.color.a, 0.6))
        name: bars.name
        visible: view.plotter.visible
        zOrder: view.layerOrder
    }

}
