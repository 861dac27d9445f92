// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs 1.3

// The dialog for files. To be loaded when it's wanted: it takes long.
Item {
    id: dialogs

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
        dialog.open();
    }

    FileDialog {
        id: dialog

        /// With an ending if it has none.
        function complete(path) {
            const isPage = selectedNameFilter.includes("pdf");
            return selectExisting || /\.[a-z]+$/i.test(path) ? path : path + (isPage ? ".pdf" : "." + defaultSuffix);
        }

        defaultSuffix: dialogs.uses[dialogs.name].ending
        nameFilters: dialogs.uses[dialogs.name].filters
        selectExisting: dialogs.name === "open"
        selectMultiple: dialogs.name === "open"
        title: dialogs.uses[dialogs.name].title
        onAccepted: {
            const urls = fileUrls.length > 0 ? fileUrls : [fileUrl];
            dialogs.uses[dialogs.name].take(desktop.pathsOf(urls).map(complete));
        }
    }
}
