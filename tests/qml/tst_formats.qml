// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

PlotCase {
    name: "formats"

    LinearXAxis {
        id: axis
    }

    SPlotQML {
        id: plot
    }

    function thresholds() {
        return [
            { tag: "zero", value: 0, number: "0", unit: "" },
            { tag: "below all", value: 9.99e-19, number: "0", unit: "" },
            { tag: "a", value: 1e-18, number: "1.00", unit: "a" },
            { tag: "below f", value: 9.9999e-16, number: "999.99", unit: "a" },
            { tag: "f", value: 1e-15, number: "1.00", unit: "f" },
            { tag: "below p", value: 9.9999e-13, number: "999.99", unit: "f" },
            { tag: "p", value: 1e-12, number: "1.00", unit: "p" },
            { tag: "below n", value: 9.9999e-10, number: "999.99", unit: "p" },
            { tag: "n", value: 1e-9, number: "1.00", unit: "n" },
            { tag: "below u", value: 9.9999e-7, number: "999.99", unit: "n" },
            { tag: "u", value: 1e-6, number: "1.00", unit: "u" },
            { tag: "below m", value: 9.9999e-4, number: "999.99", unit: "u" },
            { tag: "m", value: 1e-3, number: "1.00", unit: "m" },
            { tag: "below 1", value: 0.99999, number: "999.99", unit: "m" },
            { tag: "rounded up below 1", value: 0.999999, number: "1000.00", unit: "m" },
            { tag: "1", value: 1, number: "1.00", unit: "1" },
            { tag: "large", value: 16384, number: "16384.00", unit: "1" },
            { tag: "negative", value: -0.0025, number: "-2.50", unit: "m" },
            { tag: "negative below all", value: -1e-19, number: "0", unit: "" }
        ];
    }

    function test_format_num_data() {
        return thresholds();
    }

    function test_format_num(row) {
        const suffix = { "": "", a: "e-18", f: "e-15", p: "e-12", n: "e-9", u: "e-6", m: "e-3", "1": "" };
        compare(axis.format_num(row.value), row.number + suffix[row.unit]);
    }

    function test_format_time_data() {
        return thresholds();
    }

    function test_format_time(row) {
        const suffix = { "": "", a: " as", f: " fs", p: " ps", n: " ns", u: " us", m: " ms", "1": " s" };
        compare(plot.format_time(row.value), row.number + suffix[row.unit]);
    }

    function test_theNumberOfDecimalsCanBeChosen() {
        compare(axis.format_num(1.23456, 0), "1");
        compare(axis.format_num(1.23456e-5, 4), "12.3456e-6");
        compare(plot.format_time(1.23456, 3), "1.235 s");
        compare(plot.format_time(1.5e-12, 1), "1.5 ps");
    }
}
