// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs 1.3

// The dialogs for files, made at their first use.
Item {
    id: root

    signal filesChosen(var paths)
    signal pictureChosen(string path)

    function chooseFiles() {
        openLoader.active = true;
        openLoader.item.open();
    }

    function choosePicture() {
        saveLoader.active = true;
        saveLoader.item.open();
    }

    function pathOf(url) {
        return fileChecks.pathsOf([url])[0];
    }

    Loader {
        id: openLoader

        active: false

        sourceComponent: FileDialog {
            nameFilters: ["All files (*)", "Text (*.txt *.csv *.dat *.asc)"]
            selectMultiple: true
            title: "Open files of numbers"
            onAccepted: root.filesChosen(fileChecks.pathsOf(fileUrls.length > 0 ? fileUrls : [fileUrl]))
        }

    }

    Loader {
        id: saveLoader

        active: false

        sourceComponent: FileDialog {
            defaultSuffix: "png"
            nameFilters: ["Pictures (*.png)"]
            selectExisting: false
            title: "Save a picture of the plot"
            onAccepted: {
                const path = root.pathOf(fileUrl);
                root.pictureChosen(/\.[a-z]+$/i.test(path) ? path : path + ".png");
            }
        }

    }

}
