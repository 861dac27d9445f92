// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs 1.3

// The dialog for files. To be loaded when it's wanted: it takes long.
Item {
    id: dialogs

    property QtObject scene
    property Item plots
    property string name: "open"
    property size pixels ///< of a picture
    readonly property var uses: ({
        "open": { "title": "Open files of numbers", "ending": "", "take": (paths) => scene.open(paths),
            "filters": ["All files (*)", "Numbers (*.txt *.csv *.tsv *.dat *.asc *.spe *.npy *.wav *.raw *.bin)"] },
        "picture": { "title": "Save a picture of the plot", "ending": "png", "take": (paths) => scene.savePicture(paths[0], pixels),
            "filters": ["Pictures (*.png)", "Pages (*.pdf)"] },
        "table": { "title": "Save the values in view", "ending": "csv", "take": (paths) => plots.saveValues(paths[0]),
            "filters": ["Tables (*.csv)"] }
    })

    function show(what, size) {
        name = what;
        pixels = size || pixels;
        dialog.open();
    }

    objectName: "dialogs"

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
