// SPDX-License-Identifier: MIT
import "Legend"
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12
import QtQuick.Window 2.14
import VorlixPlugin 1.0
import "utils.js" as Utils

/// A plot: a chart area with axes, zoom (left button), pan (middle or right button), overview strip and legend.
/// Applications add plotters to refChartArea, and to refNavigator what the strip shall show.
Item {
    id: root

    property alias refChartArea: chartArea
    property alias refNavigator: navBar.navChart
    property alias refChartMouse: zoomArea
    property alias refLegend: legend
    property alias isYAxisLog: verticalAxis.isLogScale
    property alias updateIntervalMs: chartArea.updateIntervalMs
    readonly property alias xAxis: horizontalAxis
    readonly property alias yAxis: verticalAxis
    property bool enableNavigatorBar: true
    property bool enableLegend: true

    /// The picture was taken and given to the file, written or not.
    signal exportComplete(string path)

    /// Seconds with two decimals and a unit from as to s.
    function format_time(num, decimals = 2) {
        return horizontalAxis.withSuffix(num, decimals, [" as", " fs", " ps", " ns", " us", " ms", " s"]);
    }

    /// Saves a picture of upsize times the plot's size in pixels, with a background. Takes a path or a file URL.
    function exportImage(path, upsize = 1) {
        const save = (result) => {
            if (!result)
                return console.warn("SPlotQML: no picture for " + path + ": the plot isn't shown, or it would have no size");

            if (!result.saveToFile(localPath(path)))
                console.warn("SPlotQML: cannot write " + path);

            root.exportComplete(path);
        };
        grabPicture(save, upsize) || save(null);
    }

    /// Calls back with the same picture, as grabToImage() does, or with null if the plot left its window before it could
    /// be taken. False, and no call, if there can be none.
    function grabPicture(callback, upsize = 1) {
        return capture.take({
            "upsize": upsize,
            "callback": callback
        });
    }

    /// Fits the strip to the zoom, as each gesture does. To be called after zoomRect was set.
    function recalcNavigator() {
        navBar.recalcWidth();
    }

    function localPath(path) {
        const encoded = String(path).replace(/^file:\/\/(\/(?=[A-Za-z]:))?/, "");
        try {
            return encoded === String(path) ? encoded : decodeURIComponent(encoded);
        } catch (error) {
            return encoded; // a path with a bare % sign that somebody put behind "file://"
        }
    }

    implicitWidth: 200
    implicitHeight: 200

    // Where everything goes. A small plot first gives up legend rows, then the navigator, then its margins.
    QtObject {
        id: place

        readonly property real leastChartHeight: 40
        readonly property real above: 12
        readonly property real belowChart: horizontalAxis.visible ? 36 : 12
        readonly property real belowNavigator: 6
        readonly property real below: root.enableLegend ? 12 : 6
        readonly property real left: verticalAxis.visible ? 60 : 12
        readonly property real right: 12
        readonly property real fixedHeight: above + belowChart + belowNavigator + below
        readonly property real room: root.height - fixedHeight - leastChartHeight
        readonly property real navigator: root.enableNavigatorBar && room >= 58 ? 58 : 0
        readonly property real legend: root.enableLegend ? Math.min(legend.implicitHeight, wholeRows(room - navigator)) : 0
        readonly property real shrinkX: Math.max(0, Math.min(root.width / (left + right + 1), 1))
        readonly property real shrinkY: Math.max(0, Math.min(root.height / (fixedHeight + 1), 1))

        function wholeRows(height) {
            const row = 30;
            return Math.max(0, Math.floor(height / row)) * row;
        }

    }

    // What a picture shows: on the screen the two scales make one, in a picture only the inner one counts. Magnifying
    // the picture instead would blur the letters.
    Item {
        id: content

        width: root.width * capture.upsize
        height: root.height * capture.upsize
        scale: 1 / capture.upsize
        transformOrigin: Item.TopLeft

        Item {
            id: parts

            readonly property real vorlixPictureScale: capture.upsize // charts below draw that much larger for it

            width: root.width
            height: root.height
            clip: zoomArea.pressed // the line of the gesture follows the pointer wherever it is
            scale: capture.upsize
            transformOrigin: Item.TopLeft

            ChartArea {
                id: chartArea

                /// Shows the part between two pixels.
                function zoomTo(pixel1, pixel2) {
                    const x1 = Math.min(pixel1, pixel2) / width * zoomRect.width + zoomRect.left;
                    const x2 = Math.max(pixel1, pixel2) / width * zoomRect.width + zoomRect.left;
                    zoomRect = Qt.rect(x1, zoomRect.y, x2 - x1, zoomRect.height);
                }

                onChartRectChanged: firstFit.fit(chartArea)

                anchors {
                    top: parent.top
                    topMargin: place.above * place.shrinkY
                    left: parent.left
                    leftMargin: place.left * place.shrinkX
                    right: parent.right
                    rightMargin: place.right * place.shrinkX
                    bottom: navBar.top
                    bottomMargin: place.belowChart * place.shrinkY
                }

            }

            NavigatorBar.FirstFit {
                id: firstFit

                onIsPendingChanged: navBar.firstRecalc()
            }

            LinearYAxis {
                id: verticalAxis

                anchors.fill: chartArea
                axisTextFunc: Utils.format_event
                opacity: place.shrinkX < 1 ? 0 : 1
                rectArea: chartArea.zoomRect
            }

            LinearXAxis {
                id: horizontalAxis

                axisTextFunc: root.format_time
                opacity: place.shrinkY < 1 ? 0 : 1
                rectArea: chartArea.zoomRect

                anchors {
                    top: chartArea.bottom
                    left: chartArea.left
                    right: chartArea.right
                }

            }

            NavigatorBar {
                id: navBar

                height: place.navigator
                enabled: root.enableNavigatorBar
                mainChartArea: chartArea
                visible: root.enableNavigatorBar

                anchors {
                    left: chartArea.left
                    right: chartArea.right
                    bottom: legend.top
                    bottomMargin: place.belowNavigator * place.shrinkY
                }

            }

            NavigatorBar.RangeLabel {
                axis: horizontalAxis
                bar: navBar
            }

            NavigatorBar.RangeLabel {
                axis: horizontalAxis
                bar: navBar
                isRight: true
            }

            HorizontalLegend {
                id: legend

                height: place.legend
                enabled: root.enableLegend
                plotterList: chartArea.plotter.filter((plotter) => {
                    return plotter.drawLayer === 1;
                })
                visible: root.enableLegend

                anchors {
                    left: parent.left
                    right: parent.right
                    bottom: parent.bottom
                    bottomMargin: place.below * place.shrinkY
                }

            }

            MouseArea {
                id: panArea

                property real oldFrameX: -1

                function pan(delta) {
                    const zoom = chartArea.zoomRect;
                    const chart = chartArea.chartRect;
                    const left = Utils.bound(zoom.left + delta / width * zoom.width, chart.left, chart.right - zoom.width);
                    chartArea.zoomRect = Qt.rect(left, zoom.y, zoom.width, zoom.height);
                }

                acceptedButtons: Qt.MiddleButton | Qt.RightButton
                anchors.fill: chartArea
                cursorShape: pressed ? Qt.ClosedHandCursor : Qt.ArrowCursor
                preventStealing: true
                propagateComposedEvents: true
                onPressed: (mouse) => {
                    oldFrameX = mouse.x;
                }
                onPositionChanged: (mouse) => {
                    const delta = oldFrameX - mouse.x;
                    if (delta === 0)
                        return ;

                    oldFrameX = mouse.x;
                    pan(delta);
                }
            }

            MouseArea {
                id: zoomArea

                property real p1: 0
                property real p2: 0
                property point start

                anchors.fill: chartArea
                hoverEnabled: true
                preventStealing: true
                onPressed: (mouse) => {
                    p1 = p2 = mouse.x;
                    start = Qt.point(mouse.x, mouse.y);
                }
                onPositionChanged: (mouse) => {
                    if (pressed)
                        p2 = Utils.bound(mouse.x, 0, width);

                }
                onReleased: (mouse) => {
                    if (mouse.y < start.y)
                        chartArea.resetZoomView();
                    else
                        chartArea.zoomTo(p1, p2);
                    navBar.recalcWidth();
                }

                Item {
                    id: rubberBand

                    anchors.fill: parent
                    visible: zoomArea.pressed

                    Rectangle {
                        x: Math.min(zoomArea.p1, zoomArea.p2)
                        width: Math.abs(zoomArea.p1 - zoomArea.p2)
                        height: parent.height
                        color: "#4d4dc2e6"
                    }

                    Rectangle {
                        x: zoomArea.start.x - width / 2
                        y: zoomArea.start.y - height / 2
                        width: 20
                        height: 20
                        border.color: "red"
                        border.width: 4
                        color: "transparent"
                    }

                    Rectangle {
                        readonly property real dx: zoomArea.mouseX - zoomArea.start.x
                        readonly property real dy: zoomArea.mouseY - zoomArea.start.y

                        x: zoomArea.start.x
                        y: zoomArea.start.y - height / 2
                        width: Math.sqrt(dx * dx + dy * dy)
                        height: 4
                        antialiasing: true
                        color: "red"
                        rotation: Math.atan2(dy, dx) * 180 / Math.PI
                        transformOrigin: Item.Left
                    }

                    Text {
                        // Above the pointer, but never outside the plot.
                        readonly property real mostX: root.width - zoomArea.x - width
                        readonly property real mostY: root.height - zoomArea.y - height

                        x: Utils.bound(zoomArea.mouseX - width / 2, -zoomArea.x, mostX)
                        y: Utils.bound(zoomArea.mouseY - height, -zoomArea.y, mostY)
                        color: Material.foreground
                        style: Text.Outline
                        styleColor: Material.background
                        text: zoomArea.mouseY < zoomArea.start.y ? "Zoom Fit" : "Zoom In"
                    }

                }

            }

        }

    }

    ShaderEffectSource {
        id: capture

        property real upsize: 1
        /// What is to be taken, the first one right now: each has a size of its own, and there is one capture.
        property var pictures: []

        function take(picture) {
            if (pictures.push(picture) > 1 || begin())
                return true;

            goOn();
            return false;
        }

        function begin() {
            const picture = pictures[0];
            const size = Qt.size(Math.round(root.width * picture.upsize), Math.round(root.height * picture.upsize));
            if (!(size.width > 0 && size.height > 0))
                return false;

            upsize = picture.upsize;
            scheduleUpdate();
            navBar.drawAgain();
            return grabToImage((result) => {
                if (picture === pictures[0])
                    goOn().callback(result);

            }, size);
        }

        /// Takes the first one off the list and begins the next. Returns the first one.
        function goOn() {
            upsize = 1;
            const done = pictures.shift();
            if (pictures.length > 0 && !begin())
                goOn().callback(null);

            return done;
        }

        // The window that was to draw it may never do so.
        Window.onWindowChanged: {
            if (pictures.length > 0)
                goOn().callback(null);

        }
        width: root.width
        height: root.height
        live: false
        samples: 18
        sourceItem: content
        textureSize: Qt.size(content.width, content.height)
        visible: false

        Rectangle {
            z: -0.5
            anchors.fill: parent
            color: Material.background
        }

    }

}
