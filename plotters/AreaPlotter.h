// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"
#include "geometry/VertexRecords.h"
#include "geometry/VisibleLine.h"
#include "plotters/IPlotter1D.h"

#include <QMatrix4x4>

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
    /// Of a longer series only the vertices that can be seen are uploaded, in portions, when they are drawn.
    static constexpr int wholeSeries = 65'536;
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
        QVector<double> series; ///< a long one, which is drawn by parts
        bool finite = false;    ///< every value of it is, in single precision
    };
    /// What decides which segments of the border are drawn.
    struct SBorderView
    {
        SIndexRange points;
        SLinePlace place;
        SLineTarget target;

        friend bool operator==(const SBorderView &a, const SBorderView &b)
        {
            return a.points == b.points && a.place == b.place && a.target == b.target;
        }
    };
    /// What is in the buffers of a series that is drawn by parts.
    struct SUploadedPart
    {
        QVector<double> series;
        QVector<SIndexRange> spans; ///< of the fill: span i lies between point i and the next
        SBorderView border;         ///< no points when its buffer holds the last portion only
    };

    static constexpr uint borderDataDirty = 0x100000; ///< beside the framework's bits

    bool isLong() const;
    void uploadParts(QVector<SRenderLayerDefinition> &layers, const SIndexRange &points);
    void uploadFill(const QVector<SIndexRange> &spans);
    SBorderView borderView(const SIndexRange &points, QOpenGLFunctions &gl) const;
    void drawBorder(const SBorderView &border, QOpenGLFunctions &gl);
    QVector<SIndexRange> visibleSpans(const SIndexRange &points) const;
    QMatrix4x4 matrix() const;
    void appendLayers(QVector<SRenderLayerDefinition> &layers) const;

    QVector<SPointVertex> m_borderVertices; ///< one per point
    QVector<SPointVertex> m_fillVertices;   ///< two per point, then as many zeros that are never drawn
    double m_borderWidth = 3.0;
    QColor m_borderColor{7, 203, 242, 255};
    bool m_borderEnable = true;
    bool m_enableGradient = false;
    QColor m_gradientColor{7, 203, 242, 255};
    bool m_finite = false;                ///< every value of the series is, in single precision
    SAreaFrame m_shown;                   ///< written by sync_buffers(), read by the drawing hooks
    SUploadedPart m_uploaded;             ///< render thread
    QVector<SPointVertex> m_partVertices; ///< render thread: on their way into a buffer
    int m_fillCount = 0;                  ///< render thread: vertices of the part in the buffer
    int m_borderCount = 0;                ///< the same of the border
    QRectF m_shownView;                   ///< render thread
};
