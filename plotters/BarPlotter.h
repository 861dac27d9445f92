// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/PlacedEdges.h"
#include "geometry/SIndexRange.h"
#include "gl/ElementLayouts.h"
#include "plotters/IPlotter1D.h"

/// Adjacent vertical bars of one colour, one per value, between 0 and the value.
///
/// Bars share modArea's width equally. Once the plotter was drawn for the first time, the height of plotterArea is the
/// largest value of the series (at least 0.0) and no longer what was set. Unlike other plotters it takes data without a
/// chart area. More than maximumBars values are not drawn.
class BarPlotter : public IPlotter1D
{
    Q_OBJECT

public:
    /// The index buffer of more bars would pass the 2 GiB that a container holds.
    static constexpr int maximumBars = 80'000'000;

    explicit BarPlotter(QObject *parent = nullptr);
    ~BarPlotter() override;

    void sync_buffers() override;
    void draw(const QRectF &viewArea) override;
    const QRectF area_at(const QPointF &point) const override;
    /// The height is kept once the plotter was synchronised: it belongs to the data.
    void setPlotterArea(const QRectF &area) override;
    void setData(const QVector<double> &data) override;

private:
    // GUI thread, or render thread while the GUI thread is blocked
    void buildArrays();
    void buildVertices();
    void buildIndices();
    int drawableBars() const;
    bool isLong() const;

    // render thread
    void createBuffers();
    void uploadPoints();
    void uploadIndices();
    void drawWhole(const SIndexRange &bars, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void drawLong(const SIndexRange &bars, const SEdgeRow &edges, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void bindAttributes(QOpenGLShaderProgram &program, int mode);
    void releaseAttributes(QOpenGLShaderProgram &program, int mode);

    QVector<float> m_points;    ///< four heights per bar, one in the geometry-shader mode
    QVector<float> m_vertexIds; ///< four bar numbers per bar
    QVector<uint> m_indices;    ///< two triangles per bar; never shrinks
    QOpenGLBuffer m_pointBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_vertexIdBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_indexBuffer{QOpenGLBuffer::IndexBuffer};
    uint m_barDirty = 0;
    bool m_glReady = false;
    int m_barCount = 0;                  ///< bars in the buffers
    bool m_finite = false;               ///< every value of the series is, in single precision
    bool m_shownFinite = false;          ///< the same for what is drawn
    QVector<double> m_shownSeries;       ///< a long one: written by sync_buffers(), read while drawing
    ElementStream m_stream{barLayout()}; ///< render thread
};
