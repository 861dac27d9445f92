// SPDX-License-Identifier: MIT
import QtQml 2.15
import QtQuick 2.15
import QtQuick.Window 2.15

// Everything that can be done, with its keys. What has no function is the plot's own: its key is played to it.
Item {
    id: commands

    /// The window.
    property QtObject scene
    /// The one that has the focus, or had it last.
    property QtObject plot
    property FileList files
    property bool active: true
    readonly property var all: [
        command("Open…", ["Ctrl+O"], () => scene.showDialog("open")),
        command("Close the file on top", ["Ctrl+W"], () => files.close(files.all.slice(-1))),
        command("Close all files", ["Ctrl+Shift+W"], () => files.close(files.all)),
        command("Open again what was closed", ["Ctrl+Z"], () => files.reopen()),
        command("Read all files again", ["R", "F5"], () => files.all.forEach(file => file.reader.reload())),
        command("How the file is read…", ["H"], () => scene.showFile()),
        command("Picture…", ["Ctrl+S"], () => scene.showPanel("PicturePanel.qml")),
        command("Values in view as CSV…", ["Ctrl+E"], () => scene.showDialog("table")),
        command("Lines", ["I"], () => toggleLook("line"), () => scene.look === "line"),
        command("Areas", ["A"], () => toggleLook("area"), () => scene.look === "area"),
        command("Logarithmic", ["L"], undefined, () => plot.axisY.logScale),
        command("Dark", ["D"], () => scene.colors = plot.theme.dark ? "light" : "dark", () => plot.theme.dark),
        command("Difference of the first two files", ["Ctrl+D"], () => scene.toggleDifference(), () => scene.difference),
        command("Files beneath each other", ["B"], () => scene.beneath = !scene.beneath, () => scene.beneath),
        command("Overview", ["O"], () => scene.overview = !scene.overview, () => scene.overview),
        command("Full screen", ["F11"], () => toggleFullScreen()),
        command("Zoom in", ["+", "Ctrl+Right"]),
        command("Zoom out", ["-", "Ctrl+Left"]),
        command("Zoom in on the values", ["Ctrl+Up"]),
        command("Zoom out of the values", ["Ctrl+Down"]),
        command("Show all", ["0"]),
        command("Show what was shown before", ["Backspace"]),
        command("Pan to the left", ["Left"]),
        command("Pan to the right", ["Right"]),
        command("Pan up", ["Up"]),
        command("Pan down", ["Down"]),
        command("Pan to the left by a page", ["PgUp"], () => plot.panBy(-0.9 * plot.plotArea.width)),
        command("Pan to the right by a page", ["PgDown"], () => plot.panBy(0.9 * plot.plotArea.width)),
        command("Go to the first value", ["Home"]),
        command("Go to the last value, and follow", ["End"]),
        command("Follow, or pause following", ["F"]),
        command("One cursor, two, or none", ["C"]),
        command("Move the cursor to the left", ["Shift+Left"]),
        command("Move the cursor to the right", ["Shift+Right"]),
        command("Region", ["M"], undefined, () => plot.regionVisible),
        command("Mark the highest peak", ["P"]),
        command("Mark the next peak to the left", [","]),
        command("Mark the next peak to the right", ["."]),
        command("Remove the mark", ["X"]),
        command("Copy the numbers of cursors, region and peak", ["Ctrl+C"], () => desktop.copy(plot.numbers())),
        command("Copy them as CSV", ["Ctrl+Shift+C"], () => desktop.copy(plot.numbers(true))),
        command("Copy as command", ["Ctrl+Alt+C"], () => desktop.copy(commandLine())),
        command("Menu", ["Ctrl+K", "?", "F1"], () => scene.showPanel("CommandList.qml")),
        command("Quit", ["Ctrl+Q"], () => scene.close())
    ]

    function command(words, keys, run, isOn) {
        return { "words": words, "keys": keys, "run": run, "isOn": isOn };
    }

    function quoted(text) {
        return /^[\w@%+=:,./-]+$/.test(text) ? text : "'" + String(text).replace(/'/g, "'\\''") + "'";
    }

    /// Shows the same in another window.
    function commandLine() {
        const hints = files.first.hints || ({});
        const format = ["", "text", "npy", "raw", "wav"][hints.format]; // in the order of the reader's enums
        const types = ["float64", "float32", "int32", "uint32", "int16", "uint16", "int8", "uint8"];
        const switches = [["--follow", hints.follow], ["--" + scene.look, scene.look], ["--log", plot.axisY.logScale],
            ["--beneath", scene.beneath], ["--difference", scene.difference], ["--" + scene.colors, scene.colors]];
        const values = [["--format", format], ["--sample-type", types[hints.sampleType]],
            ["--column", hints.column], ["--x-column", hints.xColumn], ["--separator", hints.separator],
            ["--decimal-point", hints.decimalPoint], ["--skip-lines", hints.skipLines], ["--start", scene.start],
            ["--step", scene.step], ["--unit", scene.unit], ["--smooth", scene.smoothDepth > 1 ? scene.smoothDepth : 0],
            ["--range", plot.axisX.min + ":" + plot.axisX.max]];
        return ["vorlixview"].concat(switches.filter(option => option[1]).map(option => option[0]),
            ...values.filter(option => option[1]).map(option => [option[0], quoted(option[1])]),
            files.all.map(file => quoted(file.source))).join(" ");
    }

    function toggleLook(wanted) {
        scene.look = scene.look === wanted ? "" : wanted;
    }

    function toggleFullScreen() {
        scene.visibility = scene.visibility === Window.FullScreen ? Window.AutomaticVisibility : Window.FullScreen;
    }

    function named(words) {
        return all.find(command => command.words === words);
    }

    function run(command) {
        if (command.run)
            command.run();
        else
            desktop.press(plot, command.keys[0]);
    }

    Repeater {
        model: commands.all.length

        Item {
            Shortcut {
                readonly property var command: commands.all[index]

                enabled: commands.active && command.run !== undefined
                sequences: command.keys
                onActivated: commands.run(command)
            }
        }
    }
}
