// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs 1.3

// The dialogs for files. To be loaded when one is wanted: they take long.
Item {
    id: dialogs

    property QtObject scene
    property Item plot
    readonly property alias open: openDialog
    readonly property alias picture: pictureDialog
    readonly property alias table: tableDialog

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
        onAccepted: dialogs.scene.open(desktop.pathsOf(fileUrls.length > 0 ? fileUrls : [fileUrl]))
    }

    FileDialog {
        id: pictureDialog

        defaultSuffix: "png"
        nameFilters: ["Pictures (*.png)"]
        selectExisting: false
        title: "Save a picture of the plot"
        onAccepted: dialogs.plot.saveImage(dialogs.pathOf(fileUrl, ".png"), 2)
    }

    FileDialog {
        id: tableDialog

        defaultSuffix: "csv"
        nameFilters: ["Tables (*.csv)"]
        selectExisting: false
        title: "Save the values in view"
        onAccepted: dialogs.plot.saveValues(dialogs.pathOf(fileUrl, ".csv"))
    }

}
