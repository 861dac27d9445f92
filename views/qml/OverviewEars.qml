// SPDX-License-Identifier: MIT
import QtQuick 2.14

// What a screen reader gets of an overview: a scroll bar, with the sentence of its view, which says what is shown of
// what.
QtObject {
    id: ears

    property Item strip: null

    Component.onCompleted: {
        strip.Accessible.role = Accessible.ScrollBar;
        strip.Accessible.focusable = true;
        strip.Accessible.name = qsTr("Overview");
        strip.Accessible.description = Qt.binding(() => ears.strip && ears.strip.view ? ears.strip.view.Accessible.name : "");
    }
}
