// SPDX-License-Identifier: MIT
#pragma once

#include "common/Export.h"
#include "plotters/IPlotter1D.h"

#include <memory>

class BarEdges;
struct HResBars;

/// Bars of individual widths that follow each other without gaps, exact far from the origin.
///
/// The series holds pairs (width, value) and ignores a last number without a partner. The bars begin at
/// plotterArea.left. Only the position of plotterArea can be set: its width and height belong to the data. xOffset is
/// not used. A series of more than maximumNumbers numbers is not drawn.
class VORLIX_EXPORT BarPlotterDx : public IPlotter1D
{
    Q_OBJECT

public:
    /// The vertices of a longer series would pass the 2 GiB that a container holds.
    static constexpr int maximumNumbers = 40'000'000;

    explicit BarPlotterDx(QObject *parent = nullptr);
    ~BarPlotterDx() override;

    void sync_buffers() override;
    /// The largest value of the bars that `area` touches, at least 0.0.
    double max_in(const QRectF &area) const override;
    /// Deliberate: a slot of uniform width, numbered as the bar under `point`; mouse_hovering() gives the true extent.
    const QRectF area_at(const QPointF &point) const override;
    /// Takes the position and keeps width and height.
    void setPlotterArea(const QRectF &area) override;
    SInfoPoint mouse_hovering(const QPointF &point) const override;
    const QVector<SAttributeDefinition> declareArributeArray() override;
    bool __update_vertex() override;
    bool __update_index() override;
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override;
    const SAttributePointer _fetch_attribute_data(const int &attribute) const override;
    void _fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea) override;
    /// The bar whose right edge is the first at or beyond x; -1 outside plotterArea or without bars, their number on
    /// its right edge. xOffset does not shift it.
    int _index_at(double x) const override;
    int __start_index(const QRectF &area) const override;
    int __end_index(const QRectF &area) const override;

private:
    int barCount() const { return m_data.size() / 2; }
    bool isLong() const;
    void drawLong(QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    double barWidth(int bar) const { return m_data.at(2 * bar); }
    double barValue(int bar) const { return m_data.at(2 * bar + 1); }
    double __dx_from_to(int from, int to) const;
    const BarEdges &edgesFrom(double start) const;
    void __update_draw_index();

    const std::unique_ptr<HResBars> m_bars;
};
