// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.12
import VorlixPlugin 1.0
import "qrc:/qml"

// The ready-made plot over a source at full speed, loaded and unloaded as a whole.
Item {
    id: root

    property bool loaded: true
    property string picture: ""

    function exportPicture() {
        if (plot.item && picture !== "")
            plot.item.exportImage(picture)
    }
    function rearrange(n) {
        if (!plot.item)
            return
        plot.item.enableLegend = n % 2
        plot.item.enableNavigatorBar = n % 3
        plot.item.isYAxisLog = n % 5 === 0
        first.visible = n % 4
        first.name = "first " + n
        source.area = Qt.rect(0, 0, [512, 1e-6, 1e9][n % 3], 1)
    }

    width: 320
    height: 200

    RandomU64Data {
        id: source

        append: false
        area: Qt.rect(0, 0, 512, 1)
        numBin: 512
        Component.onCompleted: {
            running = false
            addPlotter(first)
            addPlotter(second)
            addPlotter(overview)
        }
    }
    BarPlotter { id: first; chartArea: plot.item ? plot.item.refChartArea : null; color: "#8000ff00"; name: "first" }
    AreaPlotter { id: second; chartArea: plot.item ? plot.item.refChartArea : null; name: "second"; zOrder: 1 }
    BarPlotter { id: overview; chartArea: plot.item ? plot.item.refNavigator : null }
    Loader {
        id: plot

        active: root.loaded
        anchors.fill: parent
        sourceComponent: SPlotQML { Material.theme: Material.Dark; updateIntervalMs: 0 }
    }
}
