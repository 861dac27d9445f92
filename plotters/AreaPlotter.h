// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/PlacedEdges.h"
#include "geometry/SIndexRange.h"
#include "geometry/VertexRecords.h"
#include "gl/ElementLayouts.h"
#include "plotters/IPlotter1D.h"

#include <QMatrix4x4>

struct SLinePixels;
struct SLinePlace;

/// The area between 0 and the line through the points (i, value i), with an optional border line and vertical gradient.
///
/// Points share plotterArea's width equally: point i lies at the left edge of slot i, moved right by xOffset. Once the
/// plotter was drawn for the first time, the height of plotterArea is the largest value of the series (at least 0.0)
/// and no longer what was set. More than maximumPoints values are not drawn.
class AreaPlotter : public IPlotter1D
{
    Q_OBJECT
    /// In pixels. Deliberate: the line keeps the width that was set when the plotter was drawn for the first time.
    Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    /// Deliberate: a border that was off in a frame stays off.
    Q_PROPERTY(bool borderEnable READ borderEnable WRITE setBorderEnable NOTIFY borderEnableChanged)
    /// Whether the fill runs from gradientColor at the bottom of the view to color at its top. Seen with the next
    /// frame.
    Q_PROPERTY(bool enableGradient READ enableGradient WRITE setEnableGradient NOTIFY enableGradientChanged)
    Q_PROPERTY(QColor gradientColor READ gradientColor WRITE setGradientColor NOTIFY gradientColorChanged)

public:
    /// The fill vertices of more points would pass the 2 GiB that a container holds.
    static constexpr int maximumPoints = 60'000'000;

    explicit AreaPlotter(QObject *parent = nullptr);
    ~AreaPlotter() override;

    double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double borderWidth);
    const QColor &borderColor() const { return m_borderColor; }
    void setBorderColor(const QColor &borderColor);
    bool borderEnable() const { return m_borderEnable; }
    void setBorderEnable(bool borderEnable);
    bool enableGradient() const { return m_enableGradient; }
    void setEnableGradient(bool enableGradient);
    const QColor &gradientColor() const { return m_gradientColor; }
    void setGradientColor(const QColor &gradientColor);

    void sync_buffers() override;
    /// The height is kept once the plotter was synchronised: it belongs to the data.
    void setPlotterArea(const QRectF &area) override;
    const QVector<SAttributeDefinition> declareArributeArray() override;
    bool __update_vertex() override;
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override;
    const SAttributePointer _fetch_attribute_data(const int &attribute) const override;
    void _fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea) override;

signals:
    void borderWidthChanged();
    void borderColorChanged();
    void borderEnableChanged();
    void enableGradientChanged();
    void gradientColorChanged();

private:
    /// What the frame being drawn shows, beside frame().
    struct SAreaFrame
    {
        int points = 0; ///< in the buffers
        double borderWidth = 0.0;
        QColor borderColor;
        bool borderEnable = false;
        QColor bottomColor;
        QVector<double> series; ///< a long one
        bool finite = false;    ///< every value of it is, in single precision
    };
    static constexpr uint borderDataDirty = 0x100000; ///< beside the framework's bits

    bool isLong() const;
    void placeLong(const SIndexRange &points);
    void drawFill(const SIndexRange &points, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void drawBorder(const SIndexRange &points, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void drawColumns(const SIndexRange &points, const SLinePlace &place, const SLinePixels &pixels,
                     QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void drawSegments(const SIndexRange &points, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    QMatrix4x4 matrix() const;
    SEdgeRow pointRow() const;
    QMatrix4x4 placedMatrix() const;
    void appendLayers(QVector<SRenderLayerDefinition> &layers) const;

    QVector<SPointVertex> m_borderVertices; ///< one per point
    QVector<SPointVertex> m_fillVertices;   ///< two per point, then as many zeros that are never drawn
    double m_borderWidth = 3.0;
    QColor m_borderColor{7, 203, 242, 255};
    bool m_borderEnable = true;
    bool m_enableGradient = false;
    QColor m_gradientColor{7, 203, 242, 255};
    bool m_finite = false;                          ///< every value of the series is, in single precision
    SAreaFrame m_shown;                             ///< written by sync_buffers(), read by the drawing hooks
    ElementStream m_fillStream{spanLayout()};       ///< render thread, like what follows
    ElementStream m_segmentStream{segmentLayout()}; ///< of the border
    ElementStream m_columnStream{columnLayout()};   ///< of a border with many points to a pixel
    SPlacedEdges m_placed;                          ///< the points of a long series in the view
    QRectF m_shownView;                             ///< render thread
};
