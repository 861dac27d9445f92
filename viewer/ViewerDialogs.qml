// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs 1.3

// The dialog for files. To be loaded when it's wanted: it takes long.
FileDialog {
    id: dialog

    property QtObject scene
    property Item plot
    property string name: "open"
    readonly property var uses: ({
        "open": { "title": "Open files of numbers", "ending": "", "take": (paths) => scene.open(paths),
            "filters": ["All files (*)", "Numbers (*.txt *.csv *.tsv *.dat *.asc *.spe *.npy *.wav *.raw *.bin)"] },
        "picture": { "title": "Save a picture of the plot", "ending": "png", "take": (paths) => plot.saveImage(paths[0], 2),
            "filters": ["Pictures (*.png)", "Pages (*.pdf)"] },
        "table": { "title": "Save the values in view", "ending": "csv", "take": (paths) => plot.saveValues(paths[0]),
            "filters": ["Tables (*.csv)"] }
    })

    function show(what) {
        name = what;
        open();
    }

    /// With an ending if it has none.
    function complete(path) {
        const isPage = selectedNameFilter.includes("pdf");
        return selectExisting || /\.[a-z]+$/i.test(path) ? path : path + (isPage ? ".pdf" : "." + defaultSuffix);
    }

    defaultSuffix: uses[name].ending
    nameFilters: uses[name].filters
    selectExisting: name === "open"
    selectMultiple: selectExisting
    title: uses[name].title
    onAccepted: uses[name].take(desktop.pathsOf(fileUrls.length > 0 ? fileUrls : [fileUrl]).map(complete))
}
