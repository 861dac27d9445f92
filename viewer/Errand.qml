// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15

// Writes what a plot shows and ends the program: once everything is read, and the names of the files have their places.
Item {
    id: errand

    property Window scene
    property Item plot
    readonly property string what: scene.picture || scene.values
    property int frames: 0 ///< since everything is read

    function write() {
        if (!scene.hasNumbers)
            finish(what + ": not written: there are no numbers to show");
        else if (scene.picture !== "")
            plot.saveImage(scene.picture, Screen.devicePixelRatio);
        else
            plot.saveValues(scene.values);
    }

    function finish(error) {
        desktop.exit(scene.problems.concat(error === "" ? [] : [error]), error === "" ? 0 : 1);
    }

    Connections {
        function onFrameSwapped() {
            errand.frames += 1;
        }

        function onReadingChanged() {
            errand.frames = 0;
        }

        target: errand.scene
    }

    // Ask for frames again and again: a request that comes while one is drawn may be lost.
    Timer {
        property int ticks: 0

        interval: 5
        repeat: true
        running: !errand.scene.reading
        onTriggered: {
            errand.scene.update();
            if (errand.frames < 2 && ++ticks < 1000)
                return ;

            stop();
            errand.write();
        }
    }

    Connections {
        function onSaved(file, error) {
            errand.finish(error);
        }

        target: errand.plot
    }

}
