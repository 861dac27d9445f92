// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"

#include "chart/ChartRenderer.h"

#include <QDebug>
#include <QQuickWindow>
#include <QSGRendererInterface>
#include <QSGSimpleTextureNode>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace {

/// Ascending; whatever is not a number comes last, so that the others keep their order.
bool isDrawnBefore(const IPlotter *a, const IPlotter *b)
{
    return a->zOrder() < b->zOrder() || (std::isnan(b->zOrder()) && !std::isnan(a->zOrder()));
}

bool isDrawnWithOpenGL(const QQuickWindow &window)
{
    return window.rendererInterface()->graphicsApi() == QSGRendererInterface::OpenGL;
}

void sayOnceThatOpenGLIsMissing()
{
    static std::once_flag said;
    std::call_once(said, [] { qWarning("A chart is not drawn: its window is drawn without OpenGL"); });
}

} // namespace

// called by the scene graph: render thread, GUI thread blocked

QSGNode *IChartArea::updatePaintNode(QSGNode *node, UpdatePaintNodeData *data)
{
    if (!isDrawnWithOpenGL(*window())) {
        sayOnceThatOpenGLIsMissing();
        return nullptr;
    }
    QSGNode *drawn = QQuickFramebufferObject::updatePaintNode(node, data);
    if (drawn)
        m_renderer->prepareForPicture(window(), static_cast<QSGSimpleTextureNode *>(drawn),
                                      (size() * pictureScale()).toSize());
    return drawn;
}

/// What the ready plot says while a picture is taken of it; 1 at other times. An item has no other way to learn the
/// size.
double IChartArea::pictureScale() const
{
    for (const QQuickItem *item = parentItem(); item; item = item->parentItem()) {
        const QVariant scale = item->property("vorlixPictureScale");
        if (scale.isValid())
            return scale.toDouble();
    }
    return 1.0;
}

// called by the renderer: render thread, GUI thread blocked

void IChartArea::syncPlotters()
{
    for (IPlotter *plotter : m_plotters.items())
        plotter->renderHandle()->use([](IPlotter &listed) { listed.synchronize(); });

    // Fitting reads what belongs to the GUI thread, so it has its place here and not in the frame.
    m_synchronizing = true;
    updateChartRect();
    m_synchronizing = false;
    m_fits = 0; // a request may be under way: a handler of it runs an event loop
    updateRenderLayers();
    m_renderHandle->use([this](IChartArea &) { m_frameView = viewRect(); });
}

void IChartArea::updateRenderLayers()
{
    QVector<QVector<PlotterHandle>> layers(layerCount);
    for (int layer = 0; layer < layerCount; ++layer) {
        QVector<IPlotter *> members;
        for (IPlotter *plotter : m_plotters.items()) {
            if (plotter->drawLayer() & (1u << layer))
                members.append(plotter);
        }
        std::sort(members.begin(), members.end(), isDrawnBefore);
        for (const IPlotter *plotter : qAsConst(members))
            layers[layer].append(plotter->renderHandle());
    }
    // Under the handle's lock: an item that changed windows may still be drawn by the other one's render thread.
    m_renderHandle->use([&](IChartArea &) { m_layers.swap(layers); });
}

// called by the renderer: render thread, GUI thread running

void IChartArea::renderPlotters()
{
    for (const QVector<PlotterHandle> &layer : qAsConst(m_layers)) {
        for (const PlotterHandle &handle : layer)
            handle->use([this](IPlotter &plotter) { plotter.drawFrame(m_frameView, m_lineScale); });
    }
}
