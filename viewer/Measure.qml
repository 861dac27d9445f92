// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin.Views 1.0

// What is measured in a plot, besides its own cursors: a region, and the peak that a cursor of its own stands on.
Item {
    id: measure

    property PlotView plot
    property PlotRegion region
    property PlotCursor peak
    readonly property var names: ["from", "to", "count", "sum", "mean", "deviation", "minimum", "minimumAt", "maximum",
        "maximumAt", "centroid", "peakWidth"]
    readonly property PlotSeries series: {
        for (let i = 0; i < plot.seriesList.length; ++i) {
            if (plot.seriesList[i].visible)
                return plot.seriesList[i];
        }
        return null;
    }

    /// Around the middle third of the view, or the last peak.
    function toggleRegion() {
        const from = plot.axisX.min;
        const length = plot.axisX.max - from;
        const middle = peak.visible ? peak.x : from + length / 2;
        region.from = middle - length / (peak.visible ? 30 : 6);
        region.to = middle + length / (peak.visible ? 30 : 6);
        region.visible = !region.visible;
    }

    function toHighest() {
        const found = series ? series.extremeIn(plot.axisX.min, plot.axisX.max) : ({});
        if (found.count > 0)
            stand(found.maximumAt);
    }

    /// To the next column of pixels, on that side, that is higher than what is around it by a fiftieth of the view.
    function toNext(direction) {
        const pixel = (plot.axisX.max - plot.axisX.min) / plot.plotArea.width;
        const depth = (plot.axisY.max - plot.axisY.min) / 50;
        const begin = peak.visible ? peak.x : plot.axisX.min;
        let lowest = Infinity;
        let best = null;
        for (let x = begin; series && x >= plot.axisX.min && x <= plot.axisX.max; x += direction * pixel) {
            const here = series.extremeIn(Math.min(x, x + direction * pixel), Math.max(x, x + direction * pixel));
            if (!(here.count > 0))
                continue;

            if (best !== null && here.maximum < best.maximum - depth)
                return stand(best.maximumAt);

            lowest = Math.min(lowest, here.maximum);
            if (here.maximum > lowest + depth && (best === null || here.maximum > best.maximum))
                best = here;
        }
        if (best !== null)
            stand(best.maximumAt);
    }

    /// Puts the cursor on the middle of a bar, or on a point.
    function stand(x) {
        peak.x = series instanceof BarSeries && series.xStore === null ? x + series.step / 2 : x;
        peak.visible = true;
    }

    function rows() {
        const found = [];
        if (region.visible && region.valid)
            found.push(...names.map(name => [name, region[name]]));
        if (peak.visible && series)
            found.push(["peak at", peak.x], ["peak", series.valueAt(peak.x)]);
        return found;
    }

    /// The numbers of the region and the peak: a line each, or as CSV with a head.
    function copyNumbers(asTable) {
        const found = rows();
        if (found.length === 0)
            return ;

        if (asTable)
            desktop.copy([0, 1].map(i => found.map(row => row[i]).join(",")).join("\n") + "\n");
        else
            desktop.copy(found.map(row => row[0] + "\t" + row[1] + "\n").join(""));
    }
}
