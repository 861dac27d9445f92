// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

Rectangle {
    id: window

    width: 300
    height: 200
    color: "#4080c0"

    ChartTooltip {
        id: tooltip

        x: 50
        y: 50
    }

    PlotCase {
        name: "tooltip"

        function init() {
            tooltip.width = undefined;
            tooltip.height = undefined;
            tooltip.y2 = 0.8;
            tooltip.radius = 4;
        }

        function body() {
            const found = rectanglesIn(tooltip, (item) => Qt.colorEqual(item.color, "white"));
            compare(found.length, 1);
            return found[0];
        }

        function same(color, expected) {
            verify(Qt.colorEqual(color, expected), color + " instead of " + expected);
        }

        function test_sizes() {
            compare(tooltip.implicitWidth, 110);
            compare(tooltip.implicitHeight, 65);
            fuzzyCompare(tooltip.delta, 13, 1e-9);
            compareRect(rectIn(body(), tooltip), Qt.rect(0, 0, 110, 52), "body");
            compare(body().radius, 4);
        }

        function test_theBodyFollows() {
            tooltip.width = 200;
            tooltip.height = 100;
            tooltip.y2 = 0.5;
            tooltip.radius = 9;
            compare(tooltip.delta, 50);
            compareRect(rectIn(body(), tooltip), Qt.rect(0, 0, 200, 50), "body");
            compare(body().radius, 9);
        }

        function test_aBalloonWithATipAndAShadow() {
            settle();
            const picture = grabImage(window);
            same(picture.pixel(50 + 55, 50 + 20), "white");
            same(picture.pixel(50 + 55, 50 + 54), "white"); // the tip, near the body
            same(picture.pixel(50 + 55, 50 + 61), "white"); // near its point
            for (const [x, y] of [[40, 70], [40, 40], [155, 40], [40, 120]])
                same(picture.pixel(x, y), window.color);
            // Beside the tip the ground shows through the shadow, right and below only.
            for (const [x, y] of [[163, 80], [130, 105]]) {
                const shaded = picture.pixel(x, y);
                verify(shaded.b < window.color.b - 0.03, "no shadow at " + x + ", " + y + ": " + shaded);
            }
            compare(tooltip.layer.enabled, true);
            compare(tooltip.layer.samples, 8);
        }

        function test_theTipIsATriangleInTheMiddle() {
            tooltip.width = 200;
            tooltip.height = 100;
            tooltip.y2 = 0.6; // a tip of 40 by 40
            settle();
            const picture = grabImage(window);
            for (let y = 2; y < 38; y += 4) {
                const half = (40 - y) / 2;
                same(picture.pixel(50 + 100, 50 + 60 + y), "white");
                same(picture.pixel(Math.round(50 + 100 - half + 2), 50 + 60 + y), "white");
                same(picture.pixel(Math.round(50 + 100 + half - 3), 50 + 60 + y), "white");
                verify(!Qt.colorEqual(picture.pixel(Math.round(50 + 100 - half - 2), 50 + 60 + y), "white"));
                verify(!Qt.colorEqual(picture.pixel(Math.round(50 + 100 + half + 2), 50 + 60 + y), "white"));
            }
        }

        function test_applicationsPutTextOnIt() {
            const source = "import QtQuick 2.15; Rectangle { width: 10; height: 10; color: 'red'; anchors.centerIn: parent }";
            createTemporaryQmlObject(source, tooltip);
            settle();
            same(grabImage(window).pixel(50 + 55, 50 + 32), "red");
        }
    }
}
