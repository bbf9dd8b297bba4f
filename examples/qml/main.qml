// A QML host: the camera picture (here a still frame) with the figures over it. The
// overlay fills the picture, so one item unit is one view pixel of the figures.
import QtQuick
import QtQuick.Window
import Tavrin 1.0

Window {
    id: window
    width: viewWidth
    height: viewHeight
    visible: true
    title: "Tavrin in Qt Quick"

    Image {
        id: picture
        anchors.fill: parent
        source: "image://scene/picture"
        fillMode: Image.Stretch
    }

    TavrinOverlay {
        id: overlay
        objectName: "overlay"
        anchors.fill: parent
        textEnabled: true
        antialiasing: true
        // Where a host would send the edited figure to the camera.
        onFigureEdited: (slot) => status.text = "figure " + slot + " edited: "
                                              + JSON.stringify(overlay.vertices(slot))
        onFigureSelected: (slot) => status.text = slot < 0 ? "" : "figure " + slot + " selected"
    }

    Text {
        id: status
        anchors { left: parent.left; bottom: parent.bottom; margins: 6 }
        color: "white"
        style: Text.Outline
        font.pixelSize: 14
        visible: !selfTest
    }
}
