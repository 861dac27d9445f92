// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.Material 2.15
import QtQuick.Window 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

// The series of all files in one plot.
ApplicationWindow {
    id: window

    /// What the command line asks for.
    property var files: []
    property real binWidth: 1
    property string unit
    property int smoothDepth: 1
    property bool asArea: false
    property bool logarithmic: false
    property bool dark: false
    /// For a picture there is nothing but the plot.
    property bool asPicture: false
    readonly property ChartArea chart: plot.refChartArea
    readonly property ChartArea navigator: plot.refNavigator
    readonly property var views: listViews(series.count)
    readonly property alias progress: notice.progress
    readonly property bool reading: views.some((view) => {
        return view.busy;
    })
    /// Whether there is a number in any file.
    readonly property bool hasNumbers: views.some((view) => {
        return view.hasNumbers;
    })
    readonly property bool hasBars: views.some((view) => {
        return view.maximum > 0;
    })
    /// Why there is nothing to see of a file, or not what it should be, in words.
    readonly property var problems: views.filter((view) => {
        return view.problem && !view.busy;
    }).map((view) => {
        return view.file.split("/").pop() + ": " + view.problem;
    })
    // Bars that lie over others let them through.
    readonly property var barColors: ["#07cbf2", "#99f2872a", "#998a5cf0", "#994caf50", "#99e2466b"]

    function nameOf(path) {
        return path.split("/").pop().replace(/(.)\.(txt|csv|dat|asc)$/i, "$1");
    }

    function listViews(count) {
        const views = [];
        for (let i = 0; i < count; ++i) {
            if (series.itemAt(i))
                views.push(series.itemAt(i));

        }
        return views;
    }

    function highest(values) {
        return values.reduce((a, b) => {
            return Math.max(a, b);
        }, 0);
    }

    /// Shows files beside those that are there. What can't be shown is said.
    function open(paths) {
        const refused = [];
        for (const path of paths) {
            const reason = fileChecks.whyUnreadable(path);
            if (reason)
                refused.push(path + ": " + reason);
            else
                fileList.append({
                "path": path
            });
        }
        message.said = refused.join("\n");
    }

    /// A file that is being read goes when it has been: nobody waits for that.
    function closeAll() {
        for (const view of views) {
            view.isUnwanted = true;
        }
        message.said = "";
        removeUnwanted();
    }

    function removeUnwanted() {
        for (let i = fileList.count - 1; i >= 0; --i) {
            const view = series.itemAt(i);
            if (view.isUnwanted && !view.busy)
                fileList.remove(i);

        }
        fit();
    }

    function exportTo(path) {
        const isTaken = plot.grabPicture((result) => {
            message.said = fileChecks.writePicture(result.image, path);
        }, 2);
        message.said = isTaken ? "" : path + ": no picture could be taken";
    }

    /// Fits the charts to all series, then lets them draw these: how coarse they are drawn depends on the charts. What is
    /// shown along x stays where it is if the series are as long as before.
    function fit() {
        const maximum = highest(views.map((view) => {
            return view.maximum;
        }));
        const extent = highest(views.map((view) => {
            return view.extent();
        }));
        const rect = Qt.rect(0, 0, extent || 1, Math.min(maximum || 1, Number.MAX_VALUE / 2) * 1.05);
        // A chart fits its height to no less than 1 and in single precision.
        chart.adaptChartHeight = maximum >= 1 && maximum < 1e+37;
        for (const area of [chart, navigator]) {
            const shown = area.zoomRect;
            const isAsLong = area.chartRect.width === rect.width;
            area.chartRect = rect;
            if (isAsLong)
                area.zoomRect = Qt.rect(shown.x, 0, shown.width, rect.height);
            else
                area.resetZoomView();
        }
        for (const view of views) {
            view.feed();
        }
    }

    function zoomTo(left, width) {
        const whole = chart.chartRect;
        const newWidth = Math.min(Math.max(width, 2 * binWidth), whole.width);
        const newLeft = Math.min(Math.max(left, whole.left), whole.right - newWidth);
        chart.zoomRect = Qt.rect(newLeft, chart.zoomRect.y, newWidth, chart.zoomRect.height);
        plot.recalcNavigator();
    }

    /// Makes what is shown narrower by a factor; the place at a fraction of the chart's width stays where it is.
    function zoomBy(factor, fraction) {
        const zoom = chart.zoomRect;
        const width = Math.min(Math.max(zoom.width / factor, 2 * binWidth), chart.chartRect.width);
        zoomTo(zoom.left + fraction * (zoom.width - width), width);
    }

    function panBy(fraction) {
        zoomTo(chart.zoomRect.left + fraction * chart.zoomRect.width, chart.zoomRect.width);
    }

    function formatX(value) {
        if (unit === "s")
            return plot.format_time(value);

        return roundedTo(value, chart.zoomRect.width / 10000) + (unit ? " " + unit : "");
    }

    /// With as many decimals as a step needs.
    function roundedTo(value, step) {
        const decimals = Math.min(Math.max(Math.ceil(-Math.log10(step)), 0), 15);
        const isUsual = Math.abs(value) < 1e+15 && isFinite(decimals) && step > 1e-14;
        return isUsual ? String(Number(value.toFixed(decimals))) : shortNumber(value);
    }

    function shortNumber(value) {
        return String(Number(value.toPrecision(12)));
    }

    function formatCount(value) {
        if (logarithmic)
            return value;

        const steps = [[1e+09, "G"], [1e+06, "M"], [1000, "K"]];
        const step = Math.abs(value) < 1e+12 ? steps.find((entry) => {
            return Math.abs(value) >= entry[0];
        }) : undefined;
        return step ? shortNumber(value / step[0]) + step[1] : shortNumber(value);
    }

    title: views.length > 0 ? views.map((view) => {
        return view.name;
    }).join(", ") + " – vorlixview" : "vorlixview"
    color: Material.background
    Material.theme: dark ? Material.Dark : Material.Light
    Material.background: dark ? "#14181d" : "#ffffff"
    Material.foreground: dark ? "#d7dde4" : "#30363d"
    Material.primary: "#2a7f9e"
    Material.accent: "#07a5c4"
    Component.onCompleted: {
        chart.addPlotter(highlight);
        open(files);
    }

    ListModel {
        id: fileList
    }

    Repeater {
        id: series

        model: fileList

        delegate: SeriesView {
            asArea: window.asArea
            barColor: window.barColors[Math.max(index, 0) % window.barColors.length]
            binWidth: window.binWidth
            chart: window.chart
            decorator: highlight
            file: path
            layerOrder: index
            logarithmic: window.logarithmic
            name: window.nameOf(path)
            navigator: window.navigator
            smoothDepth: window.smoothDepth
            onSeriesChanged: {
                if (isUnwanted)
                    Qt.callLater(window.removeUnwanted);
                else
                    window.fit();
            }
        }

    }

    BarDecorator {
        id: highlight

        active: readout.shown && !window.asArea
        drawLayer: 2 // over the bars, and not in the legend
        mouseX: plot.refChartMouse.mouseX
        mouseY: plot.refChartMouse.mouseY
        name: "highlight"
    }

    SPlotQML {
        id: plot

        anchors.fill: parent
        isYAxisLog: window.logarithmic
        updateIntervalMs: 15
        Component.onCompleted: {
            refChartArea.adaptAreaToPlotters = false;
            refNavigator.adaptAreaToPlotters = false;
            refLegend.nameColor = Qt.binding(() => {
                return window.Material.foreground;
            });
            refLegend.hiddenColor = Qt.binding(() => {
                return window.dark ? "#747e89" : "#868e97";
            });
            xAxis.axisTextFunc = window.formatX;
            yAxis.axisTextFunc = window.formatCount;
        }
    }

    AxisColors {
        axis: plot.xAxis
    }

    AxisColors {
        axis: plot.yAxis
    }

    Connections {
        function onWheel(wheel) {
            if (wheel.angleDelta.x !== 0 || wheel.modifiers & Qt.ShiftModifier)
                window.panBy(-(wheel.angleDelta.x || wheel.angleDelta.y) / 1200);
            else
                window.zoomBy(Math.pow(1.25, wheel.angleDelta.y / 120), wheel.x / plot.refChartMouse.width);
        }

        target: plot.refChartMouse
    }

    HoverMarks {
        objectName: "marks"
        asArea: window.asArea
        barColor: highlight.color
        chart: window.chart
        found: readout.found
        mouse: plot.refChartMouse
        parent: window.chart
    }

    Readout {
        id: readout

        objectName: "readout"
        asArea: window.asArea
        binWidth: window.binWidth
        chart: window.chart
        enabled: !window.asPicture
        formatX: window.formatX
        mouse: plot.refChartMouse
        views: window.views
    }

    ViewerNotice {
        id: notice

        anchors.centerIn: parent
        asPicture: window.asPicture
        hasMessage: message.text !== ""
        problems: window.hasBars ? [] : window.problems
        views: window.views
        width: window.width - 24
    }

    DropArea {
        anchors.fill: parent
        onDropped: (drop) => {
            if (!drop.hasUrls)
                return ;

            drop.accept(Qt.CopyAction); // whatever was proposed: the files stay where they are
            window.open(fileChecks.pathsOf(drop.urls));
        }
    }

    ViewerDialogs {
        id: dialogs

        onFilesChosen: (paths) => window.open(paths)
        onPictureChosen: (path) => window.exportTo(path)
    }

    ViewerKeys {
        active: !window.asPicture
        fileDialogs: dialogs
        scene: window
    }

    header: ViewerBar {
        id: bar

        visible: !window.asPicture
        height: visible ? implicitHeight : 0
        scene: window
        onOpenClicked: dialogs.chooseFiles()
        onExportClicked: dialogs.choosePicture()
    }

    footer: Label {
        id: message

        property string said
        // Of files beside which there are bars; without any, it stands in their place.
        readonly property string problems: window.hasBars ? window.problems.join("\n") : ""
        property string dismissed

        visible: text !== ""
        width: window.width // of its own, else nothing is wrapped
        padding: 6
        color: "#ffffff"
        text: window.asPicture ? "" : [said, problems === dismissed ? "" : problems].filter(Boolean).join("\n")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap

        TapHandler {
            onTapped: {
                message.said = "";
                message.dismissed = message.problems;
            }
        }

        background: Rectangle {
            color: "#b3261e"
        }

    }

    component AxisColors: Item {
        id: colors

        property Item axis

        Binding {
            target: colors.axis
            property: "axisTextColor"
            value: window.dark ? "#b4bcc6" : "#515861"
        }

        Binding {
            target: colors.axis
            property: "axisLineColor"
            value: window.dark ? "#2c333b" : "#dfe3e8"
        }

    }

}
