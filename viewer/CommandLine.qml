// SPDX-License-Identifier: MIT
import QtQml 2.15

// The command line that shows the same in another window.
QtObject {
    property QtObject scene
    property QtObject plot

    function quoted(text) {
        return /^[\w@%+=:,./-]+$/.test(text) ? text : "'" + String(text).replace(/'/g, "'\\''") + "'";
    }

    function text() {
        const files = scene.files;
        const hints = files.length > 0 ? files[0].hints : ({});
        const axis = plot.axisX;
        const switches = [["--follow", hints.follow], ["--" + scene.look, scene.look], ["--log", plot.axisY.logScale],
            ["--" + scene.colors, scene.colors]];
        const values = [["--column", hints.column], ["--x-column", hints.xColumn], ["--separator", hints.separator],
            ["--decimal-point", hints.decimalPoint], ["--skip-lines", hints.skipLines], ["--start", scene.start],
            ["--step", scene.step], ["--unit", scene.unit], ["--smooth", scene.smoothDepth > 1 ? scene.smoothDepth : 0],
            ["--range", axis.min + ":" + axis.max]];
        return ["vorlixview"].concat(switches.filter(option => option[1]).map(option => option[0]),
            ...values.filter(option => option[1]).map(option => [option[0], quoted(option[1])]),
            files.map(file => quoted(file.path))).join(" ");
    }

}
