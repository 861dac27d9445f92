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
    readonly property bool reading: all.some(file => file.busy)
    readonly property bool hasNumbers: all.some(file => file.hasNumbers)
    readonly property var problems: all.map(file => file.problem).filter(Boolean)
    /// Whether values may still come, and have come to their end.
    readonly property bool follows: all.some(file => file.reader.follow || file.path === "-")
    readonly property bool hasEnded: all.every(file => file.store !== null && file.store.complete)
    /// Whether another file took the place of a followed one just now.
    property bool isReplaced: false
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
                opened.push(fileComponent.createObject(list, {
                "path": path,
                "hints": hints || ({})
            }));
        }
        all = all.concat(opened);
        const named = opened.map(file => file.path).filter(path => path !== "-");
        recent = named.concat(recent.filter(path => !named.includes(path))).slice(0, 10);
        arrange();
        return refused;
    }

    /// Lets the plot draw the files in their order.
    function arrange() {
        const drawn = all.map(file => file.series);
        while (plot.seriesList.length > 0)
            plot.removeSeries(plot.seriesList[0]);
        for (const series of drawn)
            plot.addSeries(series);
    }

    function close(wanted) {
        aboutToClose();
        closed = closed.concat([wanted.map(file => [file.path, file.hints])]);
        all = all.filter(file => !wanted.includes(file));
        arrange();
        for (const file of wanted)
            file.destroy();
        if (all.length === 0)
            plot.zoomReset();
    }

    function closeTop() {
        close(all.slice(-1));
    }

    function closeAll() {
        close(all);
    }

    function reopen() {
        const last = closed.slice(-1)[0] || [];
        closed = closed.slice(0, -1);
        for (const [path, hints] of last)
            open([path], hints);
    }

    function reload() {
        for (const file of all)
            file.reader.reload();
    }

    /// Gives up what takes long.
    function cancel() {
        for (const file of all) {
            if (file.busy)
                file.reader.cancel();
        }
    }

    // A followed file that was read anew has said why.
    Connections {
        function onDetectedChanged() {
            list.isReplaced = target.detected.includes("read anew");
            replacedTimer.restart();
        }

        target: list.all.length > 0 ? list.all[list.all.length - 1].reader : null
    }

    Timer {
        id: replacedTimer

        interval: 3000
        onTriggered: list.isReplaced = false
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

    Component {
        id: fileComponent

        FileSeries {
            isOver: list.all.indexOf(this) > 0
            scene: list.scene
            onExchanged: list.arrange()
        }

    }

}
