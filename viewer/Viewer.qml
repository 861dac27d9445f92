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
    /// Each file in a plot of its own.
    property bool beneath: false
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
    readonly property bool bare: picture !== "" || values !== ""
    readonly property PlotView plot: view
    readonly property alias others: others
    /// The plot that has the focus, or had it last.
    property PlotView current: view
    readonly property alias notice: footer
    readonly property alias files: list.all
    readonly property alias commands: actions
    readonly property alias reading: list.reading
    readonly property alias hasNumbers: list.hasNumbers
    readonly property alias problems: list.problems
    readonly property alias whyNoDifference: list.whyNoDifference
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

    function showPanel(source) {
        panel.setSource(source, { "scene": window, "theme": view.theme });
    }

    /// Of all plots. A large one shows what one of the usual size does, but sharper.
    function savePicture(path, pixels) {
        const scale = Math.max(Screen.devicePixelRatio, pixels.width / 1280);
        stack.saveImage(path, scale, Qt.size(pixels.width / scale, pixels.height / scale));
    }

    /// How a file is read; the one on top if none is said.
    function showFile(file) {
        const shown = file || files[files.length - 1];
        if (shown)
            panel.setSource("FilePanel.qml", { "file": shown, "scene": window, "theme": view.theme });
    }

    /// A dialog for files, made at the first use.
    function showDialog(name, pixels) {
        if (!dialogs.item)
            dialogs.setSource("ViewerDialogs.qml", { "scene": window, "plots": stack });
        dialogs.item.show(name, pixels);
        focusPlot();
    }

    function focusPlot() {
        panel.source = "";
        (current || view).forceActiveFocus();
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

    component FilePlot: PlotView {
        /// The first one in it.
        property var file: ({})

        axisX.unit: window.unit || file.xUnit || ""
        axisY.titleText: file.column || ""
        axisY.unit: file.unit || ""
        followMode: list.follows ? PlotView.FollowEnd : PlotView.FollowNone
        legendVisible: window.files.length > 1
        overviewVisible: window.overview && others.count === 0
        readoutVisible: !window.bare
        onActiveFocusChanged: {
            if (activeFocus)
                window.current = this;
        }
    }

    Item {
        id: content

        Keys.onEscapePressed: (event) => window.cancel()
        anchors.fill: parent

        ViewerBar {
            id: bar

            commands: actions
            height: visible ? implicitHeight : 0
            scene: window
            theme: view.theme
            visible: !window.bare
            width: parent.width
        }

        PlotStack {
            id: stack

            anchors.bottom: footer.top
            anchors.top: bar.bottom
            width: parent.width
            onSaved: (file, error) => errand.item ? errand.item.finish(error) : footer.said = error

            FilePlot {
                id: view

                file: list.first
                focus: true
                theme: PlotTheme {
                    readonly property bool isLight: window.colors === "light" || window.bare

                    colorScheme: window.colors === "dark" ? PlotTheme.Dark : isLight ? PlotTheme.Light : PlotTheme.Automatic
                    font: window.bare ? Qt.font({ "pixelSize": 13 }) : undefined // the same in every picture
                }
            }

            Repeater {
                id: others

                model: window.beneath ? Math.max(0, window.files.length - 1) : 0
                onItemRemoved: view.forceActiveFocus()

                FilePlot {
                    axisY.logScale: view.axisY.logScale
                    file: window.files[index + 1] || ({})
                    overviewVisible: window.overview && index === others.count - 1
                    theme: view.theme
                }
            }
        }

        Column {
            anchors.centerIn: stack
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
            height: Math.min(parent.height - 40, item && item.fields && !item.reader ? item.implicitHeight : 560)
            width: Math.min(parent.width - 40, 640)
            onLoaded: forceActiveFocus() // Esc closes it
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

        scene: window
    }

    Commands {
        id: actions

        active: !window.bare
        files: list
        plot: window.current || view
        scene: window
    }

    Loader {
        id: errand

        active: window.bare

        sourceComponent: Errand {
            plots: stack
            scene: window
        }

    }

    Loader {
        id: dialogs
    }

}
