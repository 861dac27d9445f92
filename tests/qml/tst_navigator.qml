// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

Item {
    width: 600
    height: 400

    Component {
        id: sceneComponent

        PlotScene {
        }
    }

    Component {
        id: bareComponent

        NavigatorBar {
            width: 300
            height: 58
        }
    }

    Component {
        id: earlyComponent

        SPlotQML {
            id: early

            width: 400
            height: 300
            Component.onCompleted: refChartArea.zoomRect = Qt.rect(500, 0, 3, 1)

            BarPlotter {
                chartArea: early.refChartArea
                data: [1, 2, 3]
                plotterArea: Qt.rect(0, 0, 1000, 0)
            }

            BarPlotter {
                chartArea: early.refNavigator
                data: [1, 2, 3]
                plotterArea: Qt.rect(0, 0, 1000, 0)
            }
        }
    }

    Component {
        id: stripFirstComponent

        SPlotQML {
            id: stripFirst

            property alias bars: late

            width: 400
            height: 300

            BarPlotter {
                id: late

                chartArea: stripFirst.refChartArea
            }

            BarPlotter {
                chartArea: stripFirst.refNavigator
                data: [1, 2, 3]
                plotterArea: Qt.rect(0, 0, 1000, 0)
            }
        }
    }

    MouseArea {
        id: wheelArea

        anchors.fill: parent
        onWheel: (wheel) => wheel.accepted = true
    }

    PlotCase {
        property PlotScene scene
        property ChartArea chart
        property ChartArea strip
        property NavigatorBar bar

        name: "navigator"

        function init() {
            scene = createTemporaryObject(sceneComponent, parent);
            chart = scene.chart;
            strip = scene.strip;
            bar = strip.parent;
            tryVerify(() => chart.zoomRect.width === 1000 && strip.zoomRect.width === 1000);
            settle();
        }

        function show(left, width) {
            chart.zoomRect = Qt.rect(left, 0, width, 10);
            settle();
        }

        /// Pixels of the strip to pixels of the scene.
        function at(x, y = 20) {
            return strip.mapToItem(scene, x, y);
        }

        function press(x, y) {
            const place = at(x, y);
            mouseMove(scene, place.x, place.y);
            mousePress(scene, place.x, place.y);
        }

        function moveTo(x, y) {
            mouseMove(scene, at(x, y).x, at(x, y).y, 0, Qt.LeftButton);
        }

        function release(x, y) {
            mouseRelease(scene, at(x, y).x, at(x, y).y);
        }

        function drag(from, to, y) {
            press(from, y);
            for (let i = 1; i <= 5; ++i)
                moveTo(from + (to - from) * i / 5, y);
            release(to, y);
            settle();
        }

        function compareView(area, left, width, what) {
            verify(Math.abs(area.zoomRect.x - left) < 1e-6 && Math.abs(area.zoomRect.width - width) < 1e-6, (what
                || "") + area.zoomRect + " instead of " + left + " + " + width);
        }

        function pixels(units) {
            return units / strip.zoomRect.width * strip.width;
        }

        function band() {
            const found = rectanglesIn(bar, (item) => item.color == "#4d4dc2e6");
            compare(found.length, 1);
            return found[0];
        }

        function thumb() {
            const found = rectanglesIn(bar, (item) => item.z === 1000);
            return found.length === 1 ? found[0] : null;
        }

        function track() {
            const found = rectanglesIn(bar, (item) => item.z === 900);
            return found.length === 1 ? found[0] : null;
        }

        /// Zooms in so far that the strip zooms in too: 20 units from `left`, 75 pixels of the strip.
        function zoomIn(left) {
            show(left, 20);
            bar.recalcWidth();
            settle();
            compare(Math.round(band().width), 75);
        }

        // what is there

        function test_theStripIsAChartAreaOfItsOwn() {
            compare(bar.mainChartArea, chart);
            compare(bar.navChart, strip);
            compare(strip.adaptChartHeight, false);
            compare(strip.minWidth, 75);
            compareRect(rectIn(strip, bar), Qt.rect(0, 0, bar.width, bar.height), "strip");
            compare(bar.clip, true);
            compare(bar.flickRatio, bar.width / 1000);
        }

        function test_thinLinesAboveAndBelow() {
            const lines = rectanglesIn(bar, (item) => item.height === 1 && item.width === bar.width);
            compare(lines.map((line) => rectIn(line, bar).y), [0, 57]);
            for (const line of lines)
                compare(line.color, "#e0e0e0");
        }

        function test_aBarOfItsOwnNeedsNoMainChart() {
            const bare = createTemporaryObject(bareComponent, parent);
            bare.recalcWidth();
            mouseClick(bare, 100, 20);
            mouseWheel(bare, 100, 20, 0, 120);
            bare.mainChartArea = chart;
            compare(bare.navChart.plotter.length, 0);
            compare(bare.flickRatio, 0.3);
            compareRect(bare.navChart.zoomRect, Qt.rect(0, 0, 1, 1), "zoom");
        }

        // band

        function test_theBandShowsTheMainZoom() {
            compareRect(rectIn(band(), bar), Qt.rect(0, 0, bar.width, bar.height), "all");
            show(250, 500);
            compareRect(rectIn(band(), bar), Qt.rect(bar.width / 4, 0, bar.width / 2, bar.height), "half");
        }

        function test_theBandStaysNearTheStrip() {
            zoomIn(500);
            chart.zoomRect = Qt.rect(0, 0, 20, 10);
            settle();
            compare(rectIn(band(), bar).x, -100);
            verify(band().width >= 0);
            chart.zoomRect = Qt.rect(980, 0, 20, 10);
            settle();
            compare(rectIn(band(), bar).x, bar.width + 100);
            verify(band().width >= 0 && band().width <= bar.width);
        }

        // recalcWidth

        function test_recalcWidthResetsTheStripForAWideZoom() {
            strip.zoomRect = Qt.rect(300, 0, 100, 10);
            show(200, 75 / bar.width * 1000 * 1.001);
            bar.recalcWidth();
            compareView(strip, 0, 1000);
        }

        function test_recalcWidthZoomsTheStripAroundANarrowZoom() {
            show(600, 75 / bar.width * 1000 * 0.5);
            bar.recalcWidth();
            const w = chart.zoomRect.width * bar.width / 75;
            compareView(strip, 600 + chart.zoomRect.width / 2 - w / 2, w);
        }

        function test_recalcWidthLeavesTheStripWhereItShowsTheZoom() {
            zoomIn(500);
            const left = strip.zoomRect.left;
            chart.zoomRect = Qt.rect(left + 5, 0, 20, 10);
            bar.recalcWidth();
            compareView(strip, left, 20 * bar.width / 75);
            chart.zoomRect = Qt.rect(left - 19, 0, 20, 10); // one unit of it is in view
            bar.recalcWidth();
            compareView(strip, left, 20 * bar.width / 75);
        }

        function test_recalcWidthStaysInTheChart() {
            show(500, 20);
            bar.recalcWidth();
            show(0, 20);
            bar.recalcWidth();
            compareView(strip, 0, 20 * bar.width / 75);
            show(500, 20);
            bar.recalcWidth();
            show(980, 20);
            bar.recalcWidth();
            compareView(strip, 1000 - 20 * bar.width / 75, 20 * bar.width / 75);
        }

        function test_minWidthCanBeChosen() {
            strip.minWidth = 200;
            show(500, 100);
            bar.recalcWidth();
            fuzzyCompare(band().width, 200, 1e-6);
        }

        function test_recalcWidthIgnoresAZoomOfNoWidth_data() {
            return [{ tag: "0", width: 0 }, { tag: "negative", width: -5 }, { tag: "NaN", width: NaN },
                { tag: "infinite", width: Infinity }];
        }

        function test_recalcWidthIgnoresAZoomOfNoWidth(row) {
            zoomIn(500);
            const before = strip.zoomRect;
            scene.plot.updateIntervalMs = 100000;
            chart.zoomRect = Qt.rect(500, 0, 21, 10); // restarts the interval
            chart.zoomRect = Qt.rect(500, 0, row.width, 10);
            bar.recalcWidth();
            compare(strip.zoomRect, before);
            verify(isFinite(band().x) && band().width >= 0);
            scene.plot.updateIntervalMs = 0;
            chart.zoomRect = Qt.rect(500, 0, 100, 10);
            settle();
            compareView(chart, 500, 100);
        }

        function test_aNewWidthOfTheBarIsTakenIntoAccount() {
            show(500, 200);
            bar.recalcWidth();
            compareView(strip, 0, 1000);
            scene.width = 300; // 200 units are 46 pixels now
            settle();
            compareView(strip, 0, 200 * bar.width / 75); // and lie in it already
            scene.width = 1400;
            settle();
            compareView(strip, 0, 1000);
        }

        // dragging and stretching

        function test_draggingCentresTheMainZoom() {
            show(100, 200);
            const px = Math.round(pixels(600));
            drag(pixels(200), px);
            compareView(chart, px / bar.width * 1000 - 100, 200);
            fuzzyCompare(chart.zoomRect.height, (Math.ceil(chart.zoomRect.right) - 1) / 10 * 1.05, 0.11);
        }

        function test_draggingStopsAtTheEdges() {
            show(100, 200);
            drag(pixels(200), bar.width + 80);
            compareView(chart, 800, 200);
            drag(pixels(900), -80);
            compareView(chart, 0, 200);
        }

        function test_aPressAloneMovesNothing() {
            show(100, 200);
            press(pixels(600));
            settle();
            compareView(chart, 100, 200);
            release(pixels(600));
            settle();
            compareView(chart, 100, 200);
        }

        function test_stretchingTheLeftEdge_data() {
            return [{ tag: "on it", off: 0 }, { tag: "9 pixels left", off: -9 }, { tag: "9 pixels right", off: 9 }];
        }

        function test_stretchingTheLeftEdge(row) {
            show(500, 250);
            drag(Math.round(pixels(500)) + row.off, pixels(250));
            compareView(chart, 250, 500);
        }

        function test_stretchingTheRightEdge_data() {
            return [{ tag: "on it", off: 0 }, { tag: "9 pixels left", off: -9 }, { tag: "9 pixels right", off: 9 }];
        }

        function test_stretchingTheRightEdge(row) {
            show(250, 250);
            drag(Math.round(pixels(500)) + row.off, pixels(750));
            compareView(chart, 250, 500);
        }

        function test_beyondTheToleranceItIsADrag() {
            show(500, 250);
            drag(Math.round(pixels(500)) + 12, pixels(500));
            compareView(chart, 375, 250);
        }

        function test_theLeftEdgeWinsWhereBothAreNear() {
            strip.minWidth = 5;
            show(500, 500 / bar.width * 20);
            press(Math.round(pixels(500)) + 8);
            moveTo(pixels(250));
            compareView(chart, 250, 250 + 500 / bar.width * 20);
            release(pixels(250));
        }

        function test_stretchingSetsYToZero() {
            chart.adaptChartHeight = false;
            chart.zoomRect = Qt.rect(500, 20, 250, 30);
            scene.plot.updateIntervalMs = 100000; // what is set stays as set
            chart.zoomRect = Qt.rect(500, 21, 250, 30);
            press(pixels(500));
            moveTo(pixels(250));
            compareRect(chart.zoomRect, Qt.rect(250, 0, 500, chart.zoomRect.height), "stretched");
            release(pixels(250));
        }

        function test_draggingKeepsY() {
            chart.adaptChartHeight = false;
            scene.plot.updateIntervalMs = 100000;
            chart.zoomRect = Qt.rect(500, 20, 250, 30);
            chart.zoomRect = Qt.rect(500, 21, 250, 30);
            press(pixels(625));
            moveTo(pixels(375));
            compare(chart.zoomRect, Qt.rect(250, 21, 250, 30));
            release(pixels(375));
        }

        function test_stretchingPastTheOppositeEdgeRecovers_data() {
            return [{ tag: "left", from: 500, to: 900 }, { tag: "right", from: 750, to: 100 }];
        }

        function test_stretchingPastTheOppositeEdgeRecovers(row) {
            for (const interval of [0, 25, 100000]) {
                scene.plot.updateIntervalMs = 0;
                show(500, 250);
                scene.plot.updateIntervalMs = interval;
                drag(Math.round(pixels(row.from)), pixels(row.to));
                drag(bar.width - 20, 30);
                scene.plot.updateIntervalMs = 0;
                chart.resetZoomView();
                settle();
                compareView(chart, 0, 1000, "after " + interval + ": ");
            }
        }

        function test_theStripIsFittedAfterTheGestureNotDuringIt() {
            show(500, 250);
            press(pixels(750));
            const end = Math.round(pixels(520));
            const width = end / bar.width * 1000 - 500;
            moveTo(end);
            compareView(strip, 0, 1000);
            release(end);
            settle();
            compareView(chart, 500, width);
            compareView(strip, 500 + width / 2 - width * bar.width / 150, width * bar.width / 75);
        }

        function test_theLastStateOfAFastDragIsDrawn() {
            const values = scene.ramp(10).fill(1);
            values.fill(100, 500, 600);
            scene.bars.data = values;
            show(300, 200);
            scene.plot.updateIntervalMs = 1500;
            wait(1600);
            press(pixels(400));
            moveTo(pixels(500)); // accepted
            settle();
            fuzzyCompare(chart.zoomRect.x, 400, 1000 / bar.width);
            moveTo(pixels(550)); // dropped
            release(pixels(550));
            wait(1700);
            settle();
            fuzzyCompare(chart.zoomRect.x, 450, 1000 / bar.width);
            const place = chart.mapToItem(scene, chart.width * 0.3, chart.height * 0.3);
            compare(grabImage(scene).pixel(place.x, place.y), "#2040c0");
        }

        // thumb, track and wheel

        function test_theThumbIsHiddenWhileAllIsShown() {
            compare(thumb(), null);
            compare(track(), null);
            zoomIn(500);
            verify(thumb() && track());
            show(0, 1000);
            bar.recalcWidth();
            compare(thumb(), null);
            compare(track(), null);
        }

        function test_theThumbHidesFromThePermilleOn() {
            strip.zoomRect = Qt.rect(0, 0, 998, 10);
            settle();
            verify(thumb());
            strip.zoomRect = Qt.rect(0, 0, 999.5, 10);
            settle();
            compare(thumb(), null);
        }

        function test_theThumbShowsWhatTheStripShows() {
            for (const [left, width] of [[0, 500], [500, 500], [100, 200], [300, 600]]) {
                strip.zoomRect = Qt.rect(left, 0, width, 10);
                settle();
                const w = bar.width * width / 1000;
                compareRect(rectIn(thumb(), bar), Qt.rect(left / (1000 - width) * (bar.width - w), 52, w, 6),
                    left + " + " + width);
            }
            compare(thumb().radius, 3);
            compare(thumb().color, scene.Material.primary);
            compareRect(rectIn(track(), bar), Qt.rect(0, 52, bar.width, 6), "track");
            compare(track().radius, 3);
            compare(track().color, "#80bdbdbd");
        }

        function test_theThumbIsNeverTooSmallToTake() {
            strip.zoomRect = Qt.rect(990, 0, 10, 10);
            settle();
            compareRect(rectIn(thumb(), bar), Qt.rect(bar.width - 40, 52, 40, 6), "at the end");
        }

        function scrolledTo(pixel) {
            // The formula: the pointer less half a thumb, as a part of the bar, taken as a part of the chart.
            const x = (pixel - thumb().width / 2) / bar.width * 1000;
            return Math.min(Math.max(x, 0), 1000 - strip.zoomRect.width);
        }

        function test_aClickOnTheTrackScrolls() {
            strip.zoomRect = Qt.rect(0, 0, 200, 10);
            settle();
            for (const pixel of [400, 200, bar.width - 2]) {
                const expected = scrolledTo(pixel);
                press(pixel, 55);
                release(pixel, 55);
                settle();
                compareView(strip, expected, 200);
            }
        }

        function test_draggingTheThumbScrolls() {
            strip.zoomRect = Qt.rect(0, 0, 200, 10);
            settle();
            const expected = scrolledTo(250);
            drag(50, 250, 55);
            compareView(strip, expected, 200);
            drag(rectIn(thumb(), bar).x + 20, bar.width + 200, 55);
            compareView(strip, 800, 200);
            drag(rectIn(thumb(), bar).x + 20, -200, 55);
            compareView(strip, 0, 200);
            compareView(chart, 0, 1000);
        }

        function test_theWheelScrolls() {
            strip.zoomRect = Qt.rect(400, 0, 200, 10);
            settle();
            const notch = 120 / bar.width * 200;
            mouseWheel(bar, 200, 20, 0, 120);
            settle();
            compareView(strip, 400 + notch, 200);
            mouseWheel(bar, 200, 20, 0, -240);
            settle();
            compareView(strip, 400 - notch, 200);
            mouseWheel(bar, 200, 55, 0, 120); // on the scroll bar too
            settle();
            compareView(strip, 400, 200);
        }

        function test_theWheelStopsAtTheEdges() {
            strip.zoomRect = Qt.rect(400, 0, 200, 10);
            for (let i = 0; i < 12; ++i)
                mouseWheel(bar, 200, 20, 0, 240);
            settle();
            compareView(strip, 800, 200);
            for (let i = 0; i < 24; ++i)
                mouseWheel(bar, 200, 20, 0, -240);
            settle();
            compareView(strip, 0, 200);
        }

        function test_theWheelDoesNothingWhileAllIsShown() {
            mouseWheel(bar, 200, 20, 0, 120);
            mouseWheel(bar, 200, 20, 0, -120);
            settle();
            compareView(strip, 0, 1000);
            compareView(chart, 0, 1000);
        }

        function test_aWheelThatDoesNothingIsForOthers() {
            let turns = 0;
            wheelArea.wheel.connect(() => ++turns);
            mouseWheel(bar, 200, 20, 0, 120);
            compare(turns, 1);
            zoomIn(500);
            mouseWheel(bar, 200, 20, 0, 120);
            compare(turns, 1);
        }

        function test_theLastStateOfAFastScrollIsDrawn() {
            strip.zoomRect = Qt.rect(0, 0, 200, 10);
            settle();
            strip.updateIntervalMs = 1500;
            wait(1600);
            mouseWheel(bar, 200, 20, 0, 120);
            settle();
            const first = grabImage(bar);
            mouseWheel(bar, 200, 20, 0, 1200); // dropped
            wait(1700);
            settle();
            const second = grabImage(bar);
            // The ramp is higher where the strip is now: above its old end there is a bar.
            const x = bar.width - 4;
            const y = 58 - 58 * strip.zoomRect.right / 1049 + 2;
            verify(!Qt.colorEqual(first.pixel(x, y), second.pixel(x, y)));
        }

        function test_aStripZoomChosenBeforeTheDataIsKept() {
            const early = createTemporaryObject(earlyComponent, parent);
            early.refNavigator.zoomRect = Qt.rect(200, 0, 300, 1);
            settle();
            compareView(early.refNavigator, 200, 300);
        }

        function test_aNarrowZoomChosenBeforeTheDataCanBeTaken() {
            const early = createTemporaryObject(earlyComponent, parent);
            settle();
            compareView(early.refChartArea, 500, 3);
            fuzzyCompare(early.refNavigator.zoomRect.width, 3 * early.refNavigator.width / 75, 1e-6);
            verify(early.refNavigator.zoomRect.left < 500 && early.refNavigator.zoomRect.right > 503);
        }

        function test_aNarrowZoomChosenWhileTheStripIsAlreadyThere() {
            const early = createTemporaryObject(stripFirstComponent, parent);
            tryVerify(() => early.refNavigator.zoomRect.width === 1000);
            early.updateIntervalMs = 100000; // the zoom is not cut before the data are there
            early.refChartArea.zoomRect = Qt.rect(500, 0, 3, 1);
            early.bars.plotterArea = Qt.rect(0, 0, 1000, 0);
            early.bars.data = [1, 2, 3];
            early.refChartArea.update();
            settle();
            compareView(early.refChartArea, 500, 3);
            fuzzyCompare(early.refNavigator.zoomRect.width, 3 * early.refNavigator.width / 75, 1e-6);
        }

        function test_scrollingLeavesTheMainZoom() {
            zoomIn(500);
            mouseWheel(bar, 200, 20, 0, 1200);
            settle();
            compareView(chart, 500, 20);
        }

        function test_noFrameWithoutAChange() {
            let before = -1;
            for (let i = 0; i < 10 && before !== tools.frames(); ++i) { // what is due may be late
                before = tools.frames();
                wait(500);
            }
            compare(tools.frames(), before);
        }
    }
}
