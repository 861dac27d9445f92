// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// The files that are shown, in the order in which they lie over each other. The item itself shows nothing.
Item {
    id: list

    property QtObject scene
    property var all: []
    property var closed: []
    /// The files that were opened last.
    property var recent: desktop.remembered("recent") || []
    readonly property var first: all.length > 0 ? all[0] : ({})
    readonly property bool reading: all.some(file => file.busy) || scene.difference && difference.busy
    readonly property bool hasNumbers: all.some(file => file.hasNumbers)
    readonly property var problems: all.map(file => file.problem).concat(whyNoDifference).filter(Boolean)
    /// Of the first two files, if it's wanted.
    readonly property string whyNoDifference: scene.difference && !reading ? difference.problem : ""
    /// Whether values may still come, and have come to their end.
    readonly property bool follows: all.some(file => file.live)
    readonly property bool hasEnded: all.every(file => file.store !== null && file.store.complete)
    /// Whether a followed file was replaced, truncated or written anew.
    readonly property bool isReplaced: all.some(file => file.reader.detected.includes("read anew"))
    /// Values a second, in words.
    readonly property string speed: {
        const came = all.reduce((sum, file) => sum + file.valuesPerSecond, 0);
        return "  " + (came >= 10000 ? (came / 1000).toFixed(0) + "k" : came) + "/s";
    }

    /// Shows files over those that are there. Returns what is to be said of those that can't be.
    function open(paths, hints) {
        const refused = [];
        const opened = [];
        for (const path of paths) {
            const reason = desktop.whyUnreadable(path);
            if (reason)
                refused.push(path + ": " + reason);
            else
                opened.push(fileComponent.createObject(list, { "source": path, "hints": hints || ({}) }));
        }
        all = all.concat(opened);
        const named = opened.map(file => file.source).filter(path => path !== "-");
        recent = named.concat(recent.filter(path => !named.includes(path))).slice(0, 10);
        return refused;
    }

    function close(wanted) {
        scene.focusPlot();
        closed = closed.concat([wanted.map(file => [file.source, file.hints])]);
        all = all.filter(file => !wanted.includes(file));
        for (const file of wanted) {
            file.parent = null;
            file.destroy();
        }
        if (all.length === 0)
            scene.plot.zoomReset();
    }

    function reopen() {
        const last = closed.slice(-1)[0] || [];
        closed = closed.slice(0, -1);
        for (const [path, hints] of last)
            open([path], hints);
    }

    FileDifference {
        id: difference

        factor: list.scene.factor
        first: list.scene.difference && list.all[0] || null
        parent: list.scene.plot
        second: list.scene.difference && list.all[1] || null
    }

    Component {
        id: fileComponent

        FileSeries {
            /// Properties of the reader that replace guesses.
            property var hints: ({})
            readonly property int place: list.all.indexOf(this)
            /// What files that are read alike have in common: ".csv".
            readonly property string kind: (source.match(/\.[^./]+$/) || [""])[0]

            depth: list.scene.smoothDepth
            look: list.scene.look
            parent: place > 0 && place <= list.scene.others.count ? list.scene.others.itemAt(place - 1) : list.scene.plot
            seriesOpacity: place > 0 && parent === list.scene.plot && shownLook !== "line" ? 0.6 : 1 // they let each other through
            start: list.scene.start
            step: list.scene.step
            Component.onCompleted: {
                hints = Object.assign({}, desktop.remembered("kinds/" + kind, {}), hints);
                Object.assign(reader, hints);
            }
        }

    }

}
