// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0
import "qrc:/qml/utils.js" as Utils

PlotCase {
    name: "utils"

    function test_boundCutsBelowAndAbove() {
        compare(Utils.bound(5, 0, 10), 5);
        compare(Utils.bound(-1, 0, 10), 0);
        compare(Utils.bound(11, 0, 10), 10);
        compare(Utils.bound(0, 0, 10), 0);
        compare(Utils.bound(10, 0, 10), 10);
    }

    function test_boundLetsTheMaximumWinWhereTheTwoCross() {
        compare(Utils.bound(5, 10, 0), 0);
        compare(Utils.bound(-5, 10, 0), 0);
        compare(Utils.bound(50, 10, 0), 0);
    }

    function test_formatEventScalesFromEachThresholdOn_data() {
        return [
            { tag: "0", value: 0, text: "0.00" },
            { tag: "below 1", value: 0.004, text: "0.00" },
            { tag: "999.99", value: 999.99, text: "999.99" },
            { tag: "rounds up below K", value: 999.999, text: "1000.00" },
            { tag: "K", value: 1000, text: "1.00K" },
            { tag: "above K", value: 1234.5, text: "1.23K" },
            { tag: "below M", value: 999999, text: "1000.00K" },
            { tag: "M", value: 1e6, text: "1.00M" },
            { tag: "below G", value: 999999999, text: "1000.00M" },
            { tag: "G", value: 1e9, text: "1.00G" },
            { tag: "far above G", value: 1.5e13, text: "15000.00G" },
            { tag: "negative", value: -1.5, text: "-1.50" },
            { tag: "a large negative", value: -2e6, text: "-2000000.00" }
        ];
    }

    function test_formatEventScalesFromEachThresholdOn(row) {
        compare(Utils.format_event(row.value), row.text);
    }

    function test_varToStringWritesTheEntriesToTheConsole() {
        tools.takeConsole();
        Utils.varToString({ first: 1, second: "two" });
        compare(tools.takeConsole(), ["VALUES: \n - first:           1\n - second:          two\n"]);
    }

    function test_varToStringTakesTitleAndColumn() {
        tools.takeConsole();
        Utils.varToString({ a: true, longer_than_the_column: null }, "T", 8);
        compare(tools.takeConsole(), ["T: \n - a:   true\n - longer_than_the_column:null\n"]);
    }

    function test_varToStringWritesOwnEntriesOnly() {
        const heir = Object.create({ inherited: 1 });
        heir.own = 2;
        tools.takeConsole();
        Utils.varToString(heir, "T", 0);
        compare(tools.takeConsole(), ["T: \n - own:2\n"]);
    }
}
