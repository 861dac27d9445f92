// SPDX-License-Identifier: MIT
#pragma once

#include "common/Link.h"
#include "common/RenderHandle.h"
#include "plotters/IPlotter.h"

#include <QElapsedTimer>
#include <QList>
#include <QMutex>
#include <QQuickFramebufferObject>
#include <QRectF>
#include <QVector>

class ChartRenderer;

/// The item on which plotters draw: keeps their list, fits its chart rectangle to them, throttles requests for frames
/// and maps data coordinates to pixels.
///
/// It owns no plotter; a plotter that is destroyed leaves the list silently. Properties and operations belong to the
/// GUI thread. The scene graph calls syncPlotters() on its render thread while the GUI thread is blocked, and
/// renderPlotters() while it runs; renderPlotters() works on the frame that syncPlotters() left and reads nothing else.
class IChartArea : public QQuickFramebufferObject
{
    Q_OBJECT
    /// The part of data space that the plotters cover; y grows upwards on the screen.
    Q_PROPERTY(QRectF chartRect READ chartRect WRITE setChartRect NOTIFY chartRectChanged)
    /// Whether requests fit chartRect to the plotters.
    Q_PROPERTY(bool adaptAreaToPlotters READ adaptAreaToPlotters WRITE setAdaptAreaToPlotters NOTIFY
                   adaptAreaToPlottersChanged)
    /// In insertion order. Setting the list does not set the plotters' chartArea.
    Q_PROPERTY(QList<IPlotter *> plotter READ plotter WRITE setPlotter NOTIFY plotterChanged)
    /// Whether requests are accepted.
    Q_PROPERTY(bool shouldUpdate READ shouldUpdate WRITE setShouldUpdate NOTIFY shouldUpdateChanged)
    /// Milliseconds between accepted requests; those between are dropped. 0 accepts all.
    Q_PROPERTY(uint updateIntervalMs READ updateIntervalMs WRITE setUpdateIntervalMs)

public:
    explicit IChartArea(QQuickItem *parent = nullptr);
    ~IChartArea() override;

    // properties: GUI thread

    const QRectF &chartRect() const { return m_chartRect; }
    void setChartRect(const QRectF &chartRect);
    bool adaptAreaToPlotters() const { return m_adaptAreaToPlotters; }
    void setAdaptAreaToPlotters(bool adapt);
    const QList<IPlotter *> &plotter() const { return m_plotters.items(); }
    void setPlotter(const QList<IPlotter *> &plotters);
    bool shouldUpdate() const { return m_shouldUpdate; }
    void setShouldUpdate(bool shouldUpdate);
    uint updateIntervalMs() const { return m_updateIntervalMs; }
    void setUpdateIntervalMs(uint milliseconds);

    // the virtual interface and the invokables; the order of each is fixed

    Renderer *createRenderer() const override;
    /// Asks for a frame: dropped, not deferred, when updates are locked, off, or too frequent.
    virtual void requestUpdate();
    /// The part of data space against which plotters draw and fetch their data.
    virtual const QRectF &viewRect() const;
    /// Appends the plotter and becomes its chart area. Null and a listed plotter are ignored.
    Q_INVOKABLE void addPlotter(IPlotter *plotter);
    /// Takes the plotter off the list, once; its chartArea stays. Null is ignored.
    Q_INVOKABLE void removePlotter(IPlotter *plotter);
    /// From data coordinates to item pixels, y downwards; (-1, -1) outside the item. A NaN is returned as it is.
    Q_INVOKABLE virtual QPointF mapPointToChart(QPointF point);
    Q_INVOKABLE void lock_update() { m_updateLocked = true; }
    /// Accepts requests again. Those made meanwhile are lost.
    Q_INVOKABLE void unlock_update() { m_updateLocked = false; }
    /// Uploads the plotters' data, fits the rectangles and fixes what the next frame draws.
    virtual void syncPlotters();
    /// Draws the frame. Render thread, current context.
    virtual void renderPlotters();
    /// Fits chartRect to the plotters.
    virtual void updateChartRect();
    /// Sorts the plotters into the draw layers of the next frame.
    virtual void updateRenderLayers();

    // called by plotters: GUI thread

    /// The mutex held while a plotter replaces its series. Taken before the plotter's own. The module's own threads
    /// never wait for it, because drawing reads only what syncPlotters() left: it's for others that read a series.
    void lockRender() { m_renderMutex.lock(); }
    void unlockRender() { m_renderMutex.unlock(); }

    /// Where links to this item are tied. GUI thread.
    Anchor &anchor() { return m_anchor; }
    /// How many times as wide as usual renderPlotters() draws lines. Render thread.
    void setLineScale(double scale) { m_lineScale = scale; }
    /// The renderer's way in.
    const std::shared_ptr<RenderHandle<IChartArea>> &renderHandle() const { return m_renderHandle; }

signals:
    void chartRectChanged();
    void plotterChanged();
    void shouldUpdateChanged();
    void adaptAreaToPlottersChanged();

protected:
    using Signal = void (IChartArea::*)();

    /// From now on no other object and no render thread reaches the item. First statement of every derived destructor.
    void withdraw();
    /// Emits `changed` at once or, while the plotters are synchronised, later from the GUI thread's event loop: the
    /// scene graph is working on the item then, and a handler may destroy the item, its window or its plotters.
    void announce(Signal changed);
    /// The formula of mapPointToChart() against `rect`.
    QPointF mapPoint(const QPointF &point, const QRectF &rect) const;

    /// Has the chart drawn larger, too, while a picture is taken of the ready plot that it belongs to. Draws nothing,
    /// and says so once, in a window that isn't drawn with OpenGL.
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;

private:
    using PlotterHandle = std::shared_ptr<RenderHandle<IPlotter>>;

    bool dropsRequest();
    bool mayFit();
    void scheduleFrame();
    QRectF unitedPlotterAreas() const;
    double pictureScale() const;

    static constexpr int layerCount = 3;

    bool m_adaptAreaToPlotters = true;
    QRectF m_chartRect{0.0, 0.0, 1.0, 1.0};
    LinkList<IPlotter, QList<IPlotter *>> m_plotters;
    QVector<QVector<PlotterHandle>> m_layers{layerCount}; ///< render thread: from syncPlotters() to renderPlotters()
    QMutex m_renderMutex;
    bool m_updateLocked = false;
    bool m_shouldUpdate = true;
    QElapsedTimer m_updateTimer; ///< since the last accepted request
    uint m_updateIntervalMs = 25;
    int m_requestDepth = 0;
    bool m_fitAgain = false;          ///< a request came that was nested too deep
    int m_fits = 0;                   ///< since the outermost request, the last frame, or the last new plotter
    int m_fittedPlotters = 0;         ///< the most that there were since
    bool m_unsettledReported = false; ///< once per area: it would come with every request
    bool m_synchronizing = false;     ///< the scene graph is inside syncPlotters()
    QRectF m_frameView;               ///< render thread: the view rectangle of the frame
    double m_lineScale = 1.0;         ///< render thread
    mutable ChartRenderer *m_renderer = nullptr; ///< render thread: of the node that updatePaintNode() returned
    std::shared_ptr<RenderHandle<IChartArea>> m_renderHandle;
    Anchor m_anchor;
};

/// Holds the render mutex of a chart area for a scope.
class RenderLocker
{
public:
    explicit RenderLocker(IChartArea &area) : m_area(area) { m_area.lockRender(); }
    ~RenderLocker() { m_area.unlockRender(); }
    RenderLocker(const RenderLocker &) = delete;
    RenderLocker &operator=(const RenderLocker &) = delete;

private:
    IChartArea &m_area;
};
