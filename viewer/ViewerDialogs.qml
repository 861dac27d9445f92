// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs 1.3

// The dialogs for files. To be loaded when one is wanted: they take long.
Item {
    id: dialogs

    signal filesChosen(var paths)
    signal pictureChosen(string path)
    signal tableChosen(string path)

    function chooseFiles() {
        openDialog.open();
    }

    function choosePicture() {
        pictureDialog.open();
    }

    function chooseTable() {
        tableDialog.open();
    }

    /// With an ending if it has none.
    function pathOf(url, ending) {
        const path = desktop.pathsOf([url])[0];
        return /\.[a-z]+$/i.test(path) ? path : path + ending;
    }

    FileDialog {
        id: openDialog

        nameFilters: ["All files (*)", "Numbers (*.txt *.csv *.tsv *.dat *.asc *.spe *.npy *.wav *.raw *.bin)"]
        selectMultiple: true
        title: "Open files of numbers"
        onAccepted: dialogs.filesChosen(desktop.pathsOf(fileUrls.length > 0 ? fileUrls : [fileUrl]))
    }

    FileDialog {
        id: pictureDialog

        defaultSuffix: "png"
        nameFilters: ["Pictures (*.png)"]
        selectExisting: false
        title: "Save a picture of the plot"
        onAccepted: dialogs.pictureChosen(dialogs.pathOf(fileUrl, ".png"))
    }

    FileDialog {
        id: tableDialog

        defaultSuffix: "csv"
        nameFilters: ["Tables (*.csv)"]
        selectExisting: false
        title: "Save the values in view"
        onAccepted: dialogs.tableChosen(dialogs.pathOf(fileUrl, ".csv"))
    }

}
