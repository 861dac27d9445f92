// SPDX-License-Identifier: MIT
// Shows that every type and every component of the module loads: ends with 0 when all do.
import QtQuick 2.14
import QtQuick.Window 2.14
import VorlixPlugin 1.0

Window {
    id: window

    readonly property var types: [
        "ChartArea", "IChartArea", "BarPlotter", "BarPlotterDx", "AreaPlotter", "BarDecorator", "IFIlterU64",
        "DecimatorU64", "RandomU64Data", "MovingAvarangeU64", "FixedDecimatorU64", "Filter1D", "FixedDecimator2D",
        "MinimalWidth2D", "SCSVReader"
    ]
    readonly property var components: [
        "SPlotQML", "LinearXAxis", "LinearYAxis", "NavigatorBar", "ChartTooltip", "Legend/LegendElement",
        "Legend/HorizontalLegend", "Legend/VerticalLegend", "Legend/ViewLegend", "Legend/LegendDropArea"
    ]
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
            const properties = name === "Legend/LegendElement" ? {plotter: bars} : {};
            report(name, component.createObject(window.contentItem, properties), component.errorString());
        }
        Qt.exit(failures);
    }

    BarPlotter {
        id: bars
    }
}
