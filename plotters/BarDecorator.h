// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/HighlightTrail.h"
#include "plotters/IPlotter.h"

#include <QElapsedTimer>
#include <QList>
#include <QTimer>
#include <QVariantList>
#include <QVector2D>

/// Asks other plotters what lies under the mouse, publishes their answers as infoMap and draws a translucent highlight
/// over the hovered elements, which fades when the mouse moves on. It has no series.
///
/// The highlight is drawn in OpenGL ES and in desktop OpenGL up to 3.x, on whatever is opaque in the chart; desktop
/// OpenGL 4 and later shows none. infoMap does not depend on that. The blend function that the highlight needs stays
/// set for the plotters that are drawn after it.
class BarDecorator : public IPlotter
{
    Q_OBJECT
    /// In pixels of the chart area's item. Setting one asks the plotters while `active`.
    Q_PROPERTY(double mouseX READ mouseX WRITE setMouseX)
    Q_PROPERTY(double mouseY READ mouseY WRITE setMouseY)
    /// False releases the highlight and ignores the mouse; infoMap stays as it is.
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)
    /// Who is asked. Not owned; sorted by zOrder with every question.
    Q_PROPERTY(QList<IPlotter *> plotters READ plotters WRITE setPlotters NOTIFY plottersChanged)
    /// One map per hovered plotter: "rect" (data coordinates), "plotter" (bool: the answer named one), "name", "color".
    Q_PROPERTY(QVariantList infoMap READ infoMap NOTIFY infoMapChanged)

public:
    explicit BarDecorator(QObject *parent = nullptr);
    ~BarDecorator() override;

    double mouseX() const { return m_mouseX; }
    void setMouseX(double mouseX);
    double mouseY() const { return m_mouseY; }
    void setMouseY(double mouseY);
    bool active() const { return m_active; }
    void setActive(bool active);
    const QList<IPlotter *> &plotters() const { return m_plotters.items(); }
    /// Null and repeated entries are left out.
    void setPlotters(const QList<IPlotter *> &plotters);
    const QVariantList &infoMap() const { return m_infoMap; }

    /// Null and a listed plotter are ignored.
    Q_INVOKABLE void addPlotter(IPlotter *newPlotter);
    /// Null and an unlisted plotter are ignored.
    Q_INVOKABLE void removePlotter(IPlotter *newPlotter);
    Q_INVOKABLE void removeAllPlotter();

    void sync_buffers() override;
    void draw(const QRectF &viewArea) override;

signals:
    void activeChanged();
    void infoMapChanged();
    void plottersChanged();

private:
    // GUI thread
    void announcePlotters();
    void queryHover();
    bool mapMouseToData(QPointF &point) const;
    /// True when something new is highlighted.
    bool highlight(const QVector<QRectF> &hovered);
    void fade();

    // render thread
    void createBuffers();
    void uploadArrays();
    void uploadPoints(const QRectF &viewArea);

    HighlightTrail m_trail;
    QVector<QRectF> m_hovered; ///< what the last query found
    QVector<uint> m_indices;   ///< two triangles per highlight that can be drawn
    QOpenGLBuffer m_pointBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_timeBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_indexBuffer{QOpenGLBuffer::IndexBuffer};
    QTimer m_fadeTimer;
    QElapsedTimer m_settling; ///< runs since the last fading tick, until a frame has shown what it left
    uint m_uploadFlags = 0;
    bool m_buffersCreated = false;
    double m_mouseX = 0.0;
    double m_mouseY = 0.0;
    bool m_active = false;
    QVariantList m_infoMap;
    LinkList<IPlotter, QList<IPlotter *>> m_plotters;

    QVector<QRectF> m_shownRects; ///< of the frame: written by sync_buffers(), read by draw()
    QVector<QVector2D> m_points;  ///< render thread: the corners in the point buffer
};
