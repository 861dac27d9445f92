// SPDX-License-Identifier: MIT
import QtQuick 2.15
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

    PlotCase {
        id: testCase

        property PlotScene scene
        property ChartArea chart

        name: "zoom"

        function init() {
            scene = createTemporaryObject(sceneComponent, parent);
            chart = scene.chart;
            tryVerify(() => chart.zoomRect.width === 1000 && scene.strip.zoomRect.width === 1000);
            settle();
        }

        function show(left, width) {
            chart.zoomRect = Qt.rect(left, 0, width, 10);
            settle();
        }

        /// Pixels of the chart to pixels of the scene.
        function at(x, y) {
            return chart.mapToItem(scene, x, y);
        }

        function drag(from, to, button = Qt.LeftButton) {
            press(from, button);
            moveAndRelease(from, to, button);
        }

        function press(from, button = Qt.LeftButton) {
            mousePress(scene, from.x, from.y, button);
        }

        function move(from, to, button = Qt.LeftButton) {
            for (let i = 1; i <= 5; ++i)
                mouseMove(scene, from.x + (to.x - from.x) * i / 5, from.y + (to.y - from.y) * i / 5, 2, button);
        }

        function release(at, button = Qt.LeftButton) {
            mouseRelease(scene, at.x, at.y, button);
        }

        function moveAndRelease(from, to, button = Qt.LeftButton) {
            move(from, to, button);
            release(to, button);
        }

        function compareView(left, width) {
            const slack = 1e-6;
            settle();
            tryVerify(() => Math.abs(chart.zoomRect.x - left) <= slack && Math.abs(chart.zoomRect.width - width) <= slack,
                "not " + left + " + " + width);
        }

        // first sight

        function test_firstSightIsTheWholeChart() {
            compareView(0, 1000);
            compare(scene.strip.zoomRect.x, 0);
            compare(scene.strip.zoomRect.width, 1000);
        }

        function test_aZoomChosenBeforeTheDataIsKept() {
            const early = createTemporaryObject(earlyComponent, parent);
            settle();
            compare(early.refChartArea.zoomRect.x, 20);
            compare(early.refChartArea.zoomRect.width, 30);
        }

        function test_theFirstFitHappensOnce() {
            scene.bars.plotterArea = Qt.rect(0, 0, 5000, 0);
            settle();
            compareView(0, 1000);
            chart.zoomRect = Qt.rect(0, 0, 1, 1);
            scene.bars.plotterArea = Qt.rect(0, 0, 500, 0);
            settle();
            compareView(0, 1);
        }

        function test_dataThatComeLateAreFitted_data() {
            return [
                { tag: "from 0", area: Qt.rect(0, 0, 300, 5) },
                { tag: "beside the initial zoom", area: Qt.rect(100, 0, 300, 5) },
                { tag: "cutting the initial zoom", area: Qt.rect(0.25, 0, 300, 5) },
                { tag: "around it", area: Qt.rect(-50, 0, 300, 5) },
                { tag: "inside it", area: Qt.rect(0.25, 0, 0.5, 5) }
            ];
        }

        function test_dataThatComeLateAreFitted(row) {
            const late = createTemporaryObject(emptyComponent, parent);
            settle();
            compare(late.refChartArea.zoomRect.width, 1);
            late.bars.plotterArea = row.area;
            late.bars.data = [1, 2, 3];
            settle();
            compare(late.refChartArea.chartRect.x, row.area.x);
            compare(late.refChartArea.zoomRect.x, row.area.x);
            compare(late.refChartArea.zoomRect.width, row.area.width);
        }

        function test_dataThatComeWhileRequestsAreDroppedAreFitted_data() {
            return test_dataThatComeLateAreFitted_data();
        }

        function test_dataThatComeWhileRequestsAreDroppedAreFitted(row) {
            const late = createTemporaryObject(emptyComponent, parent);
            settle();
            late.updateIntervalMs = 100000;
            late.bars.plotterArea = row.area;
            late.bars.data = [1, 2, 3];
            compare(late.refChartArea.zoomRect.width, 1);
            late.refChartArea.update(); // whatever asks for the next frame
            settle();
            late.refChartArea.update();
            settle();
            compare(late.refChartArea.zoomRect.x, row.area.x);
            compare(late.refChartArea.zoomRect.width, row.area.width);
        }

        Component {
            id: emptyComponent

            SPlotQML {
                property BarPlotter bars: BarPlotter {
                }

                width: 300
                height: 300
                Component.onCompleted: refChartArea.addPlotter(bars)
            }
        }

        Component {
            id: earlyComponent

            SPlotQML {
                id: earlyPlot

                width: 300
                height: 300
                Component.onCompleted: refChartArea.zoomRect = Qt.rect(20, 0, 30, 1)

                BarPlotter {
                    chartArea: earlyPlot.refChartArea
                    data: [1, 2, 3]
                    plotterArea: Qt.rect(0, 0, 100, 0)
                }
            }
        }

        // zoom with the left button

        function test_aDragDownZoomsToItsBand() {
            drag(at(chart.width * 0.25, 50), at(chart.width * 0.5, 80));
            compareView(250, 250);
            drag(at(chart.width * 0.5, 50), at(chart.width * 0.75, 50)); // neither up nor down
            compareView(375, 62.5);
        }

        function test_aDragToTheLeftZoomsToo() {
            drag(at(chart.width * 0.75, 50), at(chart.width * 0.5, 80));
            compareView(500, 250);
        }

        function test_theBandEndsAtTheChartsEdges() {
            drag(at(chart.width * 0.5, 50), at(chart.width + 100, 80));
            compareView(500, 500);
            drag(at(chart.width * 0.5, 50), at(-50, 80));
            compareView(500, 250);
        }

        function test_theZoomKeepsTheHeightRule() {
            drag(at(chart.width * 0.25, 50), at(chart.width * 0.5, 80));
            settle();
            compare(chart.zoomRect.y, 0);
            fuzzyCompare(chart.zoomRect.height, 49.9 * 1.05, 1e-4); // the largest visible value and its headroom
        }

        function test_aDragUpResetsWhateverTheBand_data() {
            return [{ tag: "straight", dx: 0 }, { tag: "wide", dx: 200 }, { tag: "to the left", dx: -100 }];
        }

        function test_aDragUpResetsWhateverTheBand(row) {
            show(400, 100);
            drag(at(200, 150), at(200 + row.dx, 149));
            compareView(0, 1000);
        }

        function zoomIn() {
            drag(at(200, 50), at(210, 80));
            settle();
            tryVerify(() => scene.strip.zoomRect.width < 200);
        }

        function test_aClickShowsTheWholeChart() {
            zoomIn();
            mouseClick(scene, at(200, 100).x, at(200, 100).y);
            compareView(0, 1000);
            tryVerify(() => scene.strip.zoomRect.width === 1000);
        }

        function test_aClickWhoseRequestIsDroppedShowsTheWholeChartToo() {
            zoomIn();
            scene.plot.updateIntervalMs = 100000;
            chart.zoomRect = Qt.rect(400, 0, 31, 10);
            mouseClick(scene, at(200, 100).x, at(200, 100).y);
            compare(chart.zoomRect.width, 0);
            tryVerify(() => scene.strip.zoomRect.width < 200);
            compare(textsIn(scene.plot.xAxis).length, 0);
            chart.update(); // as the timer will after the interval
            compareView(0, 1000);
            tryVerify(() => scene.strip.zoomRect.width === 1000);
        }

        function test_otherButtonsDoNotZoom() {
            drag(at(100, 50), at(200, 80), Qt.RightButton);
            compareView(0, 1000);
        }

        function test_theStripFollowsTheZoom() {
            drag(at(chart.width * 0.5, 50), at(chart.width * 0.5 + 33, 80));
            compareView(500, 62.5);
            const bar = scene.strip.width;
            fuzzyCompare(scene.strip.zoomRect.width, 62.5 * bar / 75, 1e-6);
            drag(at(100, 50), at(100, 40));
            settle();
            compare(scene.strip.zoomRect.width, 1000);
        }

        function test_theStripFollowsAZoomFromOutside() {
            const strip = scene.strip;
            const bandWidth = () => rectanglesIn(strip.parent, (item) => item.color == "#4d4dc2e6")[0].width;
            chart.zoomRect = Qt.rect(500, 0, 2, 10);
            settle();
            verify(bandWidth() < 2, "before: " + bandWidth());
            scene.plot.recalcNavigator();
            settle();
            fuzzyCompare(bandWidth(), 75, 1e-6);
            verify(strip.zoomRect.left <= 500 && strip.zoomRect.right >= 502, "the strip shows " + strip.zoomRect);
            chart.resetZoomView();
            scene.plot.recalcNavigator();
            compareView(0, 1000);
            compare(strip.zoomRect.width, 1000);
        }

        function test_theMousePositionIsOffered() {
            const area = scene.plot.refChartMouse;
            mouseMove(scene, at(123, 45).x, at(123, 45).y);
            compare(area.mouseX, 123);
            compare(area.mouseY, 45);
            verify(area.containsMouse);
        }

        // what is shown while pressed

        function overlay(wanted) {
            return rectanglesIn(scene.plot, wanted);
        }

        function test_thePressedButtonShowsWhatItWillDo() {
            const from = at(150, 100);
            const to = at(250, 160);
            const band = (item) => item.color == "#4d4dc2e6" && item.height === chart.height;
            const square = (item) => item.border.color == "#ff0000" && item.border.width === 4;
            compare(overlay(square).length, 0);
            press(from);
            move(from, to);
            const shownBand = overlay(band);
            compare(shownBand.length, 1);
            compareRect(rectIn(shownBand[0], chart), Qt.rect(150, 0, 100, chart.height), "band");
            const shownSquare = overlay(square);
            compare(shownSquare.length, 1);
            compareRect(rectIn(shownSquare[0], chart), Qt.rect(140, 90, 20, 20), "square");
            const text = textReading(scene.plot, "Zoom In");
            const place = rectIn(text, chart);
            fuzzyCompare(place.x + place.width / 2, 250, 0.51);
            fuzzyCompare(place.bottom, 160, 1);
            const picture = grabImage(scene);
            const middle = at(200, 130);
            compare(picture.pixel(middle.x, middle.y), "#ff0000"); // on the line
            move(to, at(100, 60));
            textReading(scene.plot, "Zoom Fit");
            compareRect(rectIn(overlay(band)[0], chart), Qt.rect(100, 0, 50, chart.height), "band to the left");
            release(at(100, 60));
            compare(overlay(square).length, 0);
            compare(overlay(band).length, 0);
        }

        function test_theTextStaysInThePlot() {
            press(at(150, 100));
            for (const far of [at(-500, -500), at(2000, 2000), at(300, -500), at(-500, 200)]) {
                move(at(150, 100), far);
                const place = textsIn(scene.plot).filter((text) => /^Zoom/.test(text.text)).map((text) => rectIn(text,
                    scene));
                compare(place.length, 1);
                verify(place[0].left >= 0 && place[0].top >= 0 && place[0].right <= 600 && place[0].bottom <= 400,
                    "at " + place[0]);
            }
            release(at(150, 50));
        }

        /// Whether a pixel is of the red of the line, or has something of it at the line's edge.
        function isRed(color) {
            return color.r > 0.6 && color.g < 0.6 && color.b < 0.6;
        }

        function test_theLineStaysInThePlot_data() {
            return [[500, 420], [-300, 150], [300, -300], [300, 1000], [2000, -700]].map((far) => ({ tag: far.join(), far:
                Qt.point(far[0], far[1]) }));
        }

        function test_theLineStaysInThePlot(row) {
            scene.plot.anchors.margins = 90;
            settle();
            const from = at(150, 50);
            press(from);
            move(from, row.far);
            settle();
            const picture = grabImage(scene);
            const plot = rectIn(scene.plot, scene);
            let inside = 0;
            for (let x = 0; x < 600; ++x) {
                for (let y = 0; y < 400; ++y) {
                    if (!isRed(picture.pixel(x, y)))
                        continue;

                    expect(x >= plot.left && x < plot.right && y >= plot.top && y < plot.bottom, () => "red at " + x + ", "
                        + y + ", the plot is " + plot);
                    ++inside;
                }
            }
            verify(inside > 100, inside + " red pixels");
            const text = textsIn(scene.plot).filter((text) => /^Zoom/.test(text.text));
            const place = rectIn(text[0], scene);
            verify(place.left >= plot.left && place.right <= plot.right && place.top >= plot.top && place.bottom
                <= plot.bottom, "text at " + place);
            release(at(150, 40));
        }

        // pan

        function test_panFollowsThePointer_data() {
            return [{ tag: "middle", button: Qt.MiddleButton }, { tag: "right", button: Qt.RightButton }];
        }

        function test_panFollowsThePointer(row) {
            show(400, 100);
            drag(at(chart.width * 0.5, 50), at(chart.width * 0.25, 90), row.button);
            compareView(425, 100);
            drag(at(chart.width * 0.25, 50), at(chart.width * 0.5, 50), row.button);
            compareView(400, 100);
        }

        function test_panStopsAtTheChartsEdges() {
            show(400, 100);
            for (let i = 0; i < 6; ++i)
                drag(at(10, 50), at(chart.width - 10, 50), Qt.RightButton);
            compareView(0, 100);
            for (let i = 0; i < 12; ++i)
                drag(at(chart.width - 10, 50), at(10, 50), Qt.RightButton);
            compareView(900, 100);
        }

        function test_panOfTheWholeChartDoesNothing() {
            drag(at(300, 50), at(100, 50), Qt.RightButton);
            compareView(0, 1000);
        }

        function test_aPanThatOnlyGoesUpChangesNothing() {
            show(400, 100);
            drag(at(100, 150), at(100, 50), Qt.RightButton);
            compareView(400, 100);
        }

        function test_theFirstPanDoesNotJump() {
            show(400, 100);
            press(at(300, 50), Qt.RightButton);
            compareView(400, 100);
            mouseMove(scene, at(301, 50).x, at(301, 50).y, 0, Qt.RightButton);
            release(at(301, 50), Qt.RightButton);
            compareView(400 - 100 / chart.width, 100);
        }

        // frames

        /// Where the chart's picture changes from ground to bar in a row of pixels, from the left.
        function firstBarPixel(picture, y) {
            const origin = at(0, 0);
            for (let x = 0; x < chart.width; ++x) {
                if (Qt.colorEqual(picture.pixel(origin.x + x, y), "#2040c0"))
                    return x;
            }
            return -1;
        }

        function test_theLastStateOfAFastPanIsDrawn() {
            // One bar is higher than the others: its left edge tells where the picture is.
            const values = scene.ramp(10).fill(1);
            values.fill(100, 500, 600);
            scene.bars.data = values;
            show(450, 200);
            const y = at(0, chart.height / 2).y;
            compare(firstBarPixel(grabImage(scene), y), Math.round(50 / 200 * chart.width));
            scene.plot.updateIntervalMs = 1500;
            wait(1600);
            press(at(300, 50), Qt.RightButton);
            mouseMove(scene, at(280, 50).x, at(280, 50).y, 0, Qt.RightButton);
            settle();
            compare(firstBarPixel(grabImage(scene), y), Math.round(50 / 200 * chart.width - 20));
            for (let x = 280; x >= 237; --x) // dropped, all of them
                mouseMove(scene, at(x, 50).x, at(x, 50).y, 0, Qt.RightButton);
            release(at(237, 50), Qt.RightButton);
            wait(1700);
            settle();
            const edge = (500 - chart.zoomRect.x) / chart.zoomRect.width * chart.width;
            verify(Math.abs(edge - (50 / 200 * chart.width - 63)) < 1e-6);
            compare(firstBarPixel(grabImage(scene), y), Math.round(edge));
        }

        function test_theLastStateIsDrawnAfterTheInterval() {
            show(450, 200);
            let interval = 750;
            let began = 0;
            let height = 0;
            do { // again, if the machine was too slow to ask twice within the interval
                interval *= 2;
                scene.plot.updateIntervalMs = interval;
                wait(interval + 100);
                began = Date.now();
                chart.zoomRect = Qt.rect(440, 0, 200, 10);
                settle();
                chart.zoomRect = Qt.rect(420, 0, 200, 10); // dropped
                settle();
                height = chart.zoomRect.height;
            } while (Date.now() - began > interval - 100);
            compare(height, 10); // no frame of the chart yet
            wait(interval + 200);
            settle();
            verify(chart.zoomRect.height > 60); // a frame has fitted it to what is visible
            compareView(420, 200);
        }

        function test_noFrameWithoutAChange() {
            show(450, 200);
            let before = -1;
            for (let i = 0; i < 10 && before !== tools.frames(); ++i) { // what is due may be late
                before = tools.frames();
                wait(500);
            }
            compare(tools.frames(), before);
        }

        function test_updatesThatAreSwitchedOffStayOff() {
            chart.shouldUpdate = false;
            chart.zoomRect = Qt.rect(100, 0, 100, 7);
            wait(200);
            compare(chart.zoomRect.height, 7); // a frame would have fitted it
        }

        function test_updateIntervalIsTheCharts() {
            compare(scene.plot.updateIntervalMs, 25);
            scene.plot.updateIntervalMs = 40;
            compare(chart.updateIntervalMs, 40);
        }
    }
}
