// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

Item {
    id: scene

    width: 1000
    height: 700

    LinearXAxis {
        id: xAxis

        x: 100
        y: 100
        width: 600
    }

    Text {
        id: metrics

        visible: false
        font.pointSize: 9
        textFormat: Text.PlainText
    }

    SPlotQML {
        id: plot

        visible: false
    }

    LinearYAxis {
        id: yAxis

        x: 100
        y: 150
        width: 600
        height: 400
    }

    PlotCase {
        name: "axes"

        function init() {
            xAxis.width = 600;
            xAxis.x = 100;
            xAxis.minTickWidth = 70;
            xAxis.axisTextFunc = null;
            xAxis.rectArea = Qt.rect(0, 0, 1, 1);
            yAxis.x = 100;
            yAxis.height = 400;
            yAxis.tickHeight = 50;
            yAxis.isLogScale = false;
            yAxis.axisTextFunc = null;
            yAxis.rectArea = Qt.rect(0, 0, 1, 1);
        }

        // The oracle looks for the step by trying: 1000^k is the largest one that fits into the length, and the step is the
        // smallest power of two times it of which no more than `most` fit.

        function thousandBelow(length) {
            let k = -120;
            while (Number("1e" + 3 * (k + 1)) <= length)
                ++k;
            return Number("1e" + 3 * k);
        }

        function stepFor(length, most) {
            const unit = thousandBelow(length);
            let power = -40;
            while (Math.pow(2, power) * unit * most < length * (1 - 1e-14))
                ++power;
            return Math.pow(2, power) * unit;
        }

        function marks() {
            return rectanglesIn(xAxis, (item) => item.width === 1 && item.height === 8);
        }

        function lines() {
            return rectanglesIn(yAxis, (item) => item.height === 1 && item.width === yAxis.width);
        }

        /// A number from a fixed sequence, so that a failure can be repeated.
        property int seed: 1

        function random() {
            seed = (seed * 16807) % 2147483647;
            return seed / 2147483647;
        }

        function randomLength() {
            return Math.pow(10, -17 + 32 * random());
        }

        function near(actual, expected, scale, what) {
            expect(Math.abs(actual - expected) <= 1e-6 * scale, () => what + ": " + actual + " instead of " + expected);
        }

        function test_coloursAreThoseOfMaterialGrey() {
            for (const axis of [xAxis, yAxis]) {
                compare(axis.axisLineColor, "#e0e0e0");
                compare(axis.axisBaseColor, "#bdbdbd");
                compare(axis.axisTextColor, "#616161");
            }
        }

        function test_defaults() {
            compare(xAxis.minTickWidth, 70);
            compare(xAxis.axisTextFunc, null);
            compare(yAxis.tickHeight, 50);
            compare(yAxis.isLogScale, false);
            compare(yAxis.axisTextFunc, null);
            compare(yAxis.z, -1);
        }

        function test_xTicksOfHundredsOfRectangles() {
            for (let round = 0; round < 200; ++round) {
                const length = randomLength();
                const start = (random() - 0.3) * length * (round % 3 === 0 ? 1000 : 2);
                xAxis.width = Math.floor(40 + random() * 1000);
                xAxis.rectArea = Qt.rect(start, 5, length, 7);
                const what = round + ": " + xAxis.rectArea + " at " + xAxis.width;
                const most = xAxis.width / 70;
                const step = stepFor(length, most);
                near(xAxis.dxTick, step, step, what + ", step");

                // All multiples inside, from the left; then as many as a rounded maximum allows.
                const values = [];
                for (let k = Math.ceil(start / step - 1e-9); k * step <= start + length * (1 + 1e-12); ++k)
                    values.push(k * step);
                const count = Math.min(values.length, Math.round(most));
                const found = marks();
                expect(Math.abs(found.length - count) <= (atEdge(values, start, length, step) ? 1 : 0),
                    () => what + ": " + found.length + " ticks instead of " + count);
                for (let i = 0; i < Math.min(found.length, count); ++i)
                    near(rectIn(found[i], xAxis).x, (values[i] - start) / length * xAxis.width,
                        xAxis.width * (1 + Math.abs(start) / length), what + ", tick " + i);
            }
        }

        /// Whether rounding decides if the last multiple is still inside.
        function atEdge(values, start, length, step) {
            const last = values.length > 0 ? values[values.length - 1] : start;
            return Math.abs(last - start - length) < 1e-9 * Math.max(length, Math.abs(start))
                || Math.abs(last + step - start - length) < 1e-9 * Math.max(length, Math.abs(start));
        }

        function test_xTicksAreAtLeastTheirWidthApart() {
            for (let round = 0; round < 100; ++round) {
                xAxis.rectArea = Qt.rect(0, 0, randomLength(), 1);
                xAxis.minTickWidth = 30 + random() * 100;
                const found = marks();
                for (let i = 1; i < found.length; ++i)
                    expect(rectIn(found[i], xAxis).x - rectIn(found[i - 1], xAxis).x >= xAxis.minTickWidth - 1e-6,
                        () => "too near");
            }
        }

        function test_xTickCountIsRoundedAsARepeaterDoes_data() {
            // 3 multiples of 0.5 lie in [0, 1]: the maximum decides.
            return [
                { tag: "1.4", width: 98, count: 1 },
                { tag: "1.6", width: 112, count: 2 },
                { tag: "2.0", width: 140, count: 2 },
                { tag: "2.4", width: 168, count: 2 },
                { tag: "2.6", width: 182, count: 3 }
            ];
        }

        function test_xTickCountIsRoundedAsARepeaterDoes(row) {
            xAxis.width = row.width;
            compare(marks().length, row.count);
        }

        function test_xLabels() {
            xAxis.rectArea = Qt.rect(100, 0, 50, 1);
            const labels = textsIn(xAxis);
            compare(labels.map((label) => label.text), ["104.00", "112.00", "120.00", "128.00", "136.00", "144.00"]);
            for (const label of labels) {
                compare(label.font.pointSize, 9);
                compare(label.color, xAxis.axisTextColor);
                compare(rectIn(label, xAxis).y, 9);
                const middle = rectIn(label, xAxis).x + label.width / 2;
                near(middle, (Number(label.text) - 100) / 50 * 600, 600, label.text);
            }
        }

        function test_xMarksHaveTheBaseColour() {
            xAxis.axisBaseColor = "red";
            for (const mark of marks())
                compare(mark.color, "#ff0000");
            xAxis.axisBaseColor = "#bdbdbd";
        }

        function test_xLabelsOfAFunction() {
            xAxis.rectArea = Qt.rect(0, 0, 4, 1);
            xAxis.axisTextFunc = (value) => "<" + value + ">";
            compare(textsIn(xAxis).map((label) => label.text), ["<0>", "<0.5>", "<1>", "<1.5>", "<2>", "<2.5>", "<3>",
                "<3.5>", "<4>"]);
        }

        function test_aLabelThatCannotBeComputedIsLeftOut_data() {
            return [
                { tag: "NaN", result: NaN },
                { tag: "infinite", result: -Infinity },
                { tag: "undefined", result: undefined },
                { tag: "null", result: null },
                { tag: "text with NaN", result: "NaNK" }
            ];
        }

        function test_aLabelThatCannotBeComputedIsLeftOut(row) {
            xAxis.rectArea = Qt.rect(0, 0, 4, 4);
            yAxis.rectArea = Qt.rect(0, 0, 4, 4);
            xAxis.axisTextFunc = (value) => value === 1 ? row.result : "t" + value;
            yAxis.axisTextFunc = xAxis.axisTextFunc;
            compare(textsIn(xAxis).map((label) => label.text), ["t0", "t0.5", "t1.5", "t2", "t2.5", "t3", "t3.5", "t4"]);
            compare(textsIn(yAxis).map((label) => label.text), ["t0", "t0.5", "t1.5", "t2", "t2.5", "t3", "t3.5"]);
            yAxis.isLogScale = true;
            yAxis.axisTextFunc = () => row.result;
            compare(textsIn(yAxis).length, 0);
        }

        function test_everyTickOfASecondHasALabel_data() {
            return [1, 2, 4].map((seconds) => ({ tag: seconds + " s", seconds: seconds }));
        }

        function test_everyTickOfASecondHasALabel(row) {
            xAxis.x = 0;
            xAxis.width = 1200 - 72; // that of a plot of 1200 pixels
            xAxis.axisTextFunc = plot.format_time;
            xAxis.rectArea = Qt.rect(0, 0, row.seconds, 1);
            const all = marks();
            verify(all.length >= 9);
            const labels = textsIn(xAxis).map((label) => rectIn(label, xAxis));
            compare(labels.length, all.length);
            for (let i = 1; i < labels.length; ++i)
                expect(labels[i].left - labels[i - 1].right > 3.9, () => "labels can't be told apart: " + labels);
        }

        function test_anXLabelIsLeftOutOnlyWhereTwoWouldOverlap() {
            let complete = 0;
            for (let round = 0; round < 200; ++round) {
                const length = randomLength();
                xAxis.width = Math.floor(200 + random() * 700);
                xAxis.x = Math.floor(random() * (1000 - xAxis.width));
                xAxis.rectArea = Qt.rect((random() - 0.5) * length * 20, 0, length, 1);
                const labels = [];
                for (let i = 0; i < xAxis.tickCount; ++i) {
                    const text = xAxis.labelText(xAxis.xTickOffset + i * xAxis.dxTick);
                    metrics.text = text;
                    labels.push(Qt.rect(xAxis.labelX(i, metrics.implicitWidth), 0, metrics.implicitWidth, 1));
                }
                if (labels.some((label, i) => i > 0 && overlap(labels[i - 1], label)))
                    continue;

                expect(textsIn(xAxis).length === marks().length, () => xAxis.rectArea + " at " + xAxis.width + ": "
                    + textsIn(xAxis).length + " labels at " + marks().length + " ticks");
                ++complete;
            }
            verify(complete > 50, "only " + complete + " had room");
        }

        function test_xLabelsNeverOverlapAndStayInside() {
            for (let round = 0; round < 200; ++round) {
                const length = randomLength();
                xAxis.width = Math.floor(random() * 1000);
                xAxis.x = Math.floor(random() * (1000 - xAxis.width));
                xAxis.rectArea = Qt.rect((random() - 0.5) * length * 100, 0, length, 1);
                const what = xAxis.rectArea + " at " + xAxis.width;
                const labels = textsIn(xAxis).map((label) => rectIn(label, scene));
                expect(labels.length <= marks().length, () => what);
                for (let i = 0; i < labels.length; ++i) {
                    expect(labels[i].left >= 0 && labels[i].right <= 1000, () => what + " leaves its parent: " + labels[i]);
                    expect(i === 0 || !overlap(labels[i - 1], labels[i]), () => what + ": two labels overlap");
                }
                if (labels.length === 0)
                    expect(marks().length === 0, () => what + ": ticks, but no label");
            }
        }

        function test_longLabelsAreThinnedOutAtMultiples() {
            xAxis.axisTextFunc = (value) => "a rather long label " + value;
            for (let start = 0; start < 4; start += 0.1) {
                xAxis.rectArea = Qt.rect(start, 0, 10, 1);
                const values = textsIn(xAxis).map((label) => Number(label.text.split(" ").pop()));
                verify(values.length >= 2);
                for (const value of values)
                    compare(value % 4, 0, "a pan must not move labels to other ticks");
            }
        }

        function test_noTicksWithoutAFiniteLength_data() {
            return [
                { tag: "0", length: 0 },
                { tag: "negative", length: -10 },
                { tag: "NaN", length: NaN },
                { tag: "infinite", length: Infinity },
                { tag: "minus infinite", length: -Infinity },
                { tag: "the smallest", length: 5e-324 }
            ];
        }

        function test_noTicksWithoutAFiniteLength(row) {
            xAxis.rectArea = Qt.rect(0, 0, row.length, row.length);
            yAxis.rectArea = Qt.rect(0, 0, row.length, row.length);
            compare(marks().length, 0);
            compare(textsIn(xAxis).length, 0);
            compare(lines().length, 0);
            compare(textsIn(yAxis).length, 0);
            // And they come back.
            xAxis.rectArea = Qt.rect(0, 0, 1, 1);
            yAxis.rectArea = Qt.rect(0, 0, 1, 1);
            compare(marks().length, 9);
            compare(lines().length, 8);
        }

        function test_noTicksFromNowhere_data() {
            return [{ tag: "NaN", start: NaN }, { tag: "infinite", start: Infinity }, { tag: "minus infinite",
                start: -Infinity }];
        }

        function test_noTicksFromNowhere(row) {
            xAxis.rectArea = Qt.rect(row.start, 0, 1, 1);
            compare(marks().length, 0);
        }

        function test_noTicksOnAnAxisWithoutLength() {
            for (const length of [0, -1, -100]) {
                xAxis.width = length;
                yAxis.height = length;
                compare(marks().length, 0);
                compare(lines().length, 0);
            }
        }

        function test_farAwayFromZero() {
            xAxis.rectArea = Qt.rect(1e18, 0, 1e-3, 1); // the step is far below what a number of that size can tell
            verify(marks().length <= 9);
            for (const label of textsIn(xAxis))
                verify(!/NaN/.test(label.text));
        }

        function test_yTicksOfHundredsOfRectangles() {
            for (let round = 0; round < 200; ++round) {
                const length = randomLength();
                yAxis.height = Math.floor(50 + random() * 600);
                yAxis.rectArea = Qt.rect(3, (random() - 0.5) * length, 11, length);
                const what = round + ": " + yAxis.rectArea + " at " + yAxis.height;
                const most = Math.floor(yAxis.height / 50);
                const step = stepFor(length, most);
                near(yAxis.dyTicks, step, step, what + ", step");
                const values = [];
                for (let k = 0; k * step <= length && values.length < most; ++k)
                    values.push(k * step);
                const found = lines();
                expect(Math.abs(found.length - values.length) <= (atEdge(values, 0, length, step) ? 1 : 0),
                    () => what + ": " + found.length + " lines instead of " + values.length);
                for (let i = 0; i < Math.min(found.length, values.length); ++i) {
                    const line = rectIn(found[i], yAxis);
                    near(line.y, yAxis.height - values[i] / length * yAxis.height, yAxis.height, what + ", line " + i);
                    compare(line.x, 0);
                }
            }
        }

        function test_yAxisLowerThanATickHasNone() {
            yAxis.height = 49;
            compare(lines().length, 0);
            yAxis.height = 50;
            compare(lines().length, 1);
        }

        function test_yLabels() {
            yAxis.rectArea = Qt.rect(0, 0, 50, 100);
            const labels = textsIn(yAxis);
            compare(labels.map((label) => label.text), ["0", "16", "32", "48", "64", "80", "96"]);
            for (const label of labels) {
                const place = rectIn(label, yAxis);
                compare(label.font.pointSize, 9);
                compare(label.color, yAxis.axisTextColor);
                near(place.right, -16, 100, "right edge of " + label.text);
                near(place.y + place.height / 2, 400.5 - Number(label.text) * 4, 400, "middle of " + label.text);
            }
        }

        function test_yLabelsEndInOneColumn_data() {
            return [
                { tag: "room for all", x: 100, texts: ["0.00", "16.00", "32.00"], margin: 16 },
                { tag: "the widest fits just so", x: 60, texts: ["0.00", "8.00K", "9.00K"], margin: 16 },
                { tag: "one is too wide", x: 60, texts: ["8.00K", "10.00K", "250.00K"], margin: undefined },
                { tag: "one is wider than the room", x: 60, texts: ["0.00", "1250000.00K"], margin: 0 },
                { tag: "no room is given", x: 0, texts: ["8.00K", "10.00K", "250000000.00K"], margin: 16 }
            ];
        }

        function test_yLabelsEndInOneColumn(row) {
            yAxis.x = row.x;
            yAxis.rectArea = Qt.rect(0, 0, 1, 4);
            yAxis.axisTextFunc = (value) => row.texts[Math.min(value * 2, row.texts.length - 1)];
            const labels = textsIn(yAxis);
            verify(labels.length > row.texts.length);
            const widest = Math.max(...labels.map((label) => label.implicitWidth));
            const margin = row.margin === undefined ? row.x - 4 - widest : row.margin;
            verify(margin >= 0 && margin <= 16);
            for (const label of labels) {
                const place = rectIn(label, scene);
                near(place.right, row.x - margin, 1, "right edge of " + label.text);
                expect(row.x === 0 || place.left >= 4 - 1e-6, () => label.text + " begins at " + place.left);
            }
        }

        function test_yLabelsThatAreHiddenTakeNoRoom() {
            yAxis.x = 60;
            yAxis.isLogScale = true;
            yAxis.rectArea = Qt.rect(0, 0, 1, 4);
            yAxis.axisTextFunc = (value) => Number.isInteger(value) ? value : 1e30; // shown at whole values only
            for (const label of textsIn(yAxis))
                near(rectIn(label, scene).right, 44, 1, "right edge of " + label.text);
        }

        function test_yLabelsOfAFunction() {
            yAxis.rectArea = Qt.rect(0, 0, 1, 4);
            yAxis.axisTextFunc = (value) => value + " V";
            compare(textsIn(yAxis).map((label) => label.text), ["0 V", "0.5 V", "1 V", "1.5 V", "2 V", "2.5 V", "3 V",
                "3.5 V"]);
        }

        function test_yLinesHaveTheLineColour() {
            for (const line of lines())
                compare(line.color, "#e0e0e0");
        }

        function test_logScaleShowsWholePowersOnly() {
            yAxis.isLogScale = true;
            yAxis.rectArea = Qt.rect(0, 0, 1, 4);
            compare(textsIn(yAxis).map((label) => label.text), [0, 1, 2, 3].map((power) => "10<sup>" + power + "</sup>"));
            compare(lines().length, 4);
            yAxis.axisTextFunc = (value) => (value + 0.5).toFixed(2);
            compare(textsIn(yAxis).map((label) => label.text), [0, 1, 2, 3].map((power) => "10<sup>" + power + "</sup>"));
        }

        function test_logScaleLeavesOutWhatIsNoNumber() {
            yAxis.isLogScale = true;
            yAxis.rectArea = Qt.rect(0, 0, 1, 4);
            yAxis.axisTextFunc = (value) => value < 2 ? value.toFixed(2) : value + "K";
            compare(textsIn(yAxis).map((label) => label.text), ["10<sup>0</sup>", "10<sup>1</sup>"]);
            compare(lines().length, 4);
        }
    }
}
