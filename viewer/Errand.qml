// SPDX-License-Identifier: MIT
import QtQuick 2.15

// Writes what a plot shows and ends the program: once everything is read, and two frames later, when the names of the
// files have their places.
Item {
    id: errand

    property QtObject scene
    property Item plot ///< tells finish() what it has saved
    readonly property string what: scene.picture || scene.values
    property int frames: 0 ///< since everything is read

    function write() {
        if (!scene.hasNumbers)
            finish(what + ": not written: there are no numbers to show");
        else if (scene.picture !== "")
            plot.saveImage(scene.picture, scene.sharpness);
        else
            plot.saveValues(scene.values);
    }

    function finish(error) {
        desktop.exit(scene.problems.concat(error === "" ? [] : [error]), error === "" ? 0 : 1);
    }

    Timer {
        interval: 5
        repeat: true
        running: !errand.scene.reading && errand.frames < 2
        onTriggered: errand.scene.update() // again and again: a request that comes while a frame is drawn may be lost
    }

    Connections {
        function onFrameSwapped() {
            if (!errand.scene.reading && ++errand.frames === 2)
                errand.write();
        }

        function onReadingChanged() {
            errand.frames = 0;
        }

        target: errand.scene
    }

}
