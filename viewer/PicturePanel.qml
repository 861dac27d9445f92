// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import VorlixPlugin.Views 1.0

// How large a picture is to be, before a dialog asks where it goes.
FieldPanel {
    id: panel

    property QtObject scene
    property int pictureWidth: Math.round(scene.width * Screen.devicePixelRatio)
    property int pictureHeight: Math.round(scene.height * Screen.devicePixelRatio)

    Accessible.name: "Picture"
    fields: [
        { "words": "Width in pixels", "owner": panel, "property": "pictureWidth", "least": 64 },
        { "words": "Height in pixels", "owner": panel, "property": "pictureHeight", "least": 64 }
    ]

    BarButton {
        text: "Save…"
        theme: panel.theme
        onClicked: panel.scene.showDialog("picture", Qt.size(panel.pictureWidth, panel.pictureHeight))
    }

    BarButton {
        text: "Close"
        theme: panel.theme
        onClicked: panel.closed()
    }

}
