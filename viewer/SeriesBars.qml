// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0

// One file as bars on a chart. The item itself shows nothing.
Item {
    id: series

    property string file
    property real binWidth: 1
    property ChartArea chart
    property alias barColor: bars.color
    property alias zOrder: bars.zOrder

    Component.onCompleted: {
        chart.addPlotter(bars);
        reader.addPlotter(bars);
        reader.file = file; // last: it is read here, with the bin width that stands
    }
    Component.onDestruction: {
        reader.removePlotter(bars);
        if (chart)
            chart.removePlotter(bars);

    }

    BarPlotter {
        id: bars
    }

    SCSVReader {
        id: reader

        binWidth: series.binWidth
    }

}
