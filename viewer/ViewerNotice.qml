// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls 2.15

// What stands in the middle of the plot: how far the files have been read, what is wrong with them, how to open some.
Column {
    id: root

    property var views: []
    property var problems: []
    property bool hasMessage: false
    property bool asPicture: false
    readonly property var busyViews: views.filter((view) => {
        return view.busy;
    })
    /// Of the files that are being read, how much has been; -1 while none is.
    readonly property real progress: {
        const known = busyViews.filter((view) => {
            return view.progress >= 0;
        });
        return known.length === 0 ? -1 : known.reduce((sum, view) => {
            return sum + view.progress;
        }, 0) / known.length;
    }

    function describeWork(view) {
        const what = view.name + " (" + fileChecks.sizeOf(view.file) + ")";
        if (view.isUnwanted)
            return "Closing " + what + " …";

        if (view.progress < 0)
            return "Working on " + what + " …";

        return "Reading " + what + ": " + Math.floor(100 * view.progress) + " %";
    }

    spacing: 12
    visible: busyViews.length > 0 || label.text !== ""

    ProgressBar {
        anchors.horizontalCenter: parent.horizontalCenter
        indeterminate: root.progress < 0
        value: Math.max(root.progress, 0)
        visible: root.busyViews.length > 0 && !root.asPicture
        width: Math.min(320, root.width / 2)
    }

    Label {
        id: label

        horizontalAlignment: Text.AlignHCenter
        text: {
            if (root.views.length === 0 && !root.hasMessage)
                return "Drop files of numbers here, or press Ctrl+O";

            return root.busyViews.map(root.describeWork).concat(root.problems).join("\n");
        }
        textFormat: Text.PlainText
        width: root.width
        wrapMode: Text.Wrap
    }

}
