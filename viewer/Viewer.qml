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
    /// Of the first two files: the first less `factor` times the second.
    property bool difference: false
    property real factor: 1
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
    /// Pixels of a picture for one of what is laid out: a large one shows what the usual one does, but sharper.
    readonly property real sharpness: Math.max(1, pixels.width / 1280) * Screen.devicePixelRatio
    readonly property bool bare: picture !== "" || values !== ""
    readonly property alias plot: view
    readonly property alias notice: footer
    readonly property alias files: list.all
    readonly property alias reading: list.reading
    readonly property alias hasNumbers: list.hasNumbers
    readonly property alias problems: list.problems
    /// What is going on, to be read from afar.
    readonly property var state: {
        if (!list.follows)
            return { "words": "" };

        if (list.hasEnded)
            return { "words": "ENDED", "color": "#5f6b76" };

        const replaced = list.isReplaced ? "FILE REPLACED, " : "";
        if (!view.following)
            return { "words": replaced + "PAUSED", "color": "#b26a00" };

        return { "words": replaced + "FOLLOWING" + list.speed, "color": replaced ? "#6a3fa0" : "#2e7d32" };
    }

    /// Shows files over those that are there. What can't be shown is said.
    function open(paths, hints) {
        footer.said = list.open(paths, hints).join("\n");
    }

    /// Gives up what takes long.
    function cancel() {
        files.filter(file => file.busy).forEach(file => file.reader.cancel());
        footer.said = "";
    }

    function toggleDifference() {
        difference = !difference;
        footer.said = list.whyNoDifference;
    }

    function showCommands() {
        panel.setSource("CommandList.qml", { "commands": actions, "theme": view.theme });
    }

    /// How a file is read; the one on top if none is said.
    function showFile(file) {
        const shown = file || files[files.length - 1];
        if (shown)
            panel.setSource("FilePanel.qml", { "file": shown, "scene": window, "theme": view.theme });
    }

    /// A dialog for files, made at the first use.
    function showDialog(name) {
        if (!dialogs.item)
            dialogs.setSource("ViewerDialogs.qml", { "scene": window, "plot": view });
        dialogs.item.show(name);
    }

    function focusPlot() {
        panel.source = "";
        view.forceActiveFocus();
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
        const now = { "pixels": Qt.size(width, height), "logarithmic": view.axisY.logScale, "recent": list.recent };
        for (const name of ["pixels", "look", "colors", "logarithmic", "overview", "recent"])
            desktop.remember(name, now[name] === undefined ? window[name] : now[name]);
    }

    Item {
        id: content

        Keys.onEscapePressed: (event) => window.cancel()
        // Of a picture, too, which the window may not have.
        height: window.bare ? window.pixels.height / window.sharpness : window.height
        width: window.bare ? window.pixels.width / window.sharpness : window.width

        ViewerBar {
            id: bar

            commands: actions
            height: visible ? implicitHeight : 0
            scene: window
            theme: view.theme
            visible: !window.bare
            width: parent.width
        }

        PlotView {
            id: view

            anchors.bottom: footer.top
            anchors.top: bar.bottom
            axisX.unit: window.unit || list.first.xUnit || ""
            axisY.titleText: list.first.column || ""
            axisY.unit: list.first.unit || ""
            focus: true
            legendVisible: window.files.length > 1
            overviewVisible: window.overview
            followMode: list.follows ? PlotView.FollowEnd : PlotView.FollowNone
            readoutVisible: !window.bare
            width: parent.width
            onSaved: (file, error) => errand.item ? errand.item.finish(error) : footer.said = error

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
                model: list.recent

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

    Connections {
        function onClosed() {
            window.focusPlot();
        }

        target: panel.item
    }

    FileList {
        id: list

        plot: view
        scene: window
        onAboutToClose: window.focusPlot()
    }

    Commands {
        id: actions

        active: !window.bare
        files: list
        plot: view
        scene: window
    }

    Loader {
        id: errand

        active: window.bare

        sourceComponent: Errand {
            plot: view
            scene: window
        }

    }

    Loader {
        id: dialogs
    }

}
