// SPDX-License-Identifier: MIT
import QtGraphicalEffects 1.0
import QtQuick 2.14
import QtQuick.Shapes 1.12

/// A balloon whose tip points down at what it tells about. Applications put their own content on its body.
Item {
    id: root

    /// The fraction of the height that the body takes; the tip has the rest.
    property real y2: 0.8
    property real delta: height * (1 - y2)
    property alias radius: body.radius

    implicitWidth: 110
    implicitHeight: 65
    layer.enabled: true
    layer.samples: 8

    Rectangle {
        id: body

        width: parent.width
        height: root.y2 * parent.height
        radius: 4
        color: "white"
    }

    Shape {
        width: root.delta
        height: root.delta

        anchors {
            top: body.bottom
            horizontalCenter: body.horizontalCenter
        }

        ShapePath {
            fillColor: body.color
            fillRule: ShapePath.WindingFill
            strokeWidth: -1
            startX: 0
            startY: 0

            PathLine {
                x: root.delta
                y: 0
            }

            PathLine {
                x: root.delta / 2
                y: root.delta
            }

            PathLine {
                x: 0
                y: 0
            }

        }

    }

    layer.effect: DropShadow {
        horizontalOffset: 3
        verticalOffset: 3
        radius: 8
        samples: 17
        color: "#80000000"
    }

}
