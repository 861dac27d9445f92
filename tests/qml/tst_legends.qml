// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import QtQuick.Window 2.15
import VorlixPlugin 1.0
import "qrc:/qml"
import "qrc:/qml/Legend"

Item {
    width: 600
    height: 500

    Component {
        id: sceneComponent

        PlotScene {
        }
    }

    Component {
        id: plotterComponent

        BarPlotter {
        }
    }

    Component {
        id: horizontalComponent

        HorizontalLegend {
            width: parent.width
        }
    }

    Component {
        id: verticalComponent

        VerticalLegend {
        }
    }

    Component {
        id: viewComponent

        ViewLegend {
        }
    }

    PlotCase {
        id: testCase

        name: "legends"

        function init() {
            mouseMove(parent, 599, 499);
            settle();
        }

        function plotters(count) {
            const list = [];
            for (let i = 0; i < count; ++i)
                list.push(createTemporaryObject(plotterComponent, testCase, { name: "plotter " + i,
                    color: Qt.rgba(0.1 * i, 0.5, 0.5, 1) }));
            return list;
        }

        function legends() {
            return [
                { tag: "horizontal", component: horizontalComponent },
                { tag: "vertical", component: verticalComponent },
                { tag: "view", component: viewComponent }
            ];
        }

        /// A legend with its elements in sight.
        function opened(component, list) {
            const legend = createTemporaryObject(component, parent, { plotterList: list });
            if (legend.state === "minimized") {
                mouseMove(legend, 5, 5);
                mouseMove(legend, 6, 6);
                tryCompare(legend, "implicitHeight", legend.legendHeight);
            }
            settle();
            return legend;
        }

        function dots(legend) {
            return rectanglesIn(legend, (item) => item.width === 10 && item.height === 10 && item.radius === 5);
        }

        function same(color, expected) {
            verify(Qt.colorEqual(color, expected), color + " instead of " + expected);
        }

        // elements

        function test_anElementShowsDotAndName_data() {
            return legends();
        }

        function test_anElementShowsDotAndName(row) {
            const list = plotters(2);
            const legend = opened(row.component, list);
            compare(dots(legend).length, 2);
            for (let i = 0; i < 2; ++i) {
                const name = textReading(legend, "plotter " + i);
                same(name.color, "#616161");
                same(dots(legend)[i].color, list[i].color);
                const dot = rectIn(dots(legend)[i], name.parent.parent);
                compareRect(dot, Qt.rect(12, 10, 10, 10), "dot");
                compare(rectIn(name, name.parent.parent).x, 30);
            }
            list[1].name = "renamed";
            list[1].color = "#112233";
            textReading(legend, "renamed");
            same(dots(legend)[1].color, "#112233");
        }

        function test_aClickOnTheNameHidesAndShows_data() {
            return legends();
        }

        function test_aClickOnTheNameHidesAndShows(row) {
            const list = plotters(2);
            const legend = opened(row.component, list);
            const name = textReading(legend, "plotter 1");
            mouseClick(name, 5, 15);
            compare(list[0].visible, true);
            compare(list[1].visible, false);
            same(name.color, "#bdbdbd");
            same(dots(legend)[1].color, "#bdbdbd");
            same(dots(legend)[0].color, list[0].color);
            mouseClick(name, 5, 15);
            compare(list[1].visible, true);
            same(name.color, "#616161");
            same(dots(legend)[1].color, list[1].color);
        }

        function test_coloursCanBeChosen_data() {
            return legends();
        }

        function test_coloursCanBeChosen(row) {
            const list = plotters(2);
            list[1].visible = false;
            const legend = opened(row.component, list);
            same(legend.nameColor, "#616161");
            same(legend.hiddenColor, "#bdbdbd");
            legend.nameColor = "#d7dde4";
            legend.hiddenColor = "#747e89";
            same(textReading(legend, "plotter 0").color, "#d7dde4");
            same(dots(legend)[0].color, list[0].color);
            same(textReading(legend, "plotter 1").color, "#747e89");
            same(dots(legend)[1].color, "#747e89");
        }

        function test_aLongNameIsElidedInItsCell_data() {
            return legends();
        }

        function test_aLongNameIsElidedInItsCell(row) {
            const list = plotters(2);
            list[0].name = "a name that is far longer than any cell of any legend can show";
            const legend = opened(row.component, list);
            const name = textReading(legend, list[0].name);
            verify(name.truncated);
            const cell = row.tag === "horizontal" ? 125 : 200;
            verify(rectIn(name, name.parent.parent).right <= cell);
            verify(!textReading(legend, "plotter 1").truncated);
        }

        function test_aDestroyedPlotterLeavesItsCellEmpty_data() {
            return legends();
        }

        function test_aDestroyedPlotterLeavesItsCellEmpty(row) {
            const list = plotters(2);
            const legend = opened(row.component, list);
            const place = textReading(legend, "plotter 0").mapToItem(parent, 5, 15);
            list[0].destroy();
            wait(0);
            compare(textsIn(legend).filter((text) => /plotter/.test(text.text)).length, 1);
            compare(dots(legend).length, 1);
            mouseClick(parent, place.x, place.y);
            mouseClick(textReading(legend, "plotter 1"), 5, 15);
            compare(list[1].visible, false);
        }

        // colours

        function dialog() {
            tryVerify(() => tools.otherWindows(testCase.Window.window).length === 1);
            const shown = tools.otherWindows(testCase.Window.window)[0];
            tools.waitUntilShown(shown);
            return shown;
        }

        function noDialog() {
            tryVerify(() => tools.otherWindows(testCase.Window.window).length === 0);
        }

        /// What reads so in the dialog: a label's text or what stands in its field.
        function inDialog(window, text) {
            let found = [];
            tryVerify(() => {
                found = seen(tools.contentOf(window), (item) => item.text === text);
                return found.length > 0;
            }, "no " + text + " in the dialog");
            return found[found.length - 1];
        }

        function chooseColor(legend, index) {
            mouseClick(dots(legend)[index], 5, 5);
            return dialog();
        }

        function test_theDialogOpensWithThePlottersColour_data() {
            return legends();
        }

        function test_theDialogOpensWithThePlottersColour(row) {
            const list = plotters(3);
            list[1].color = "#3366cc";
            list[2].color = "#40112233";
            const legend = opened(row.component, list);
            compare(legend.currColorSelected, -1);
            let window = chooseColor(legend, 1);
            compare(legend.currColorSelected, 1);
            compare(window.title, "plotter 1");
            inDialog(window, "#3366cc");
            inDialog(window, "Alpha");
            tools.clickOn(inDialog(window, "Cancel"));
            noDialog();
            same(list[1].color, "#3366cc");

            settle();
            opened2(legend);
            window = chooseColor(legend, 2);
            compare(legend.currColorSelected, 2);
            inDialog(window, "#40112233");
            tools.clickOn(inDialog(window, "OK"));
            noDialog();
            same(list[2].color, "#40112233");
        }

        /// Brings a legend's elements back into sight after the pointer was elsewhere.
        function opened2(legend) {
            mouseMove(parent, 599, 499);
            mouseMove(legend, 5, 5);
            mouseMove(legend, 6, 6);
            tryVerify(() => dots(legend).length > 0 && (legend.legendHeight === undefined
                || legend.implicitHeight === legend.legendHeight));
        }

        function test_anAcceptedColourIsThePlotters_data() {
            return legends();
        }

        function test_anAcceptedColourIsThePlotters(row) {
            const list = plotters(2);
            list[1].color = "#3366cc";
            const legend = opened(row.component, list);
            const window = chooseColor(legend, 1);
            inDialog(window, "#3366cc");
            // A click into the field of colours takes what lies there.
            const from = tools.contentOf(window);
            tools.drag(window, Qt.point(from.width * 0.4, from.height * 0.2), Qt.point(from.width * 0.45,
                from.height * 0.2));
            tools.clickOn(inDialog(window, "OK"));
            noDialog();
            verify(!Qt.colorEqual(list[1].color, "#3366cc"));
            same(dots(legend)[1] ? dots(legend)[1].color : list[1].color, list[1].color);
            compare(Math.round(list[1].color.hslHue * 360), 220); // the hue's slider was not moved
        }

        function test_aRejectedColourIsForgotten_data() {
            return legends();
        }

        function test_aRejectedColourIsForgotten(row) {
            const list = plotters(2);
            list[0].color = "#3366cc";
            const legend = opened(row.component, list);
            const window = chooseColor(legend, 0);
            inDialog(window, "#3366cc");
            const from = tools.contentOf(window);
            tools.drag(window, Qt.point(from.width * 0.4, from.height * 0.2), Qt.point(from.width * 0.45,
                from.height * 0.2));
            tools.clickOn(inDialog(window, "Cancel"));
            noDialog();
            same(list[0].color, "#3366cc");
        }

        function test_withoutAChosenElementNothingChanges_data() {
            return legends();
        }

        function test_withoutAChosenElementNothingChanges(row) {
            const list = plotters(2);
            const legend = opened(row.component, list);
            for (const index of [-1, 2, 100]) {
                opened2(legend);
                const before = list.map((plotter) => String(plotter.color));
                const window = chooseColor(legend, 0);
                inDialog(window, "OK");
                legend.currColorSelected = index;
                const from = tools.contentOf(window);
                tools.drag(window, Qt.point(from.width * 0.4, from.height * 0.2), Qt.point(from.width * 0.45,
                    from.height * 0.2));
                tools.clickOn(inDialog(window, "OK"));
                noDialog();
                compare(list.map((plotter) => String(plotter.color)), before, "with " + index);
            }
        }

        function test_thePlotterOfAnOpenDialogMayGo() {
            const list = plotters(2);
            const legend = opened(horizontalComponent, list);
            const window = chooseColor(legend, 0);
            inDialog(window, "OK");
            list[0].destroy();
            wait(0);
            tools.clickOn(inDialog(window, "OK"));
            noDialog();
        }

        function test_aHiddenPlottersDotDoesNothing_data() {
            return legends();
        }

        function test_aHiddenPlottersDotDoesNothing(row) {
            const list = plotters(2);
            const legend = opened(row.component, list);
            list[1].visible = false;
            mouseClick(dots(legend)[1], 5, 5);
            wait(200);
            noDialog();
            compare(legend.currColorSelected, -1);
            compare(list[1].visible, false);
        }

        // horizontal

        function grid(legend) {
            return seen(legend, (item) => item.cellWidth !== undefined)[0];
        }

        function test_cellsOf125By30Centred_data() {
            return [
                { tag: "one", count: 1, width: 600, columns: 1 },
                { tag: "all in a row", count: 3, width: 600, columns: 3 },
                { tag: "exactly four", count: 9, width: 500, columns: 4 },
                { tag: "nearly four", count: 9, width: 499, columns: 3 },
                { tag: "two", count: 9, width: 260, columns: 2 },
                { tag: "one column", count: 2, width: 125, columns: 1 }
            ];
        }

        function test_cellsOf125By30Centred(row) {
            const legend = createTemporaryObject(horizontalComponent, parent, { plotterList: plotters(row.count),
                width: row.width });
            settle();
            const rows = Math.ceil(row.count / row.columns);
            compare(legend.implicitHeight, rows * 30);
            const cells = grid(legend);
            compareRect(rectIn(cells, legend), Qt.rect(Math.floor((row.width - row.columns * 125) / 2), 0,
                row.columns * 125, rows * 30), "grid");
            for (let i = 0; i < row.count; ++i) {
                const cell = textReading(legend, "plotter " + i).parent.parent;
                compareRect(rectIn(cell, cells), Qt.rect(i % row.columns * 125, Math.floor(i / row.columns) * 30, 125,
                    30), "cell " + i);
            }
        }

        function test_aLegendNarrowerThanACellNarrowsIt() {
            const legend = createTemporaryObject(horizontalComponent, parent, { plotterList: plotters(2), width: 80 });
            settle();
            compare(legend.implicitHeight, 60);
            verify(rectIn(textReading(legend, "plotter 0"), legend).right <= 80);
        }

        function test_anEmptyLegendHasNoHeight() {
            const legend = createTemporaryObject(horizontalComponent, parent, { plotterList: [] });
            compare(legend.implicitHeight, 0);
        }

        function test_backgroundsAreMaterials_data() {
            return legends();
        }

        function test_backgroundsAreMaterials(row) {
            const legend = createTemporaryObject(row.component, parent);
            same(legend.color, legend.Material.background);
            legend.Material.theme = Material.Dark;
            same(legend.color, "#303030");
        }

        function test_theListMayChange_data() {
            return legends();
        }

        function test_theListMayChange(row) {
            const list = plotters(4);
            const legend = opened(row.component, list);
            legend.plotterList = list.slice(0, 1);
            settle();
            compare(textsIn(legend).filter((text) => /plotter/.test(text.text)).map((text) => text.text), ["plotter 0"]);
            legend.plotterList = list.slice(1, 4);
            settle();
            compare(textsIn(legend).filter((text) => /plotter/.test(text.text)).map((text) => text.text),
                ["plotter 1", "plotter 2", "plotter 3"]);
            legend.plotterList = [];
            compare(dots(legend).length, 0);
            legend.plotterList = null;
            compare(dots(legend).length, 0);
        }

        // vertical

        function test_theVerticalLegendHasATitle() {
            const legend = opened(verticalComponent, plotters(3));
            compare(legend.implicitWidth, 200);
            compare(legend.implicitHeight, 36 + 90);
            const bar = textReading(legend, "Legend").parent;
            compareRect(rectIn(bar, legend), Qt.rect(0, 0, 200, 36), "title bar");
            same(bar.color, legend.Material.primary);
            compareRect(rectIn(textReading(legend, "plotter 2").parent.parent, legend), Qt.rect(0, 96, 200, 30), "third");
        }

        function test_theTitleBarMovesTheLegend() {
            const legend = opened(verticalComponent, plotters(2));
            const from = legend.mapToItem(null, 50, 18);
            tools.drag(testCase.Window.window, from, Qt.point(from.x + 200, from.y + 100));
            // A drag begins a few pixels late.
            verify(Math.abs(legend.x - 200) <= 20 && Math.abs(legend.y - 100) <= 20, legend.x + ", " + legend.y);
        }

        function test_aReleasedLegendStaysWithinReach() {
            const legend = opened(verticalComponent, plotters(2));
            tools.drag(testCase.Window.window, Qt.point(50, 18), Qt.point(900, 900));
            verify(legend.x <= 580 && legend.y <= 480, legend.x + ", " + legend.y);
            tools.drag(testCase.Window.window, Qt.point(legend.x + 5, legend.y + 5), Qt.point(-900, -900));
            verify(legend.x >= -180 && legend.y >= 0, legend.x + ", " + legend.y);
            compare(legend.Drag.active, false);
        }

        // view

        function test_theViewLegendIsARedSquare() {
            const legend = createTemporaryObject(viewComponent, parent, { plotterList: plotters(2) });
            compare(legend.legendWidth, 200);
            compare(legend.legendHeight, 270);
            compare(legend.legendTitleHeight, 30);
            compare(legend.elemHeight, 30);
            compare(legend.currColorSelected, -1);
            compare(legend.state, "minimized");
            compare(legend.width, 30);
            compare(legend.height, 30);
            compare(legend.clip, true);
            settle();
            same(grabImage(legend).pixel(15, 15), "red");
        }

        function test_theViewLegendGrowsInWidthThenInHeight() {
            const legend = createTemporaryObject(viewComponent, parent, { plotterList: plotters(2) });
            settle();
            const steps = [];
            legend.widthChanged.connect(() => steps.push("w" + legend.height));
            legend.heightChanged.connect(() => steps.push("h" + legend.width));
            mouseMove(legend, 15, 15);
            compare(legend.state, "full_view");
            steps.length = 0; // a transition tries its end values on before it begins
            tryCompare(legend, "height", 270);
            compare(legend.width, 200);
            verify(steps.filter((step) => step[0] === "w").every((step) => step === "w30"), steps);
            verify(steps.filter((step) => step[0] === "h").every((step) => step === "h200"), steps);
            mouseMove(parent, 590, 490);
            compare(legend.state, "minimized");
            steps.length = 0;
            tryCompare(legend, "width", 30);
            verify(steps.length > 0 && steps.filter((step) => step[0] === "h").every((step) => step === "h200"), steps);
            verify(steps.filter((step) => step[0] === "w").every((step) => step === "w30"), steps);
        }

        // Counts milliseconds on the clock of the animations, which stands still while a busy machine draws no frame.
        NumberAnimation {
            id: clock

            property real now: -1

            target: clock
            property: "now"
            from: 0
            to: 60000
            duration: 60000
        }

        function test_theViewLegendTakes200MillisecondsPerDirection() {
            const tick = 40; // by which one animation may begin later than another, and twice a frame
            const legend = createTemporaryObject(viewComponent, parent, { plotterList: plotters(2) });
            settle();
            const faults = [];
            const look = () => {
                const what = clock.now + " ms: " + legend.width + " x " + legend.height;
                if (clock.now < 200 - tick && (legend.width === 200 || legend.height > 30))
                    faults.push("early at " + what);
                if (clock.now > 200 + tick && legend.width < 200)
                    faults.push("not wide at " + what);
                if (clock.now < 400 - tick && legend.height === 270)
                    faults.push("early at " + what);
                if (clock.now > 400 + tick && legend.height < 270)
                    faults.push("not high at " + what);
            };
            mouseMove(legend, 15, 15);
            clock.start();
            clock.nowChanged.connect(look);
            tryVerify(() => clock.now > 500);
            clock.nowChanged.disconnect(look);
            clock.stop();
            compare(faults, []);
            compare(legend.height, 270);
        }

        function test_thePinKeepsTheViewLegendOpen() {
            const legend = opened(viewComponent, plotters(2));
            const pin = seen(legend, (item) => item.checked !== undefined)[0];
            verify(rectIn(pin, legend).bottom <= 30 && rectIn(pin, legend).right <= 200);
            mouseMove(pin, pin.width / 2, pin.height / 2);
            mouseClick(pin, pin.width / 2, pin.height / 2);
            compare(pin.checked, true);
            mouseMove(parent, 590, 490);
            wait(500);
            compare(legend.state, "full_view");
            compare(legend.height, 270);
            mouseClick(pin, pin.width / 2, pin.height / 2);
            mouseMove(parent, 590, 490);
            tryCompare(legend, "width", 30);
        }

        function test_theViewLegendsParts() {
            const legend = opened(viewComponent, plotters(3));
            compare(legend.title.text, "Legend");
            compareRect(rectIn(legend.title.parent, legend), Qt.rect(30, 0, 170, 30), "title bar");
            compare(legend.list.interactive, false);
            compareRect(rectIn(textReading(legend, "plotter 2").parent.parent, legend), Qt.rect(0, 90, 200, 30), "third");
            legend.elemHeight = 45;
            settle();
            compareRect(rectIn(textReading(legend, "plotter 2").parent.parent, legend), Qt.rect(0, 120, 200, 45),
                "third of 45");
        }

        function test_theViewLegendStaysOpenOverItsElements() {
            const legend = opened(viewComponent, plotters(3));
            for (let y = 10; y < 260; y += 20) {
                mouseMove(legend, 100, y);
                compare(legend.state, "full_view");
            }
        }

        // in the plot

        function test_theLegendOfThePlotTogglesWhatIsDrawn() {
            const scene = createTemporaryObject(sceneComponent, parent);
            settle();
            const place = scene.chart.mapToItem(scene, scene.chart.width * 0.9, scene.chart.height * 0.6);
            same(grabImage(scene).pixel(place.x, place.y), "#2040c0");
            mouseClick(textReading(scene.plot, "bars"), 5, 10);
            settle();
            verify(!Qt.colorEqual(grabImage(scene).pixel(place.x, place.y), "#2040c0"));
            mouseClick(textReading(scene.plot, "bars"), 5, 10);
            settle();
            same(grabImage(scene).pixel(place.x, place.y), "#2040c0");
            compare(scene.plot.refLegend.currColorSelected, -1);
        }
    }
}
