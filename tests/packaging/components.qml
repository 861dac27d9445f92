// SPDX-License-Identifier: MIT
// Shows that every type and every component of the module loads: ends with 0 when all do.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    id: window

    readonly property var types: ["ChartArea", "IChartArea", "BarPlotter", "IFIlterU64", "Filter1D", "SCSVReader"]
    readonly property var components: []
    property int failures: 0

    function report(name, object, error) {
        console.log(object ? "loaded" : "FAILED", name, object ? "" : error);
        if (!object)
            ++failures;
    }

    width: 640
    height: 360
    visible: true
    Component.onCompleted: {
        for (const name of types) {
            const text = "import VorlixPlugin 1.0; " + name + " {}";
            let object = null, error = "";
            try {
                object = Qt.createQmlObject(text, window.contentItem);
            } catch (exception) {
                error = exception;
            }
            report(name, object, error);
        }
        for (const name of components) {
            const component = Qt.createComponent("qrc:/qml/" + name + ".qml");
            report(name, component.createObject(window.contentItem), component.errorString());
        }
        Qt.exit(failures);
    }
}
