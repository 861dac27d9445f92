// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// The files that are shown, in the order in which they lie over each other. The item itself shows nothing.
Item {
    id: list

    property QtObject scene
    property PlotView plot
    property var all: []
    property var closed: []
    /// The files that were opened last.
    property var recent: desktop.remembered("recent") || []
    readonly property var first: all.length > 0 ? all[0] : ({})
    readonly property bool reading: all.some(file => file.busy) || subtraction.busy
    readonly property bool hasNumbers: all.some(file => file.hasNumbers)
    readonly property var problems: all.map(file => file.problem).concat(whyNoDifference).filter(Boolean)
    /// Of the first two files, if it's wanted.
    readonly property string whyNoDifference: {
        if (!scene.difference || reading)
            return "";

        const places = all.map(file => {
            const x = file.reader.xStore;
            return [file.series.step].concat(x !== null ? [x.count, x.minimum, x.maximum] : []).join();
        });
        return all.length < 2 ? "a difference needs two files"
            : places[0] !== places[1] ? "no difference: the values of the two files stand at different places" : "";
    }
    /// Whether values may still come, and have come to their end.
    readonly property bool follows: all.some(file => file.reader.follow || file.source === "-")
    readonly property bool hasEnded: all.every(file => file.store !== null && file.store.complete)
    /// Whether a followed file was replaced, truncated or written anew.
    readonly property bool isReplaced: all.some(file => file.reader.detected.includes("read anew"))
    /// Values a second, in words.
    property string speed: ""

    signal aboutToClose()

    /// Shows files over those that are there. Returns what is to be said of those that can't be.
    function open(paths, hints) {
        const refused = [];
        const opened = [];
        for (const path of paths) {
            const reason = desktop.whyUnreadable(path);
            if (reason)
                refused.push(path + ": " + reason);
            else
                opened.push(fileComponent.createObject(plot, { "source": path, "hints": hints || ({}) }));
        }
        all = all.concat(opened);
        const named = opened.map(file => file.source).filter(path => path !== "-");
        recent = named.concat(recent.filter(path => !named.includes(path))).slice(0, 10);
        return refused;
    }

    function close(wanted) {
        aboutToClose();
        closed = closed.concat([wanted.map(file => [file.source, file.hints])]);
        all = all.filter(file => !wanted.includes(file));
        for (const file of wanted) {
            plot.removeSeries(file.series);
            file.destroy();
        }
        if (all.length === 0)
            plot.zoomReset();
    }

    function reopen() {
        const last = closed.slice(-1)[0] || [];
        closed = closed.slice(0, -1);
        for (const [path, hints] of last)
            open([path], hints);
    }

    Timer {
        property real before: 0

        interval: 1000
        repeat: true
        running: list.follows && !list.hasEnded
        onTriggered: {
            const now = list.all.reduce((sum, file) => sum + (file.store ? file.store.count : 0), 0);
            const came = Math.max(now - before, 0);
            list.speed = before > 0 ? "  " + (came >= 10000 ? (came / 1000).toFixed(0) + "k" : came) + "/s" : "";
            before = now;
        }
    }

    SeriesDifference {
        id: subtraction

        readonly property bool isWanted: list.scene.difference && list.all.length > 1

        factor: list.scene.factor
        minuend: isWanted ? list.first.store : null
        subtrahend: isWanted ? list.all[1].store : null
    }

    LineSeries {
        id: difference

        readonly property bool isWanted: subtraction.minuend !== null && list.whyNoDifference === ""

        name: list.all.slice(0, 2).map(file => file.name).join(" − ")
        start: list.first.start || 0
        step: list.first.series ? list.first.series.step : 1
        store: subtraction.store
        xStore: list.first.reader ? list.first.reader.xStore : null
        onIsWantedChanged: isWanted ? list.plot.addSeries(difference) : list.plot.removeSeries(difference)
    }

    Component {
        id: fileComponent

        FileSeries {
            /// Properties of the reader that replace guesses.
            property var hints: ({})
            /// What files that are read alike have in common: ".csv".
            readonly property string kind: (source.match(/\.[^./]+$/) || [""])[0]

            depth: list.scene.smoothDepth
            look: list.scene.look
            seriesOpacity: list.all.indexOf(this) > 0 && shownLook !== "line" ? 0.6 : 1 // they let each other through
            start: list.scene.start
            step: list.scene.step
            Component.onCompleted: {
                hints = Object.assign({}, desktop.remembered("kinds/" + kind, {}), hints);
                Object.assign(reader, hints);
            }
        }

    }

}
