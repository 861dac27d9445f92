// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import QtQuick.Window 2.15
import VorlixPlugin 1.0
import "qrc:/qml/Legend"

Item {
    id: window

    width: 600
    height: 400

    Component {
        id: plotterComponent

        BarPlotter {
        }
    }

    Component {
        id: edgeComponent

        LegendDropArea {
        }
    }

    Component {
        id: verticalComponent

        VerticalLegend {
        }
    }

    Component {
        id: declaredComponent

        Item {
            readonly property Item inner: legend

            anchors.fill: parent

            VerticalLegend {
                id: legend

                x: 300
                y: 200
                plotterList: []
            }
        }
    }

    PlotCase {
        id: testCase

        property var list

        name: "droparea"

        function init() {
            list = [0, 1].map((i) => createTemporaryObject(plotterComponent, testCase, { name: "plotter " + i }));
        }

        function edge(properties) {
            return createTemporaryObject(edgeComponent, window, Object.assign({ plotterList: list }, properties));
        }

        function top(properties) {
            return edge(Object.assign({ width: 600 }, properties));
        }

        function legendAt(x, y) {
            const legend = verticalComponent.createObject(window, { x: x, y: y, plotterList: list });
            settle();
            return legend;
        }

        /// Takes a legend at its title bar to a place of the window; it begins to move after a few pixels.
        function carry(from, to, release) {
            tools.drag(testCase.Window.window, from, to, release);
            settle();
        }

        function drop(at) {
            tools.release(testCase.Window.window, at);
            settle();
        }

        /// The horizontal bar or the vertical legend that stands at an edge, or null.
        function docked(area) {
            const found = textsIn(area).filter((text) => text.text === "plotter 0");
            return found.length === 1 ? found[0] : null;
        }

        function legendsIn(item) {
            return textsIn(item).filter((text) => text.text === "plotter 0").length;
        }

        /// The container at the edge: the child without a mouse or drop area of its own.
        function container(area) {
            for (let i = 0; i < area.children.length; ++i) {
                if (area.children[i] !== area.dropArea)
                    return rectIn(area.children[i], area);
            }
            return null;
        }

        function test_defaults() {
            const area = edge({});
            compare(area.hDirection, true);
            compare(area.extendLength, 60);
            compare(area.extendDropArea, 50);
            compare(legendsIn(area), 0);
        }

        function test_theDropAreaLiesAlongTheEdge_data() {
            return [
                { tag: "down", properties: { width: 300, height: 9 }, rect: Qt.rect(0, 0, 300, 50) },
                { tag: "up", properties: { width: 300, height: 9, extendDropArea: -40 }, rect: Qt.rect(0, -40, 300, 40) },
                { tag: "right", properties: { hDirection: false, width: 9, height: 300 }, rect: Qt.rect(0, 0, 50, 300) },
                { tag: "left", properties: { hDirection: false, width: 9, height: 300, extendDropArea: -40 },
                    rect: Qt.rect(-40, 0, 40, 300) }
            ];
        }

        function test_theDropAreaLiesAlongTheEdge(row) {
            const area = edge(row.properties);
            compareRect(rectIn(area.dropArea, area), row.rect, "drop area");
        }

        function test_aLegendOverTheEdgeIsStoodInFor_data() {
            return [
                { tag: "top", properties: { width: 600 }, to: Qt.point(300, 20), container: Qt.rect(0, 0, 600, 60) },
                { tag: "bottom", properties: { width: 600, y: 400, extendLength: -70, extendDropArea: -50 },
                    to: Qt.point(300, 380), container: Qt.rect(0, -70, 600, 70) },
                { tag: "left", properties: { hDirection: false, height: 400, extendLength: 150 }, to: Qt.point(20,
                    200), container: Qt.rect(0, 0, 150, 400) },
                { tag: "right", properties: { hDirection: false, height: 400, x: 600, extendLength: -150,
                    extendDropArea: -50 }, to: Qt.point(580, 200), container: Qt.rect(-150, 0, 150, 400) }
            ];
        }

        function test_aLegendOverTheEdgeIsStoodInFor(row) {
            const area = edge(row.properties);
            const legend = legendAt(200, 150);
            compare(row.properties.hDirection === false ? container(area).width : container(area).height, 0);
            carry(Qt.point(250, 160), row.to, false);
            tryCompare(legend, "opacity", 0);
            compareRect(container(area), row.container, "container");
            compare(legendsIn(area), 1);
            verify(docked(area));
            // Away again: as if nothing had been.
            tools.drag(testCase.Window.window, row.to, row.to, false);
            carry(row.to, Qt.point(300, 200), false);
            tryCompare(legend, "opacity", 1);
            compare(row.properties.hDirection === false ? container(area).width : container(area).height, 0);
            wait(0);
            compare(legendsIn(area), 0);
            // And dropped there.
            carry(Qt.point(300, 200), row.to, true);
            wait(0);
            compare(legendsIn(area), 1);
            compareRect(container(area), row.container, "container after the drop");
            compare(legendsIn(window), 1); // the dragged one is gone
            mouseClick(docked(area), 5, 5);
            compare(list[0].visible, false);
        }

        function test_theBarHasAHandle() {
            const area = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            mouseMove(window, 500, 300);
            const bars = rectanglesIn(area, (item) => item.width === 3);
            compare(bars.map((bar) => rectIn(bar, area).x), [12, 18]);
            verify(bars.every((bar) => Qt.colorEqual(bar.color, window.Material.primary)));
            mouseMove(window, 15, 30);
            verify(bars.every((bar) => Qt.colorEqual(bar.color, window.Material.accent)));
            mouseMove(window, 500, 300);
            verify(bars.every((bar) => Qt.colorEqual(bar.color, window.Material.primary)));
            const legend = seen(area, (item) => item.currColorSelected !== undefined)[0];
            compare(rectIn(legend, area).x, 21);
            compare(rectIn(legend, area).right, 600);
        }

        function test_aDockedBarCanBeDraggedOutAndBack() {
            const area = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            compare(container(area).height, 60);
            carry(Qt.point(10, 30), Qt.point(200, 250), true);
            compare(container(area).height, 0);
            compare(legendsIn(area), 0);
            compare(legendsIn(window), 1);
            const free = textsIn(window).filter((text) => text.text === "plotter 0")[0];
            const handle = rectanglesIn(window, (item) => item.width === 3)[0];
            const place = rectIn(handle, window);
            verify(Math.abs(place.x - 200) < 30 && Math.abs(place.y + place.height / 2 - 250) < 45,
                "the bar stays where it was dropped: " + place);
            carry(Qt.point(place.x + 1, place.y + 5), Qt.point(100, 20), true);
            compare(container(area).height, 60);
            wait(0);
            compare(legendsIn(window), 1);
            compare(legendsIn(area), 1);
        }

        function test_aLegendDraggedOutHasItsOwnSize_data() {
            return [
                { tag: "top", properties: { width: 600 }, dock: Qt.point(300, 20), handle: Qt.point(10, 30),
                    to: Qt.point(200, 250), size: Qt.size(21 + 250, 30) },
                { tag: "straight up from the bottom", properties: { width: 600, y: 400, extendLength: -70,
                    extendDropArea: -50 }, dock: Qt.point(300, 380), handle: Qt.point(10, 365), to: Qt.point(10, 100),
                    size: Qt.size(21 + 250, 30) },
                { tag: "left", properties: { hDirection: false, height: 400, extendLength: 150 },
                    dock: Qt.point(20, 200), handle: Qt.point(75, 18), to: Qt.point(300, 250), size: Qt.size(200, 96) },
                { tag: "right", properties: { hDirection: false, height: 400, x: 600, extendLength: -150,
                    extendDropArea: -50 }, dock: Qt.point(580, 200), handle: Qt.point(525, 18), to: Qt.point(200, 250),
                    size: Qt.size(200, 96) }
            ];
        }

        function test_aLegendDraggedOutHasItsOwnSize(row) {
            const area = edge(row.properties);
            legendAt(200, 150);
            carry(Qt.point(250, 160), row.dock, true);
            carry(row.handle, row.to, true);
            compare(legendsIn(area), 0);
            compare(legendsIn(window), 1);
            let legend = docked(window);
            while (legend.parent !== window)
                legend = legend.parent;
            compare(Qt.size(legend.width, legend.height), row.size);
        }

        function test_aBarDraggedOutHasThreeColumnsAtMost() {
            list = [0, 1, 2, 3, 4].map((i) => createTemporaryObject(plotterComponent, testCase, { name: "plotter " + i }));
            top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            carry(Qt.point(10, 30), Qt.point(100, 250), true);
            const columns = textsIn(window).map((text) => rectIn(text, window).x);
            compare(columns.length, 5);
            compare(new Set(columns).size, 3);
        }

        function test_anEmptyBarDraggedOutCanBeTakenAgain() {
            list = [];
            const area = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            carry(Qt.point(10, 30), Qt.point(100, 250), true);
            compare(container(area).height, 0);
            const handles = rectanglesIn(window, (item) => item.width === 3);
            compare(handles.map((handle) => handle.parent.height), [30, 30]);
        }

        function test_aBarReleasedAtItsEdgeSnapsBack() {
            const area = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            carry(Qt.point(10, 20), Qt.point(60, 45), true);
            compare(container(area).height, 60);
            const bar = rectanglesIn(area, (item) => item.height === 60)[0];
            compareRect(rectIn(bar, area), Qt.rect(0, 0, 600, 60), "bar");
        }

        function test_aVerticalDockedLegendMovesToAnotherEdge() {
            const left = edge({ hDirection: false, y: 100, height: 300, extendLength: 150 });
            const above = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(20, 250), true);
            compare(legendsIn(left), 1);
            carry(Qt.point(75, 118), Qt.point(300, 20), true);
            wait(0);
            compare(legendsIn(left), 0);
            compare(container(left).width, 0);
            compare(legendsIn(above), 1);
            compare(legendsIn(window), 1);
        }

        function test_aLegendTakenAwayUnderAnotherAreaIsNoticed() {
            const above = top();
            const left = edge({ hDirection: false, height: 400, extendLength: 150 }); // over the corner of the other
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            compare(legendsIn(above), 1);
            carry(Qt.point(10, 30), Qt.point(20, 300), true);
            wait(0);
            compare(container(above).height, 0);
            compare(legendsIn(above), 0);
            compare(legendsIn(left), 1);
            compare(legendsIn(window), 1);
        }

        function test_anOccupiedEdgeTakesNoSecondLegend() {
            const area = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            const second = legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 30), true);
            wait(0);
            compare(second.opacity, 1);
            compare(legendsIn(area), 1);
            compare(legendsIn(window), 2);
            second.destroy();
        }

        function test_aDeclaredLegendIsReplacedToo() {
            const area = top();
            const declared = createTemporaryObject(declaredComponent, window);
            settle();
            carry(Qt.point(350, 210), Qt.point(300, 20), true);
            compare(legendsIn(area), 1);
            compare(declared.inner, null);
        }

        function test_theStandInFollowsTheList() {
            const area = top();
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            area.plotterList = [list[1]];
            settle();
            compare(legendsIn(area), 0);
            textReading(area, "plotter 1");
        }

        function test_anEdgeMayGoWithItsLegend() {
            const area = edgeComponent.createObject(window, { width: 600, plotterList: list });
            legendAt(200, 150);
            carry(Qt.point(250, 160), Qt.point(300, 20), true);
            area.destroy();
            wait(0);
            compare(legendsIn(window), 0);
        }
    }
}
