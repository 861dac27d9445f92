// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0

// Every kind of node and plotter behind one source that publishes on each pass of the event loop. Switches take away
// and bring back one kind at a time.
Item {
    id: root

    property alias chart: chart
    property alias source: source
    property bool withArea: true
    property bool withBars: true
    property bool withExact: true
    property bool withFilters: true
    property bool withDecorator: true
    property bool withSource: true
    property int step: 0

    function zoom() {
        step += 1
        const left = (step * 37) % 400
        if (step % 5)
            chart.zoomRect = Qt.rect(left, 0, 20 + (step * 13) % 200, 100)
        else
            chart.resetZoomView()
    }

    width: 320
    height: 200

    ChartArea {
        id: chart

        anchors.fill: parent
        updateIntervalMs: 0
    }
    Loader {
        id: source

        active: root.withSource
        sourceComponent: RandomU64Data {
            append: false
            area: Qt.rect(0, 0, 512, 1)
            numBin: 512
            Component.onCompleted: running = false
        }
    }
    Loader {
        active: root.withFilters
        sourceComponent: QtObject {
            id: chain

            property var decimator: DecimatorU64 { chartArea: chart }
            property var average: MovingAvarangeU64 { depth: 5 }
            property var fixed: FixedDecimatorU64 { numPoint: 64 }
            property var merged: MinimalWidth2D { mergeWidth: 50 }
            property var sampled: FixedDecimator2D { numPoint: 10 }
            property var levelBars: BarPlotter { chartArea: chart; color: "#40ff0000" }
            property var averageArea: AreaPlotter { chartArea: chart; enableGradient: true }
            property var fixedArea: AreaPlotter { chartArea: chart; zOrder: 2 }
            property var mergedBars: BarPlotterDx { chartArea: chart; color: "#4000ff00" }
            property var sampledBars: BarPlotterDx { chartArea: chart }
            property var plain: Filter1D {
                Component.onCompleted: {
                    addFilter(chain.decimator)
                    addFilter(chain.average)
                    addFilter(chain.fixed)
                    chain.average.addFilter(chain.merged)
                    chain.merged.addFilter(chain.sampled)
                    chain.decimator.addPlotter(chain.levelBars)
                    chain.average.addPlotter(chain.averageArea)
                    chain.fixed.addPlotter(chain.fixedArea)
                    chain.merged.addPlotter(chain.mergedBars)
                    chain.sampled.addPlotter(chain.sampledBars)
                    if (source.item)
                        source.item.addFilter(this)
                }
            }
        }
    }
    Loader {
        active: root.withBars
        sourceComponent: BarPlotter {
            id: bars

            chartArea: chart
            Component.onCompleted: if (source.item) source.item.addPlotter(bars)
        }
    }
    Loader {
        active: root.withExact
        sourceComponent: BarPlotterDx {
            id: exact

            chartArea: chart
            Component.onCompleted: if (source.item) source.item.addPlotter(exact)
        }
    }
    Loader {
        active: root.withArea
        sourceComponent: AreaPlotter {
            id: filled

            chartArea: chart
            Component.onCompleted: if (source.item) source.item.addPlotter(filled)
        }
    }
    Loader {
        active: root.withDecorator
        sourceComponent: BarDecorator {
            active: true
            chartArea: chart
            mouseX: (root.step * 7) % 320
            mouseY: (root.step * 3) % 200
            zOrder: 10
            Component.onCompleted: plotters = chart.plotter
        }
    }
}
