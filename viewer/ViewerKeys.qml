// SPDX-License-Identifier: MIT
import QtQuick 2.15

// What can be done with the keyboard.
Item {
    id: root

    /// Has the functions and switches of the main window.
    property QtObject scene
    property ViewerDialogs fileDialogs
    property bool active: true

    // A standard key may stand for several bindings, which differ between platforms.
    Key {
        sequences: [StandardKey.Open]
        onActivated: root.fileDialogs.chooseFiles()
    }

    Key {
        sequences: [StandardKey.Save]
        onActivated: root.fileDialogs.choosePicture()
    }

    Key {
        sequences: [StandardKey.Close]
        onActivated: root.scene.closeAll()
    }

    Key {
        sequence: "Ctrl+Q" // StandardKey.Quit has no binding on some platforms
        onActivated: root.scene.close()
    }

    Key {
        sequences: ["+", "=", "Up"]
        onActivated: root.scene.zoomBy(1.5, 0.5)
    }

    Key {
        sequences: ["-", "Down"]
        onActivated: root.scene.zoomBy(1 / 1.5, 0.5)
    }

    Key {
        sequence: "Left"
        onActivated: root.scene.panBy(-0.1)
    }

    Key {
        sequence: "Right"
        onActivated: root.scene.panBy(0.1)
    }

    Key {
        sequence: "PgUp"
        onActivated: root.scene.panBy(-0.9)
    }

    Key {
        sequence: "PgDown"
        onActivated: root.scene.panBy(0.9)
    }

    Key {
        sequence: "Home"
        onActivated: root.scene.zoomTo(0, root.scene.chart.zoomRect.width)
    }

    Key {
        sequence: "End"
        onActivated: root.scene.zoomTo(root.scene.chart.chartRect.right, root.scene.chart.zoomRect.width)
    }

    Key {
        sequences: ["0", "Esc"]
        onActivated: root.scene.zoomTo(0, root.scene.chart.chartRect.width)
    }

    Key {
        sequence: "A"
        onActivated: root.scene.asArea = !root.scene.asArea
    }

    Key {
        sequence: "L"
        onActivated: root.scene.logarithmic = !root.scene.logarithmic
    }

    Key {
        sequence: "D"
        onActivated: root.scene.dark = !root.scene.dark
    }

    component Key: Shortcut {
        enabled: root.active
    }

}
