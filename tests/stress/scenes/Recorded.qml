// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// A plot of stores that are appended to all the time, and everything that can be done to it.
Item {
    id: root

    property SeriesStore narrow
    property SeriesStore wide
    property SeriesStore scattered
    property SeriesStore places
    readonly property alias plot: plot
    readonly property alias area: area
    property int savedCount: 0
    property string savedError: ""

    // What is done: `what` is a whole number from 0, `chance` is from 0 to 1, `newest` is the place of the newest value.
    function act(what, chance, newest) {
        const deeds = [
            () => plot.zoomIn(),
            () => plot.zoomOut(),
            () => plot.zoomReset(),
            () => plot.back(),
            () => plot.panBy((chance - 0.5) * 600),
            () => plot.zoomTo(newest - Math.pow(10, 4 * chance - 1), newest),
            () => plot.zoomTo(newest * chance, newest),
            () => { region.from = newest - 600 * chance; region.to = newest - 300 * chance },
            () => cursor.x = newest - 60 * chance,
            () => plot.markPeak(Math.floor(chance * 3) - 1),
            () => plot.unmarkPeak(),
            () => line.visible = !line.visible,
            () => area.visible = !area.visible,
            () => bars.visible = !bars.visible,
            () => region.visible = !region.visible,
            () => cursor.visible = !cursor.visible,
            () => plot.regionVisible = !plot.regionVisible,
            () => plot.overviewVisible = !plot.overviewVisible,
            () => plot.legendVisible = !plot.legendVisible,
            () => plot.followMode = Math.floor(chance * 3),
            () => plot.theme.colorScheme = Math.floor(chance * 3),
            () => line.width = 1 + Math.floor(chance * 3),
            () => line.valueAt(newest * chance),
            () => area.extremeIn(newest * chance, newest),
            () => plot.numbers(chance < 0.5)
        ]
        deeds[what % deeds.length]()
    }

    width: 320
    height: 220

    PlotView {
        id: plot

        followMode: PlotView.FollowEnd
        height: 180
        overviewVisible: true
        title: "recorded"
        width: 320
        onSaved: (file, error) => { root.savedError += error; root.savedCount += 1 }

        axisX { titleText: "time"; unit: "s" }

        AreaSeries { id: area; name: "narrow"; step: 0.001; store: root.narrow }
        BarSeries { id: bars; name: "scattered"; store: root.scattered; xStore: root.places; yFactor: 0.5 }
        LineSeries { id: line; name: "wide"; step: 0.001; store: root.wide }
        PlotRegion { id: region; name: "moved" }
        PlotRegion { name: "counted"; series: area; from: 11000; to: 12000 }
        PlotCursor { id: cursor }
        PlotCursor { x: 10000 }
    }
    OverviewStrip {
        height: 40
        view: plot
        width: 320
        y: 180
    }
}
