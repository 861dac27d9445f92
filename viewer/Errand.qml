// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// Writes what the plots show, once everything is read, and ends the program.
Item {
    id: errand

    property QtObject scene
    property PlotStack plots ///< tells finish() what it has saved

    function write() {
        if (scene.whyNoDifference !== "")
            desktop.exit(scene.problems, 1); // which says why
        else if (!scene.hasNumbers)
            finish((scene.picture || scene.values) + ": not written: there are no numbers to show");
        else if (scene.picture !== "")
            scene.savePicture(scene.picture, scene.pixels);
        else
            plots.saveValues(scene.values);
    }

    function finish(error) {
        desktop.exit(scene.problems.concat(error === "" ? [] : [error]), error === "" ? 0 : 1);
    }

    Timer {
        interval: 0
        running: !errand.scene.reading
        onTriggered: errand.write()
    }
}
