// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    property alias dropping: dropping
    property alias accepting: accepting
    property alias settling: settling
    property alias changes: changes

    width: 600
    height: 200
    visible: true
    color: "#10181f"

    Row {
        //! [dropping]
        ChartArea {
            id: dropping

            width: 200
            height: 200
            updateIntervalMs: 60000
        }
        //! [dropping]

        //! [accepting]
        ChartArea {
            id: accepting

            width: 200
            height: 200
            updateIntervalMs: 0
        }
        //! [accepting]

        //! [settling]
        ChartArea {
            id: settling

            width: 200
            height: 200
            updateIntervalMs: 1000
        }
        //! [settling]
    }

    //! [closing]
    Timer {
        id: closing

        interval: 1000
        onTriggered: settling.update() // of the item: not throttled
    }

    Connections {
        function onDataChanged() {
            closing.restart();
        }

        target: node
    }
    //! [closing]

    BarPlotter {
        id: slow

        chartArea: dropping
    }

    BarPlotter {
        id: quick

        chartArea: accepting
    }

    BarPlotter {
        id: last

        chartArea: settling
    }

    Filter1D {
        id: node

        area: Qt.rect(0, 0, 5, 1)
        Component.onCompleted: {
            for (const plotter of [slow, quick, last])
                addPlotter(plotter);
        }
    }

    Timer {
        id: changes

        property int made: 0

        interval: 400
        repeat: true
        running: made < 3
        onTriggered: node.data = Array(5).fill(10 * ++made)
    }
}
