// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import QtQuick.Window 2.15
import QtTest 1.15
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
        id: windowComponent

        Window {
            readonly property alias plot: windowScene.plot
            readonly property alias chart: windowScene.chart

            width: 300
            height: 200
            visible: true

            PlotScene {
                id: windowScene

                anchors.fill: parent
            }
        }
    }

    Component {
        id: areaComponent

        AreaPlotter {
            borderColor: "#ff0000"
            color: "#00ffffff"
            data: Array(1000).fill(60)
            plotterArea: Qt.rect(0, 0, 1000, 0)
        }
    }

    Component {
        id: spyComponent

        SignalSpy {
            signalName: "exportComplete"
        }
    }

    PlotCase {
        property PlotScene scene
        property SPlotQML plot
        property SignalSpy spy

        name: "export"

        function init() {
            scene = createTemporaryObject(sceneComponent, parent);
            plot = scene.plot;
            spy = createTemporaryObject(spyComponent, parent, { target: plot });
            tryVerify(() => scene.chart.zoomRect.width === 1000);
            settle();
        }

        function exported(name, upsize) {
            const path = tools.temporaryPath(name);
            if (upsize === undefined)
                plot.exportImage(path);
            else
                plot.exportImage(path, upsize);
            spy.wait(patience);
            compare(spy.signalArguments[spy.count - 1][0], path);
            return path;
        }

        function same(color, expected) {
            expect(Qt.colorEqual(color, expected), () => color + " instead of " + expected);
        }

        function test_aPictureHasTheSizeOfThePlot() {
            compare(tools.imageSize(exported("plain.png")), Qt.size(600, 400));
        }

        function test_aPictureHasASizeTimesUpsize_data() {
            return [{ tag: "2", upsize: 2, size: Qt.size(1200, 800) }, { tag: "0.5", upsize: 0.5, size: Qt.size(300,
                200) }, { tag: "1.5", upsize: 1.5, size: Qt.size(900, 600) }];
        }

        function test_aPictureHasASizeTimesUpsize(row) {
            compare(tools.imageSize(exported("sized.png", row.upsize)), row.size);
        }

        function test_itShowsWhatThePlotShows() {
            const path = exported("same.png");
            const picture = pictureOf(scene);
            const chart = scene.chart;
            for (let i = 1; i < 20; ++i) {
                for (const height of [0.2, 0.5, 0.7]) {
                    const at = chart.mapToItem(scene, Math.round(chart.width * i / 20) + 3, chart.height * height);
                    same(tools.imagePixel(path, at.x, at.y), picture.pixel(at.x, at.y));
                }
            }
        }

        function test_itHasTheBackgroundOfTheTheme() {
            same(tools.imagePixel(exported("light.png"), 3, 3), "#fafafa");
            plot.Material.theme = Material.Dark;
            same(tools.imagePixel(exported("dark.png"), 3, 3), "#303030");
        }

        function test_theGroundCanBeSet() {
            plot.Material.background = "#123456";
            same(tools.imagePixel(exported("ground.png"), 3, 3), "#123456");
            scene.color = "#00ff00"; // of what lies below the plot
            same(tools.imagePixel(exported("ground2.png"), 3, 3), "#123456");
        }

        function test_theViewHasNoBackground() {
            scene.color = "#00ff00";
            settle();
            same(pictureOf(scene).pixel(3, 3), "#00ff00");
            same(tools.imagePixel(exported("own.png"), 3, 3), "#fafafa");
        }

        function test_upsizeMakesTextAndLinesSharper() {
            // At four times the size, the edges of letters drawn at that size are as steep as before; those of magnified
            // letters fall over four pixels.
            const plain = exported("plain.png");
            const large = exported("large.png", 4);
            const place = rectIn(textsIn(plot.xAxis)[2], plot);
            const small = tools.steepestEdge(plain, place);
            const sharp = tools.steepestEdge(large, Qt.rect(place.x * 4, place.y * 4, place.width * 4, place.height * 4));
            verify(sharp >= 0.8 * small, "edges of " + sharp + " after " + small);
            const mark = plot.xAxis.mapToItem(plot, 0, 4);
            const before = tools.imagePixel(large, mark.x * 4 - 2, mark.y * 4);
            const on = tools.imagePixel(large, mark.x * 4 + 1, mark.y * 4);
            same(before, "#fafafa");
            same(on, "#bdbdbd");
        }

        /// Around the left edge of a bar, in the plot's pixels: ground to the left, the bar to the right.
        function showAnEdge(chart, plotter) {
            plotter.data = Array.from({ length: 1000 }, (_, i) => i % 2 * 100);
            chart.zoomRect = Qt.rect(500, 0, 10, 100);
            settle();
            return chart.mapToItem(plot, chart.width * 0.3 - 10, chart.height / 2);
        }

        function test_upsizeMakesChartsSharper_data() {
            return [{ tag: "the chart", chart: "refChartArea", plotter: "bars" }, { tag: "the strip", chart: "refNavigator",
                plotter: "overview" }];
        }

        function test_upsizeMakesChartsSharper(row) {
            const corner = showAnEdge(plot[row.chart], scene[row.plotter]);
            const plain = exported("plainChart.png");
            const large = exported("largeChart.png", 4);
            const small = tools.steepestEdge(plain, Qt.rect(corner.x, corner.y, 20, 4));
            const sharp = tools.steepestEdge(large, Qt.rect(corner.x * 4, corner.y * 4, 80, 16));
            verify(small > 60);
            verify(sharp >= 0.9 * small, "an edge of " + sharp + " after " + small);
        }

        function test_theScreenStaysAsItIsWhileAChartIsDrawnLarger() {
            showAnEdge(scene.chart, scene.bars);
            const before = tools.grab(scene.Window.window);
            const during = [];
            for (let i = 0; i < 5; ++i) {
                plot.exportImage(tools.temporaryPath("aside.png"), 3);
                during.push(tools.grab(scene.Window.window)); // a frame of its own, with the picture taken in it
            }
            tryCompare(spy, "count", 5);
            during.push(tools.grab(scene.Window.window));
            for (const picture of during)
                verify(tools.areSame(picture, before, rectIn(scene.chart, scene)));
        }

        function test_aBorderKeepsItsShareOfThePicture() {
            const area = createTemporaryObject(areaComponent, scene, { chartArea: scene.chart });
            verify(area);
            scene.bars.visible = false;
            settle();
            const y = place(area).y;
            // Three pixels of the plot, whatever the picture's size.
            for (const upsize of [1, 4]) {
                const path = exported("border" + upsize + ".png", upsize);
                const isRed = (away) => tools.imagePixel(path, 300 * upsize, Math.round((y + away) * upsize)).g < 0.5;
                compare([-4, -1, 0, 3].map(isRed), [false, true, true, false], "at " + upsize);
            }
        }

        /// Where the flat border of the area lies in the plot.
        function place(area) {
            const zoom = scene.chart.zoomRect;
            const y = scene.chart.height - (area.data[0] - zoom.y) / zoom.height * scene.chart.height;
            return scene.chart.mapToItem(plot, 0, Math.round(y));
        }

        function test_aPictureDoesNotDisturbTheView() {
            const before = pictureOf(scene);
            plot.exportImage(tools.temporaryPath("aside.png"), 3);
            waitForRendering(scene);
            const during = pictureOf(scene);
            spy.wait(patience);
            settle();
            const after = pictureOf(scene);
            for (let x = 2; x < 600; x += 7) {
                for (let y = 2; y < 400; y += 5) {
                    same(during.pixel(x, y), before.pixel(x, y));
                    same(after.pixel(x, y), before.pixel(x, y));
                }
            }
        }

        function test_aLaterPictureShowsTheLaterState() {
            const at = scene.chart.mapToItem(scene, scene.chart.width * 0.9, scene.chart.height * 0.5);
            same(tools.imagePixel(exported("first.png"), at.x, at.y), "#2040c0");
            scene.bars.color = "#c04020";
            same(tools.imagePixel(exported("second.png", 1), at.x, at.y), "#c04020");
        }

        function test_fileUrlsAreTaken_data() {
            return [{ tag: "plain", name: "url.png" }, { tag: "with blanks", name: "a b ü.png" },
                { tag: "with a per cent sign", name: "100%.png" }];
        }

        function test_fileUrlsAreTaken(row) {
            const path = tools.temporaryPath(row.name);
            const url = tools.urlOf(path);
            verify(url.startsWith("file:///"));
            plot.exportImage(url);
            spy.wait(patience);
            compare(spy.signalArguments[0][0], url);
            compare(tools.imageSize(path), Qt.size(600, 400));
        }

        function test_aUrlObjectIsTaken() {
            const path = tools.temporaryPath("object.png");
            plot.exportImage(Qt.resolvedUrl(tools.urlOf(path)));
            spy.wait(patience);
            verify(tools.exists(path));
        }

        function test_aHandMadeUrlIsTaken() {
            const path = tools.temporaryPath("50%.png");
            plot.exportImage("file://" + path);
            spy.wait(patience);
            verify(tools.exists(path));
        }

        function test_aPathThatCannotBeWrittenIsReported_data() {
            return [{ tag: "no folder", name: "no/such/folder.png" }, { tag: "no format", name: "picture.unknown" }];
        }

        function test_aPathThatCannotBeWrittenIsReported(row) {
            const path = exported(row.name);
            const messages = tools.takeMessages();
            compare(messages.length, 1);
            verify(messages[0].indexOf(path) >= 0, messages);
            verify(!tools.exists(path));
        }

        function test_aPictureOfNoSizeIsReported_data() {
            return [{ tag: "0", upsize: 0 }, { tag: "negative", upsize: -1 }, { tag: "NaN", upsize: NaN }];
        }

        function test_aPictureOfNoSizeIsReported(row) {
            const path = tools.temporaryPath("none.png");
            plot.exportImage(path, row.upsize);
            wait(100);
            compare(spy.count, 0);
            const messages = tools.takeMessages();
            compare(messages.length, 1);
            verify(messages[0].indexOf(path) >= 0, messages);
        }

        function test_aPictureCanBeGrabbed() {
            const path = tools.temporaryPath("grabbed.png");
            let isSaved = false;
            verify(plot.grabPicture((result) => {
                isSaved = result.saveToFile(path);
            }, 2));
            tryVerify(() => isSaved);
            compare(tools.imageSize(path), Qt.size(1200, 800));
            same(tools.imagePixel(path, 3, 3), "#fafafa");
            compare(spy.count, 0);
            compare(plot.grabPicture(() => fail("called"), 0), false);
            compare(tools.imageSize(exported("after.png")), Qt.size(600, 400));
        }

        function test_picturesOfSeveralSizesDoNotDisturbEachOther() {
            // Asked for in one turn: each is the one that would have been taken alone.
            const sizes = [3, 1, 2];
            const alone = sizes.map((size) => exported("alone" + size + ".png", size));
            const together = sizes.map((size) => tools.temporaryPath("together" + size + ".png"));
            spy.clear();
            sizes.forEach((size, i) => plot.exportImage(together[i], size));
            tryCompare(spy, "count", 3);
            compare(spy.signalArguments.map((args) => args[0]), together);
            sizes.forEach((size, i) => verify(tools.areAlike(alone[i], together[i]), "the picture of size " + size));
        }

        function test_aPictureAskedForInACallbackIsTaken() {
            const taken = [];
            const take = (result) => {
                taken.push(result.image);
                if (taken.length < 3)
                    verify(plot.grabPicture(take, taken.length));
            };
            verify(plot.grabPicture(take, 2));
            tryVerify(() => taken.length === 3);
        }

        function test_aFaultInACallbackDoesNotStopTheNext() {
            plot.grabPicture(() => {
                throw new Error("of a test");
            });
            let isTaken = false;
            plot.grabPicture(() => isTaken = true);
            tryVerify(() => isTaken);
        }

        function test_aPictureWithoutAWindowIsRefused() {
            plot.parent = null;
            compare(plot.grabPicture(() => fail("called")), false);
            compare(tools.takeMessages().length, 1); // Qt says why
            plot.parent = scene;
            compare(tools.imageSize(exported("back.png")), Qt.size(600, 400));
        }

        function test_picturesThatWaitAreReportedWhenTheWindowGoes() {
            const first = tools.temporaryPath("waits1.png");
            const second = tools.temporaryPath("waits2.png");
            plot.exportImage(first);
            plot.exportImage(second, 2);
            plot.parent = null;
            const messages = [];
            tryVerify(() => {
                messages.push(...tools.takeMessages().filter((message) => message.startsWith("SPlotQML")));
                return messages.length === 2;
            });
            compare(spy.count, 0);
            verify(messages.some((message) => message.indexOf(first) >= 0), messages);
            verify(messages.some((message) => message.indexOf(second) >= 0), messages);
            plot.parent = scene;
            settle();
            spy.clear();
            exported("after.png", 3);
        }

        function test_aWindowMayGoRightAfterAPictureOfIt() {
            const path = tools.temporaryPath("last.png");
            const window = windowComponent.createObject(null);
            tryVerify(() => window.chart.zoomRect.width === 1000);
            let gone = false;
            window.plot.exportComplete.connect(() => {
                window.close(); // it has no further frame
                window.destroy();
                gone = true;
            });
            window.plot.exportImage(path, 2);
            tryVerify(() => gone);
            wait(0);
            compare(tools.imageSize(path), Qt.size(600, 400));
        }

        function test_theChartAreasOwnExportWritesNothing() {
            const path = tools.temporaryPath("chart.png");
            scene.chart.exportImage(path);
            wait(200);
            verify(!tools.exists(path));
            compare(spy.count, 0);
        }
    }
}
