// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin.Views 1.0

Window {
    id: window

    property alias samples: samples
    property string refused: ""

    width: 400
    height: 300
    visible: true

    //! [append]
    SeriesStore {
        id: samples

        valueType: SeriesStore.Int16
        Component.onCompleted: {
            append(7);
            append([1, -2, 3]);
            appendBuffer(new Int16Array([4, 5, 6]).buffer, SeriesStore.Int16);
            try {
                append([8, 40000]);
            } catch (error) {
                window.refused = error.message; // 40000 doesn't fit: neither of them is appended
            }
        }
    }
    //! [append]

    PlotView {
        anchors.fill: parent

        LineSeries {
            store: samples
        }
    }
}
