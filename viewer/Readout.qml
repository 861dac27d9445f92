// SPDX-License-Identifier: MIT
import QtQuick 2.15
import VorlixPlugin 1.0
import "qrc:/qml"

// What lies under the mouse: place and value of the highest bin there, for each series that is shown.
ChartTooltip {
    id: root

    property ChartArea chart
    property MouseArea mouse
    property var views: []
    property var formatX: String
    property real binWidth: 1
    property bool asArea: false
    readonly property real dataX: chart.zoomRect.x + mouse.mouseX / chart.width * chart.zoomRect.width
    property var found: []
    readonly property bool shown: enabled && mouse.containsMouse && !mouse.pressed
    readonly property point tip: found.length > 0 ? tipOf(found) : Qt.point(0, 0)

    /// Once the series have followed the zoom.
    function refreshSoon() {
        Qt.callLater(refresh);
    }

    function refresh() {
        found = shown ? lookUp(dataX) : [];
    }

    function lookUp(x) {
        return views.filter((view) => {
            return view.plotter.visible && !view.busy;
        }).map((view) => {
            return view.lookUp(x);
        }).filter((entry) => {
            return entry !== null;
        });
    }

    /// The top of the highest bar or point under the mouse, in the coordinates of what this lies in.
    function tipOf(entries) {
        const zoom = chart.zoomRect;
        const top = entries.reduce((highest, entry) => {
            return Math.max(highest, entry.bar.height);
        }, 0);
        const bar = entries[0].bar;
        const middle = Math.min(Math.max(bar.x + bar.width / 2, zoom.left), zoom.right);
        const x = asArea || bar.width / zoom.width * chart.width < 20 ? (middle - zoom.x) / zoom.width * chart.width : mouse.mouseX;
        const y = chart.height * (1 - Math.min(top / zoom.height, 1));
        return chart.mapToItem(parent, x, isFinite(y) ? y : 0);
    }

    function describe(entry) {
        const place = entry.count > 1 ? "bin " + entry.index + ", highest of " + entry.count : "bin " + entry.index;
        return Number(entry.value.toPrecision(12)) + "  (" + place + ")";
    }

    width: lines.width + 20
    height: (lines.height + 12) / y2
    x: Math.min(Math.max(tip.x - width / 2, 2), parent.width - width - 2)
    y: Math.max(tip.y - height - 2, 2)
    visible: found.length > 0
    z: 10
    onDataXChanged: refreshSoon()
    onShownChanged: refreshSoon()
    onViewsChanged: refreshSoon()

    Connections {
        function onZoomRectChanged() {
            root.refreshSoon();
        }

        target: root.chart
    }

    Column {
        id: lines

        x: 10
        y: 6

        Text {
            color: "#30363d"
            font.pixelSize: 12
            text: root.found.length > 0 ? root.formatX(root.found[0].index * root.binWidth) : ""
            textFormat: Text.PlainText
        }

        Repeater {
            model: root.found

            Row {
                spacing: 6

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    color: modelData.color
                    height: 8
                    radius: 4
                    width: 8
                }

                Text {
                    color: "#30363d"
                    font.bold: true
                    font.pixelSize: 12
                    text: root.describe(modelData)
                    textFormat: Text.PlainText
                }

            }

        }

    }

}
