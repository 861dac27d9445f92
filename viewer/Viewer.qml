// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import VorlixPlugin.Views 1.0

// Files of numbers in one plot, and what is needed around it.
Window {
    id: window

    /// What the command line asks for.
    property var paths: []
    /// Properties of the files' readers that replace guesses.
    property var hints: ({})
    property real start: 0
    /// 0: what the file says, else 1.
    property real step: 0
    property string unit
    property int smoothDepth: 1
    /// "bars", "line" or "area"; empty for what suits each file.
    property string look
    property bool logarithmic: false
    property bool overview: false
    /// "dark" or "light"; empty for what the desktop has.
    property string colors
    /// Of the window, or the picture.
    property size pixels: Qt.size(1280, 720)
    /// The part of x to show at first, as [from, to]; empty for all.
    property var range: []
    /// Where a picture or the values are to be written, instead of showing a window: then there is nothing but the plot.
    property string picture
    property string values
    readonly property bool bare: picture !== "" || values !== ""
    property var files: []
    property var closed: []
    /// The files that were opened last.
    property var recent: desktop.remembered("recent", [])
    property QtObject shownFile: null
    readonly property alias plot: view
    readonly property alias notice: footer
    readonly property bool reading: files.some(file => file.busy)
    readonly property bool hasNumbers: files.some(file => file.hasNumbers)
    readonly property var problems: files.map(file => file.problem).filter(Boolean)
    readonly property bool follows: files.some(file => file.reader.follow || file.path === "-")
    /// What is going on, for who stands far away.
    readonly property var state: {
        if (!follows || files.length === 0)
            return {
        };

        if (files.every(file => file.store !== null && file.store.complete))
            return {
            "words": "ENDED",
            "color": "#5f6b76"
        };

        return view.following ? {
            "words": "FOLLOWING",
            "color": "#2e7d32"
        } : {
            "words": "PAUSED",
            "color": "#b26a00"
        };
    }

    /// What files that are read alike have in common: ".csv".
    function kindOf(path) {
        return (path.match(/\.[^./]+$/) || [""])[0];
    }

    /// Shows files over those that are there. What can't be shown is said.
    function open(paths, hints) {
        const refused = [];
        const opened = [];
        for (const path of paths) {
            const reason = desktop.whyUnreadable(path);
            if (reason)
                refused.push(path + ": " + reason);
            else
                opened.push(fileComponent.createObject(content, {
                "path": path,
                "hints": Object.assign({}, desktop.remembered("kinds/" + kindOf(path), {}), hints)
            }));
        }
        footer.said = refused.join("\n");
        files = files.concat(opened);
        const named = opened.map(file => file.path).filter(path => path !== "-");
        recent = named.concat(recent.filter(path => !named.includes(path))).slice(0, 10);
        arrange();
    }

    /// Lets the plot draw the files in their order.
    function arrange() {
        const drawn = files.map(file => file.series);
        while (view.seriesList.length > 0)
            view.removeSeries(view.seriesList[0]);
        for (const series of drawn)
            view.addSeries(series);
    }

    function close_(wanted) {
        focusPlot();
        closed = closed.concat([wanted.map(file => [file.path, file.hints])]);
        files = files.filter(file => !wanted.includes(file));
        footer.said = "";
        arrange();
        for (const file of wanted)
            file.destroy();
        if (files.length === 0)
            view.zoomReset();
    }

    function closeTop() {
        close_(files.slice(-1));
    }

    function closeAll() {
        close_(files);
    }

    function reopen() {
        const last = closed.slice(-1)[0] || [];
        closed = closed.slice(0, -1);
        for (const [path, hints] of last)
            open([path], hints);
    }

    function reload() {
        for (const file of files)
            file.reader.reload();
    }

    /// Gives up what takes long.
    function cancel() {
        for (const file of files) {
            if (file.busy)
                file.reader.cancel();
        }
        footer.said = "";
    }

    function toggleLook(wanted) {
        look = look === wanted ? "" : wanted;
    }

    function toggleDark() {
        colors = view.theme.dark ? "light" : "dark";
    }

    function toggleOverview() {
        overview = !overview;
    }

    function toggleFullScreen() {
        visibility = visibility === Window.FullScreen ? Window.AutomaticVisibility : Window.FullScreen;
    }

    /// What shows the same in another window: a command line.
    function asCommand() {
        const words = ["vorlixview"];
        const quoted = text => /^[\w@%+=:,./-]+$/.test(text) ? text : "'" + String(text).replace(/'/g, "'\\''") + "'";
        const add = (option, value) => words.push(option, quoted(value));
        const hints = files.length > 0 ? files[0].hints : ({});
        const options = {
            "column": "--column",
            "xColumn": "--x-column",
            "separator": "--separator",
            "decimalPoint": "--decimal-point",
            "skipLines": "--skip-lines"
        };
        for (const name in options) {
            if (hints[name])
                add(options[name], hints[name]);
        }
        for (const [option, value] of [["--start", start], ["--step", step], ["--unit", unit]]) {
            if (value)
                add(option, value);
        }
        if (smoothDepth > 1)
            add("--smooth", smoothDepth);
        for (const [option, isOn] of [["--follow", hints.follow], ["--" + look, look], ["--log", view.axisY.logScale], ["--" + colors, colors]]) {
            if (isOn)
                words.push(option);
        }
        add("--range", view.axisX.min + ":" + view.axisX.max);
        return words.concat(files.map(file => quoted(file.path))).join(" ");
    }

    function showCommands() {
        panel.sourceComponent = commandList;
    }

    /// How a file is read; the one on top if none is said.
    function showFile(file) {
        shownFile = file || files[files.length - 1] || null;
        panel.sourceComponent = shownFile ? filePanel : null;
    }

    function focusPlot() {
        panel.sourceComponent = null;
        view.forceActiveFocus();
    }

    function savePicture(path) {
        footer.said = "";
        view.saveImage(path, 2);
    }

    height: pixels.height
    width: pixels.width
    color: view.theme.backgroundColor
    title: files.length === 0 ? "vorlixview" : files.map(file => file.name).join(", ") + " – vorlixview"
    Component.onCompleted: {
        view.axisY.logScale = logarithmic;
        if (range.length === 2) {
            view.axisX.min = range[0];
            view.axisX.max = range[1];
        }
        open(paths, hints);
    }

    onClosing: (close) => {
        desktop.remember("size", Qt.size(width, height));
        desktop.remember("look", look);
        desktop.remember("colors", colors);
        desktop.remember("logarithmic", view.axisY.logScale);
        desktop.remember("overview", overview);
        desktop.remember("recent", recent);
    }

    Component {
        id: fileComponent

        FileSeries {
            isOver: window.files.indexOf(this) > 0
            scene: window
            onExchanged: window.arrange()
        }
    }

    Item {
        id: content

        Keys.onEscapePressed: (event) => window.cancel()
        // Also that of a picture, which a window that counts in larger units may not have.
        height: window.bare ? window.pixels.height / Screen.devicePixelRatio : window.height
        width: window.bare ? window.pixels.width / Screen.devicePixelRatio : window.width

        Loader {
            id: bar

            active: !window.bare
            anchors.left: parent.left
            anchors.right: parent.right

            sourceComponent: ViewerBar {
                commands: actions
                scene: window
                theme: view.theme
            }
        }

        PlotView {
            id: view

            anchors.bottom: footer.top
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: bar.bottom
            axisX.unit: window.unit || (window.files.length > 0 ? window.files[0].xUnit : "")
            axisY.unit: window.files.length > 0 ? window.files[0].unit : ""
            focus: true
            legendVisible: window.files.length > 1
            overviewVisible: window.overview
            followMode: window.follows ? PlotView.FollowEnd : PlotView.FollowNone
            readoutVisible: !window.bare
            onSaved: (file, error) => footer.said = error

            PlotRegion {
                id: regionMark

                visible: false
            }

            PlotCursor {
                id: peakMark

                visible: false
            }

            theme: PlotTheme {
                readonly property bool isLight: window.colors === "light" || window.bare

                colorScheme: window.colors === "dark" ? PlotTheme.Dark : isLight ? PlotTheme.Light : PlotTheme.Automatic
                font: window.bare ? Qt.font({ "pixelSize": 13 }) : undefined // the same in every picture
            }
        }

        Column {
            anchors.centerIn: view
            spacing: 8
            visible: window.files.length === 0 && !window.bare

            Text {
                color: view.theme.labelTextColor
                font.pixelSize: 18
                text: "Drop files of numbers here, or press Ctrl+O"
            }

            Repeater {
                model: window.recent

                BarButton {
                    text: modelData
                    theme: view.theme
                    onClicked: window.open([modelData])
                }

            }

        }

        ViewerNotice {
            id: footer

            anchors.bottom: parent.bottom
            files: window.bare ? [] : window.files
            theme: view.theme
            width: parent.width
            onDismissed: said = ""
            onFileClicked: (file) => window.showFile(file)
        }

        DropArea {
            anchors.fill: parent
            onDropped: (drop) => {
                if (!drop.hasUrls)
                    return ;

                drop.accept(Qt.CopyAction); // whatever was proposed: the files stay where they are
                window.open(desktop.pathsOf(drop.urls));
            }
        }

        Loader {
            id: panel

            anchors.centerIn: parent
            height: Math.min(parent.height - 40, 560)
            width: Math.min(parent.width - 40, 640)
        }
    }

    Component {
        id: commandList

        CommandList {
            commands: actions
            theme: view.theme
            onClosed: window.focusPlot()
        }
    }

    Component {
        id: filePanel

        FilePanel {
            file: window.shownFile
            scene: window
            theme: view.theme
            onClosed: window.focusPlot()
        }

    }

    Measure {
        id: measuring

        peak: peakMark
        plot: view
        region: regionMark
    }

    Commands {
        id: actions

        active: !window.bare
        dialogs: dialogLoader
        measure: measuring
        plot: view
        scene: window
    }

    Loader {
        active: window.bare

        sourceComponent: Errand {
            plot: view
            scene: window
        }

    }

    // Made at the first use.
    Loader {
        id: dialogLoader

        function chooseFiles() {
            active = true;
            item.chooseFiles();
        }

        function choosePicture() {
            active = true;
            item.choosePicture();
        }

        function chooseTable() {
            active = true;
            item.chooseTable();
        }

        active: false
        source: "ViewerDialogs.qml"
    }

    Connections {
        function onFilesChosen(paths) {
            window.open(paths);
        }

        function onPictureChosen(path) {
            window.savePicture(path);
        }

        function onTableChosen(path) {
            view.saveValues(path);
        }

        target: dialogLoader.item
    }
}
