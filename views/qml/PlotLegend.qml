// SPDX-License-Identifier: MIT
import QtQuick 2.14

// The names of the series, each a toggle: a click, a tap, Space or Return hides the series or shows it.
Rectangle {
    id: legend

    property Item view: null
    property int named: 0

    function countNames() {
        var count = 0;
        for (var i = 0; i < entries.count; ++i)
            count += entries.itemAt(i) && entries.itemAt(i).isNamed ? 1 : 0;
        legend.named = count;
    }

    visible: view.legendVisible && named > 0
    implicitWidth: content.implicitWidth + 12
    implicitHeight: content.implicitHeight + 8
    radius: 4
    color: view.theme.panelColor
    border.color: view.theme.gridColor
    opacity: 0.95

    Column {
        id: content

        x: 6
        y: 4

        Repeater {
            id: entries

            model: legend.view.seriesList
            onItemAdded: legend.countNames()
            onItemRemoved: legend.countNames()

            Item {
                id: entry

                readonly property QtObject series: modelData
                readonly property bool isNamed: series !== null && series.name.length > 0

                function toggle() {
                    entry.series.visible = !entry.series.visible;
                }

                objectName: "legendEntry"
                visible: isNamed
                onIsNamedChanged: legend.countNames()
                implicitWidth: line.implicitWidth + 8
                implicitHeight: isNamed ? line.implicitHeight + 4 : 0
                activeFocusOnTab: legend.view.interactive
                Keys.enabled: legend.view.interactive
                Keys.onSpacePressed: (event) => entry.toggle()
                Keys.onReturnPressed: (event) => entry.toggle()

                Accessible.role: Accessible.CheckBox
                Accessible.name: series !== null ? series.name : ""
                Accessible.checkable: true
                Accessible.checked: series !== null && series.visible
                Accessible.focusable: true
                Accessible.onToggleAction: entry.toggle()
                Accessible.onPressAction: entry.toggle()

                Rectangle {
                    anchors.fill: parent
                    visible: entry.activeFocus
                    color: "transparent"
                    radius: 3
                    border.color: legend.view.theme.accentColor
                }

                Row {
                    id: line

                    x: 4
                    y: 2
                    spacing: 6
                    opacity: entry.series !== null && entry.series.visible ? 1 : 0.45

                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: 12
                        height: 12
                        radius: 2
                        color: entry.series !== null && entry.series.visible ? entry.series.color : "transparent"
                        border.color: entry.series !== null ? entry.series.color : "transparent"
                    }

                    Text {
                        text: entry.series !== null ? entry.series.name : ""
                        textFormat: Text.PlainText
                        font: legend.view.theme.font
                        color: legend.view.theme.panelTextColor
                        renderType: Text.NativeRendering
                    }
                }

                MouseArea {
                    anchors.fill: parent
                    enabled: legend.view.interactive
                    cursorShape: Qt.PointingHandCursor
                    onClicked: (mouse) => entry.toggle()
                }
            }
        }
    }
}
