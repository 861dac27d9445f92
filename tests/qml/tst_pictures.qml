// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

/// The whole plot as a person sees it: colours at places that are computed by hand.
Item {
    id: window

    width: 600
    height: 400

    Component {
        id: sceneComponent

        PlotScene {
        }
    }

    PlotCase {
        property PlotScene scene
        property var picture

        name: "pictures"

        function same(x, y, expected, what) {
            const color = picture.pixel(Math.round(x), Math.round(y));
            const wanted = Qt.darker(expected, 1); // a colour value instead of a string
            const isNear = ["r", "g",
                "b"].every((part) => Math.abs(color[part] - wanted[part]) < 1.5 / 255); // blending rounds
            expect(isNear, () => what + " at " + x + ", " + y + ": " + color + " instead of " + expected);
        }

        function show(theme) {
            scene = createTemporaryObject(sceneComponent, window);
            scene.Material.theme = theme;
            tryVerify(() => scene.chart.zoomRect.width === 1000 && scene.strip.zoomRect.width === 1000);
            settle();
        }

        function take() {
            settle();
            picture = pictureOf(scene);
        }

        function themes() {
            return [
                { tag: "light", theme: Material.Light, ground: "#fafafa" },
                { tag: "dark", theme: Material.Dark, ground: "#303030" }
            ];
        }

        /// Whether letters of a colour stand in a place: some pixel has it, or nearly so.
        function hasInk(place, ink, ground) {
            const wanted = Qt.darker(ink, 1); // a colour value instead of a string
            const paper = Qt.darker(ground, 1);
            let nearest = 1;
            for (let y = Math.floor(place.top); y < place.bottom; ++y) {
                for (let x = Math.floor(place.left); x < place.right; ++x) {
                    const pixel = picture.pixel(x, y);
                    const reached = (pixel.r - wanted.r) / (paper.r - wanted.r);
                    nearest = Math.min(nearest, Math.abs(reached));
                }
            }
            return nearest < 0.25;
        }

        // 600 x 400: the chart is at 60, 12 and 528 x 246, the strip at 60, 294 and 528 x 58, the legend at 0, 358.
        // The ramp rises from 0 to 99.9, which is 1/1.05 of the height.

        function test_theWholePlot_data() {
            return themes();
        }

        function test_theWholePlot(row) {
            show(row.theme);
            take();
            for (const [x, y] of [[2, 2], [597, 2], [2, 397], [597, 397], [30, 270], [300, 288], [594, 320]])
                same(x, y, row.ground, "ground");
            // Bars below the ramp, ground above it.
            for (let part = 0.1; part < 0.95; part += 0.1) {
                const top = 258 - 244 * part * 99.9 / 104.895;
                same(60 + 528 * part, top + 4, "#2040c0", "bar");
                same(60 + 528 * part, 257, "#2040c0", "foot of a bar");
                if (Math.abs((top - 4 - 258) % 37.5) > 2)
                    same(60 + 528 * part, top - 6, row.ground, "above a bar");
            }
            // Lines of the y axis: at most 4 fit into 104.9, so every 32: at 32, 64, 96.
            for (const value of [32, 64, 96]) {
                const y = Math.floor(258 - value / 104.895 * 246);
                let found = false;
                for (const off of [-1, 0, 1])
                    found = found || Qt.colorEqual(picture.pixel(70, y + off), "#e0e0e0");
                verify(found, "line of " + value + ": " + [-2, -1, 0, 1, 2].map((off) => picture.pixel(70, y + off)));
            }
            // Marks of the x axis: at most 7.5 fit into 1000, so every 250.
            for (const value of [0, 250, 500, 750]) {
                const x = Math.round(60 + value / 1000 * 528);
                same(x, 258, "#bdbdbd", "upper end of a mark");
                same(x, 265, "#bdbdbd", "lower end of a mark");
                same(x, 266, row.ground, "below a mark");
                same(x + 3, 260, row.ground, "beside a mark");
            }
            // The strip: lines, ramp and the band over all of it.
            same(300, 294, "#e0e0e0", "upper line");
            same(70, 351, "#e0e0e0", "lower line");
            const veil = Qt.tint(row.ground, "#4d4dc2e6");
            same(70, 310, veil, "band");
            same(580, 340, Qt.tint("#2040c0", "#4d4dc2e6"), "band over a bar");
            same(59, 310, row.ground, "left of the band");
            same(588, 310, row.ground, "right of the band");
        }

        function test_everyTextIsThere_data() {
            return themes();
        }

        function test_everyTextIsThere(row) {
            show(row.theme);
            take();
            const texts = textsIn(scene.plot);
            const names = texts.map((text) => text.text).sort();
            compare(names, ["0", "0", "0.00", "1000.00 s", "1000.00 s", "250.00 s", "32.00", "500.00 s", "64.00",
                "750.00 s", "96.00", "bars", "other"]);
            for (const text of texts) {
                const ink = text.text === "other" ? "#bdbdbd" : "#616161";
                verify(Qt.colorEqual(text.color, ink), text.text);
                verify(hasInk(lettersIn(text, scene), ink, row.ground), "no ink: " + text.text);
            }
        }

        function test_theLegendsDots_data() {
            return themes();
        }

        function test_theLegendsDots(row) {
            show(row.theme);
            scene.other.visible = true;
            scene.other.visible = false;
            take();
            for (const [plotter, ink] of [[scene.bars, "#2040c0"], [scene.other, "#bdbdbd"]]) {
                const cell = rectIn(textReading(scene.plot, plotter.name).parent.parent, scene);
                same(cell.x + 17, cell.y + 15, ink, "dot");
                same(cell.x + 6, cell.y + 15, row.ground, "before the dot");
                same(cell.x + 17, cell.y + 5, row.ground, "above the dot");
            }
        }

        function test_whileZooming_data() {
            return themes();
        }

        function test_whileZooming(row) {
            show(row.theme);
            mousePress(scene, 120, 40);
            mouseMove(scene, 260, 120, 10, Qt.LeftButton);
            mouseMove(scene, 280, 120, 10, Qt.LeftButton);
            take();
            same(200, 80, "#ff0000", "line");
            same(111, 40, "#ff0000", "square");
            same(123, 50, Qt.tint(row.ground, "#4d4dc2e6"), "band");
            same(279, 30, Qt.tint(row.ground, "#4d4dc2e6"), "band");
            same(282, 30, row.ground, "behind the band");
            const text = textReading(scene.plot, "Zoom In");
            verify(hasInk(lettersIn(text, scene), scene.Material.foreground, row.ground), "no ink");
            mouseRelease(scene, 280, 30);
            take();
            same(200, 80, row.ground, "no line any more");
        }

        function test_zoomedIn_data() {
            return themes();
        }

        function test_zoomedIn(row) {
            show(row.theme);
            // 10 of the 1000 bars, one in a pixel column of 52.8.
            scene.chart.zoomRect = Qt.rect(500, 0, 10, 10);
            scene.plot.recalcNavigator();
            take();
            compare(scene.chart.zoomRect.height, 50.9 * 1.05);
            for (let bar = 0; bar < 10; ++bar) {
                const top = 258 - (500 + bar) / 10 / (50.9 * 1.05) * 246;
                same(60 + 52.8 * (bar + 0.5), top + 2, "#2040c0", "bar " + bar);
                same(60 + 52.8 * (bar + 0.5), top - 2, row.ground, "above bar " + bar);
            }
            // The strip shows 70.4 around it, the band is 75 wide; thumb and track at the bottom.
            const strip = scene.strip.zoomRect;
            fuzzyCompare(strip.width, 10 * 528 / 75, 1e-6);
            const left = 60 + (500 - strip.x) / strip.width * 528;
            same(left + 1, 296, Qt.tint(row.ground, "#4d4dc2e6"), "left of the band");
            same(left + 73, 296, Qt.tint(row.ground, "#4d4dc2e6"), "right of the band");
            same(left - 2, 296, row.ground, "before the band");
            same(left + 77, 296, row.ground, "behind the band");
            const thumb = 60 + strip.x / (1000 - strip.width) * (528 - 40);
            same(thumb + 20, 349, scene.Material.primary, "thumb");
            const track = picture.pixel(500, 349);
            verify(!Qt.colorEqual(track, row.ground) && !Qt.colorEqual(track, "#2040c0"), "track: " + track);
        }

        function test_switchedOffPartsLeaveGround_data() {
            return themes();
        }

        function test_switchedOffPartsLeaveGround(row) {
            show(row.theme);
            scene.plot.enableLegend = false;
            scene.plot.enableNavigatorBar = false;
            scene.plot.xAxis.visible = false;
            scene.plot.yAxis.visible = false;
            take();
            // The chart is at 12, 12 and 576 x 364 now.
            same(580, 370, "#2040c0", "bar");
            for (let y = 377; y < 400; ++y) {
                for (let x = 1; x < 600; x += 7)
                    same(x, y, row.ground, "below the chart");
            }
        }
    }
}
