// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import VorlixPlugin 1.0
import "utils.js" as Utils

/// An overview strip: shows which part of it the main chart shows, and lets the user move and stretch that part.
/// Its own chart is empty until plotters are added to it.
Item {
    id: root

    property ChartArea mainChartArea: null
    property alias navChart: navigator
    property real flickRatio: mainChartArea ? width / mainChartArea.chartRect.width : 0

    /// Fits what the strip shows to what the main chart shows, so that its band can be taken with a mouse. While the main
    /// chart shows nothing, as between a click and the next frame, that waits until it does.
    function recalcWidth() {
        const main = mainChartArea ? mainChartArea.zoomRect : Qt.rect(0, 0, 0, 0);
        mainWatch.isDue = !(main.width > 0 && isFinite(main.width) && isFinite(main.x));
        if (mainWatch.isDue || !(width > 0))
            return ;

        if (!(main.width / mainChartArea.chartRect.width * width < navigator.minWidth)) {
            navigator.resetZoomView();
            return ;
        }
        const chart = navigator.chartRect;
        const shown = navigator.zoomRect;
        const w = main.width * width / navigator.minWidth;
        let left = shown.left;
        if (!(main.left < left + w && main.right > left))
            left = Math.min(Math.max(main.left + main.width / 2 - w / 2, chart.left), chart.right - w);

        navigator.zoomRect = Qt.rect(left, shown.y, w, shown.height);
    }

    /// recalcWidth() once both charts know their rectangles, unless somebody chose what the strip shows.
    function firstRecalc() {
        const isWhole = navigator.zoomRect.x === navigator.chartRect.x && navigator.zoomRect.width === navigator.chartRect.width;
        if (isWhole && !firstFit.isPending)
            recalcWidth();

    }

    /// Has both charts drawn in the next frame, unless they are told not to be.
    function drawAgain() {
        for (const chart of [mainChartArea, navigator]) {
            if (chart && chart.shouldUpdate)
                chart.update();

        }
    }

    clip: true
    onWidthChanged: recalcWidth()

    ChartArea {
        id: navigator

        property real minWidth: 75

        /// Moves what is shown so that it begins at left, without leaving the chart.
        function showFrom(left) {
            const x = Utils.bound(left, chartRect.left, chartRect.right - zoomRect.width);
            zoomRect = Qt.rect(x, zoomRect.y, zoomRect.width, zoomRect.height);
        }

        /// Moves what is shown so that the middle of the thumb lies under a pixel of an item.
        function scrollTo(item, pixel) {
            const ratio = item.mapToItem(root, pixel - thumb.width / 2, 0).x / root.width;
            showFrom(ratio * chartRect.width + chartRect.left);
        }

        /// From a place in data coordinates to pixels; 0 where nothing is shown.
        function pixelAt(value) {
            const x = (value - zoomRect.x) / zoomRect.width * width;
            return isFinite(x) ? x : 0;
        }

        anchors.fill: parent
        adaptChartHeight: false
        onChartRectChanged: firstFit.fit(navigator)
    }

    FirstFit {
        id: firstFit

        onIsPendingChanged: root.firstRecalc()
    }

    Rectangle {
        id: band

        readonly property real x1: root.mainChartArea ? navigator.pixelAt(root.mainChartArea.zoomRect.x) : 0
        readonly property real x2: root.mainChartArea ? navigator.pixelAt(root.mainChartArea.zoomRect.right) : 0

        x: Utils.bound(x1, -100, navigator.width + 100)
        width: Math.max(0, Math.min(x2 - x, navigator.width))
        height: parent.height
        color: "#4d4dc2e6"
    }

    EdgeLine {
        anchors.top: parent.top
    }

    EdgeLine {
        anchors.bottom: parent.bottom
    }

    MouseArea {
        id: pointer

        readonly property int tolerance: 10

        /// What a drag that begins at x does.
        function gestureAt(x) {
            if (Math.abs(x - band.x) <= tolerance)
                return "stretchLeft";

            return Math.abs(x - band.x - band.width) <= tolerance ? "stretchRight" : "dragging";
        }

        function moveTo(pixel) {
            const x = pixel / root.width * navigator.zoomRect.width + navigator.zoomRect.left;
            if (!isFinite(x))
                return ;

            const main = root.mainChartArea;
            const zoom = main.zoomRect;
            const half = zoom.width / 2;
            if (state === "dragging")
                show(Utils.bound(x - half, main.chartRect.left, main.chartRect.right - zoom.width), zoom.y, zoom.width);
            else if (state === "stretchLeft")
                show(x, 0, zoom.right - x);
            else if (state === "stretchRight")
                show(zoom.left, 0, x - zoom.left);
        }

        function show(x, y, w) {
            root.mainChartArea.zoomRect = Qt.rect(x, y, w, root.mainChartArea.zoomRect.height);
        }

        function finish() {
            state = "";
            root.recalcWidth();
        }

        anchors.fill: parent
        cursorShape: (pressed ? state : gestureAt(mouseX)) !== "dragging" ? Qt.SizeHorCursor : Qt.ArrowCursor
        enabled: root.mainChartArea !== null
        hoverEnabled: true
        preventStealing: true
        onPressed: (mouse) => {
            state = gestureAt(mouse.x);
        }
        onPositionChanged: (mouse) => {
            moveTo(mouse.x);
        }
        onReleased: finish()
        onCanceled: finish()
        onWheel: (wheel) => {
            wheel.accepted = thumb.visible;
            if (thumb.visible)
                navigator.showFrom(navigator.zoomRect.left + wheel.angleDelta.y / root.width * navigator.zoomRect.width);

        }
        states: [
            State {
                name: "dragging"
            },
            State {
                name: "stretchLeft"
            },
            State {
                name: "stretchRight"
            }
        ]
    }

    Rectangle {
        id: track

        readonly property color grey: Material.color(Material.Grey, Material.Shade400)

        z: 900
        width: parent.width
        height: thumb.height
        anchors.bottom: parent.bottom
        color: Qt.rgba(grey.r, grey.g, grey.b, 0.5)
        radius: thumb.radius
        visible: thumb.visible

        MouseArea {
            id: trackArea

            anchors.fill: parent
            preventStealing: true
            onPressed: (mouse) => {
                navigator.scrollTo(trackArea, mouse.x);
            }
            onPositionChanged: (mouse) => {
                navigator.scrollTo(trackArea, mouse.x);
            }
        }

    }

    Rectangle {
        id: thumb

        readonly property real way: navigator.chartRect.width - navigator.zoomRect.width

        z: 1000
        x: way > 0 ? (navigator.zoomRect.x - navigator.chartRect.x) / way * (root.width - width) : 0
        width: Math.max(root.width * navigator.zoomRect.width / navigator.chartRect.width, 40)
        height: 6
        anchors.bottom: parent.bottom
        color: Material.primary
        radius: 3
        visible: width < 0.999 * root.width

        MouseArea {
            id: thumbArea

            anchors.fill: parent
            preventStealing: true
            onPositionChanged: (mouse) => {
                navigator.scrollTo(thumbArea, mouse.x);
            }
        }

    }

    Connections {
        id: mainWatch

        property bool isDue: false

        function onZoomRectChanged() {
            if (isDue)
                root.recalcWidth();

        }

        target: root.mainChartArea
    }

    LastFrame {
        chart: navigator
    }

    LastFrame {
        chart: root.mainChartArea
    }

    component EdgeLine: Rectangle {
        width: parent.width
        height: 1
        color: Material.color(Material.Grey, Material.Shade300)
    }

    /// One end of what a bar shows, under it, as an axis labels it.
    component RangeLabel: Text {
        property Item axis
        property Item bar
        property bool isRight: false
        readonly property rect shown: bar.navChart.zoomRect

        z: 1
        width: Math.max(0, bar.width / 2 - 4)
        anchors.top: bar.bottom
        anchors.topMargin: -1
        anchors.left: isRight ? undefined : bar.left
        anchors.right: isRight ? bar.right : undefined
        color: axis.axisTextColor
        elide: Text.ElideRight
        enabled: bar.enabled
        font.pixelSize: 10
        fontSizeMode: Text.HorizontalFit
        horizontalAlignment: isRight ? Text.AlignRight : Text.AlignLeft
        minimumPixelSize: 6
        text: axis.labelText(isRight ? shown.right : shown.left)
        textFormat: Text.PlainText
        visible: bar.visible && bar.height > 0
    }

    /// A chart area starts with the first unit of its data. This makes it show all of it, once: when it gets another
    /// rectangle than the one it starts with, and the user hasn't chosen a zoom before.
    component FirstFit: QtObject {
        property bool isPending: true

        function isUnit(x, width) {
            return x === 0 && width === 1;
        }

        /// To be called whenever the chart's rectangle changes.
        function fit(chart) {
            if (!isPending || isUnit(chart.chartRect.x, chart.chartRect.width))
                return ;

            // The chart may have cut the zoom it starts with before this is called.
            if (isUnit(chart.zoomRect.x, chart.zoomRect.width) || isCutUnit(chart.zoomRect, chart.chartRect))
                chart.resetZoomView();

            isPending = false;
        }

        function isCutUnit(zoom, whole) {
            return zoom.x === Math.max(whole.left, 0) && zoom.right === Math.min(whole.right, 1);
        }

    }

    /// Draws a chart once more after its zoom came to rest: requests inside its interval are dropped.
    component LastFrame: Item {
        id: lastFrame

        property ChartArea chart: null

        Connections {
            function onZoomRectChanged() {
                timer.interval = lastFrame.chart.updateIntervalMs;
                timer.restart();
            }

            target: lastFrame.chart
        }

        Timer {
            id: timer

            onTriggered: {
                if (lastFrame.chart && lastFrame.chart.shouldUpdate)
                    lastFrame.chart.update();

            }
        }

    }

}
