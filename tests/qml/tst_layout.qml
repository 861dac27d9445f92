// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

Item {
    id: window

    width: 1000
    height: 700

    Component {
        id: sceneComponent

        PlotScene {
        }
    }

    Component {
        id: plainComponent

        SPlotQML {
        }
    }

    Component {
        id: plotterComponent

        BarPlotter {
        }
    }

    PlotCase {
        property PlotScene scene
        property SPlotQML plot

        name: "layout"

        function init() {
            scene = createTemporaryObject(sceneComponent, parent);
            plot = scene.plot;
            tryVerify(() => plot.refChartArea.zoomRect.width === 1000 && plot.refNavigator.zoomRect.width === 1000);
            settle();
        }

        function resize(width, height) {
            scene.width = width;
            scene.height = height;
        }

        function chartRect() {
            return rectIn(plot.refChartArea, plot);
        }

        function navigatorRect() {
            return rectIn(plot.refNavigator, plot);
        }

        function legendRect() {
            return rectIn(plot.refLegend, plot);
        }

        function test_theImplicitSizeIs200() {
            const plain = createTemporaryObject(plainComponent, parent);
            compare(plain.implicitWidth, 200);
            compare(plain.implicitHeight, 200);
            compare(plain.width, 200);
            compare(plain.height, 200);
        }

        function test_defaults() {
            const plain = createTemporaryObject(plainComponent, parent);
            compare(plain.enableNavigatorBar, true);
            compare(plain.enableLegend, true);
            compare(plain.isYAxisLog, false);
            compare(plain.refChartArea.plotter.length, 0);
            compare(plain.refNavigator.plotter.length, 0);
            compare(plain.xAxis.axisTextFunc(0.5), "500.00 ms");
            compare(plain.yAxis.axisTextFunc(2000), "2.00K");
        }

        function test_theAliasesNameTheParts() {
            verify(plot.refChartArea instanceof ChartArea);
            verify(plot.refNavigator instanceof ChartArea);
            verify(plot.refChartArea !== plot.refNavigator);
            verify(plot.xAxis instanceof LinearXAxis);
            verify(plot.yAxis instanceof LinearYAxis);
            plot.isYAxisLog = true;
            compare(plot.yAxis.isLogScale, true);
            compare(plot.refChartMouse.hoverEnabled, true);
            compare(plot.refLegend.plotterList.length, 2);
        }

        function test_theAxesAreReadOnly() {
            let message = "";
            try {
                plot.xAxis = null;
            } catch (error) {
                message = error.message;
            }
            compare(message, 'Cannot assign to read-only property "xAxis"');
        }

        /// Where everything lies, computed from the outside inwards.
        function compareLayout(width, height, legendRows) {
            const what = width + " x " + height;
            const left = plot.yAxis.visible ? 60 : 12;
            const below = plot.enableLegend ? 12 : 6;
            const legendHeight = plot.enableLegend ? legendRows * 30 : 0;
            const strip = plot.enableNavigatorBar ? 58 : 0;
            const legendTop = height - below - legendHeight;
            const stripTop = legendTop - 6 - strip;
            const chartBottom = stripTop - (plot.xAxis.visible ? 36 : 12);
            compareRect(chartRect(), Qt.rect(left, 12, width - left - 12, chartBottom - 12), what + ", chart");
            compareRect(navigatorRect(), Qt.rect(left, stripTop, width - left - 12, strip), what + ", strip");
            compareRect(legendRect(), Qt.rect(0, legendTop, width, legendHeight), what + ", legend");
            compareRect(rectIn(plot.yAxis, plot), chartRect(), what + ", y axis");
            const xAxis = rectIn(plot.xAxis, plot);
            compareRect(Qt.rect(xAxis.x, xAxis.y, xAxis.width, 1), Qt.rect(left, chartBottom, width - left - 12, 1),
                what + ", x axis");
        }

        function test_layoutWithEverySwitch() {
            for (const [width, height] of [[200, 200], [600, 400], [1000, 700], [333, 251]]) {
                resize(width, height);
                for (let switches = 0; switches < 16; ++switches) {
                    plot.enableLegend = (switches & 1) === 0;
                    plot.enableNavigatorBar = (switches & 2) === 0;
                    plot.xAxis.visible = (switches & 4) === 0;
                    plot.yAxis.visible = (switches & 8) === 0;
                    if (width > 200 || !plot.enableLegend)
                        compareLayout(width, height, 1);
                }
            }
        }

        function test_at200By200OnePlotterHasItsLegend() {
            plot.refChartArea.removePlotter(scene.other);
            resize(200, 200);
            compareLayout(200, 200, 1);
            textReading(plot, "bars");
        }

        function test_switchedOffPartsAreNeitherSeenNorFelt() {
            plot.enableLegend = false;
            plot.enableNavigatorBar = false;
            compare(plot.refLegend.visible, false);
            compare(plot.refLegend.enabled, false);
            compare(plot.refNavigator.parent.visible, false);
            compare(plot.refNavigator.parent.enabled, false);
            compare(textsIn(plot).filter((text) => text.font.pointSize !== 9).length, 0); // but axes
            compare(legendRect().height, 0);
            compare(legendRect().bottom, 394);
        }

        function rangeTexts() {
            return textsIn(plot).filter((text) => Math.abs(rectIn(text, plot).y - navigatorRect().bottom) <= 1);
        }

        function test_theEndsOfTheStripAreNamed() {
            compare(rangeTexts().map((text) => text.text), ["0", "1000.00 s"]);
            plot.refNavigator.zoomRect = Qt.rect(250, 0, 0.5, 1);
            compare(rangeTexts().map((text) => text.text), ["250.00 s", "250.50 s"]);
            const places = rangeTexts().map((text) => lettersIn(text, plot));
            compare(places[0].x, navigatorRect().left);
            fuzzyCompare(places[1].right, navigatorRect().right, 0.01);
            for (const text of rangeTexts())
                compare(text.color, plot.xAxis.axisTextColor);
            plot.xAxis.axisTextFunc = (value) => "at " + value;
            compare(rangeTexts().map((text) => text.text), ["at 250", "at 250.5"]);
        }

        function test_withoutAFunctionTheAxisFormatsTheEnds() {
            plot.xAxis.axisTextFunc = null;
            compare(rangeTexts().map((text) => text.text), ["0", "1000.00"]);
        }

        function test_theEndsLieAboveTheLegend() {
            for (const text of rangeTexts())
                verify(text.z > plot.refLegend.z);
        }

        function test_theLegendListsTheFirstLayer() {
            compare(plot.refLegend.plotterList, plot.refChartArea.plotter);
            compare(plot.refLegend.plotterList.length, 2);
            scene.other.drawLayer = 2;
            compare(plot.refLegend.plotterList, [scene.bars]);
            scene.other.drawLayer = 3; // in the first and in another one
            compare(plot.refLegend.plotterList, [scene.bars]);
            scene.other.drawLayer = 1;
            compare(plot.refLegend.plotterList.length, 2);
            plot.refChartArea.removePlotter(scene.bars);
            compare(plot.refLegend.plotterList, [scene.other]);
        }

        /// What must hold at any size.
        function checkTidy(what) {
            const all = seen(plot, () => true);
            for (const item of all)
                expect(item.width >= 0 && item.height >= 0, () => what + ": a negative size: " + item);
            const texts = textsIn(plot).filter((text) => !isHidden(text) && text.paintedWidth > 0);
            const places = texts.map((text) => clipped(lettersIn(text, plot), text));
            for (let i = 0; i < texts.length; ++i) {
                const place = places[i];
                if (!(place.width > 0 && place.height > 0))
                    continue;
                expect(place.left >= -0.01 && place.top >= -0.01 && place.right <= plot.width + 0.01
                    && place.bottom <= plot.height + 0.01,
                    () => what + ": '" + texts[i].text + "' leaves the plot: " + place);
                for (let j = 0; j < i; ++j)
                    expect(!overlap(place, places[j]),
                        () => what + ": '" + texts[i].text + "' " + place + " over '" + texts[j].text + "' " + places[j]);
            }
            for (const part of [chartRect(), navigatorRect(), legendRect()])
                expect(part.left >= -0.01 && part.right <= plot.width + 0.01 && part.top >= -0.01
                    && part.bottom <= plot.height + 0.01, () => what + ": outside: " + part);
            expect(chartRect().bottom <= navigatorRect().top && navigatorRect().bottom <= legendRect().top + 0.01,
                () => what + ": parts overlap");
        }

        function isHidden(item) {
            for (let i = item; i && i !== plot; i = i.parent) {
                if (i.opacity === 0 || i.clip && (i.width === 0 || i.height === 0))
                    return true;
            }
            return false;
        }

        /// The part of a place that the item's clipping ancestors leave.
        function clipped(place, item) {
            for (let i = item.parent; i && i !== plot; i = i.parent) {
                if (!i.clip)
                    continue;
                const window = rectIn(i, plot);
                const left = Math.max(place.left, window.left);
                const top = Math.max(place.top, window.top);
                const right = Math.max(left, Math.min(place.right, window.right));
                place = Qt.rect(left, top, right - left, Math.max(top, Math.min(place.bottom, window.bottom)) - top);
            }
            return place;
        }

        function test_nothingOverlapsAtAnySize() {
            for (let i = 0; i < 6; ++i)
                createTemporaryObject(plotterComponent, plot, { name: "plotter with a long name " + i,
                    chartArea: plot.refChartArea });
            for (const width of [0, 1, 12, 40, 71, 72, 73, 90, 110, 140, 160, 200, 260, 333, 600]) {
                for (const height of [0, 1, 12, 18, 42, 66, 80, 106, 120, 164, 180, 200, 230, 300, 400]) {
                    resize(width, height);
                    tools.grab(window.Window.window); // views lay out their cells with the next frame
                    checkTidy(width + " x " + height);
                }
            }
        }

        function test_nothingOverlapsWithLargeValues() {
            for (const top of [1e-9, 0.5, 9.9e2, 9.99e5, 9.99e8, 9.99e11]) {
                scene.bars.data = scene.ramp(top);
                for (const length of [1e-15, 1e-6, 1, 1000, 99999, 1e9]) {
                    scene.bars.plotterArea = Qt.rect(length, 0, length, 0);
                    plot.refChartArea.resetZoomView();
                    for (const width of [200, 333, 600]) {
                        resize(width, 400);
                        checkTidy(top + " over " + length + " at " + width);
                    }
                }
            }
        }

        function test_aSmallPlotGivesUpInOrder() {
            resize(300, 400);
            compare(legendRect().height, 30);
            plot.refLegend.plotterList = [0, 1, 2, 3, 4, 5].map(() => scene.bars);
            compare(legendRect().height, 90);
            resize(300, 240); // whole rows only
            compare(legendRect().height, 60);
            compare(navigatorRect().height, 58);
            resize(300, 170);
            compare(legendRect().height, 0);
            compare(navigatorRect().height, 58);
            resize(300, 150);
            compare(navigatorRect().height, 0);
            verify(chartRect().height >= 40);
            resize(300, 50);
            verify(chartRect().height < 1);
        }

        function test_aPlotThatGrowsIsWholeAgain() {
            resize(0, 0);
            settle();
            resize(600, 400);
            settle();
            compareLayout(600, 400, 1);
            verify(textsIn(plot.xAxis).length > 3);
            compare(plot.refChartArea.zoomRect.width, 1000);
            compare(plot.refNavigator.zoomRect.width, 1000);
        }
    }
}
