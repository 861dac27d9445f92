// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/PlotSeries.h"

/// The area between a line through the values and a base line, with a border of its own if wanted. GUI thread.
class AreaSeries : public PlotSeries
{
    Q_OBJECT
    /// The color of the border, the area's own until one is set.
    Q_PROPERTY(
        QColor borderColor READ borderColor WRITE setBorderColor RESET resetBorderColor NOTIFY borderColorChanged)
    /// In item pixels; 0, the default, draws no border.
    Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    /// Where the area stands. On a log scale it stands on half the smallest positive value instead.
    Q_PROPERTY(double baseline READ baseline WRITE setBaseline NOTIFY baselineChanged)

public:
    explicit AreaSeries(QObject *parent = nullptr);
    ~AreaSeries() override;

    QColor borderColor() const { return m_borderColor.isValid() ? m_borderColor : color(); }
    void setBorderColor(const QColor &color);
    void resetBorderColor() { setBorderColor(QColor()); }
    double borderWidth() const { return m_borderWidth; }
    void setBorderWidth(double width);
    double baseline() const { return m_baseline; }
    void setBaseline(double baseline);

signals:
    void borderColorChanged();
    void borderWidthChanged();
    void baselineChanged();

protected:
    void drawValues(const SeriesSnapshot &values, const SeriesPlaces &places, const ColumnGrid &grid,
                    const RowScale &rows, double ratio, SSeriesShape &shape) const override;

private:
    QColor m_borderColor;
    double m_borderWidth = 0.0;
    double m_baseline = 0.0;
};
