// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/RegionStatistics.h"

#include <QObject>
#include <QPointer>

#include <optional>

class PlotSeries;
class PlotView;

/// A part of the x axis whose values are counted, added and measured. Declared inside a view; its edges and itself are
/// moved by the mouse. What it tells follows series that grow. GUI thread.
class PlotRegion : public QObject
{
    Q_OBJECT
    /// Both ends, in values of the x axis; the values at from <= x < to are told. NaN or an infinity changes nothing;
    /// ends in the wrong order tell nothing.
    Q_PROPERTY(double from READ from WRITE setFrom NOTIFY fromChanged)
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged)
    /// The series that is told of. Null: the first visible one.
    Q_PROPERTY(PlotSeries *series READ series WRITE setSeries NOTIFY seriesChanged)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)

    /// Whether there are values in it. Without, the rest is 0 or NaN.
    Q_PROPERTY(bool valid READ isValid NOTIFY statisticsChanged)
    Q_PROPERTY(double count READ count NOTIFY statisticsChanged)
    Q_PROPERTY(double sum READ sum NOTIFY statisticsChanged)
    Q_PROPERTY(double minimum READ minimum NOTIFY statisticsChanged)
    Q_PROPERTY(double maximum READ maximum NOTIFY statisticsChanged)
    Q_PROPERTY(double minimumAt READ minimumAt NOTIFY statisticsChanged)
    Q_PROPERTY(double maximumAt READ maximumAt NOTIFY statisticsChanged)
    Q_PROPERTY(double mean READ mean NOTIFY statisticsChanged)
    Q_PROPERTY(double deviation READ deviation NOTIFY statisticsChanged)
    /// The mean of x, weighted by the values.
    Q_PROPERTY(double centroid READ centroid NOTIFY statisticsChanged)
    /// The width of the highest peak half way up from the line between the first value and the last. NaN if there is
    /// none, if a gap is in the way, or if there are more than 65536 values.
    Q_PROPERTY(double peakWidth READ peakWidth NOTIFY statisticsChanged)

public:
    explicit PlotRegion(QObject *parent = nullptr);

    double from() const { return m_from; }
    void setFrom(double from);
    double to() const { return m_to; }
    void setTo(double to);
    PlotSeries *series() const { return m_series; }
    void setSeries(PlotSeries *series);
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);
    QString name() const { return m_name; }
    void setName(const QString &name);

    bool isValid() const { return m_told.isValid(); }
    double count() const { return m_told.count; }
    double sum() const { return m_told.sum; }
    double minimum() const { return m_told.minimum; }
    double maximum() const { return m_told.maximum; }
    double minimumAt() const { return m_told.minimumAt; }
    double maximumAt() const { return m_told.maximumAt; }
    double mean() const { return m_told.mean; }
    double deviation() const { return m_told.deviation; }
    double centroid() const { return m_told.centroid; }
    double peakWidth() const { return m_told.peakWidth; }

    // Called by the view.

    /// Looks at the values of the series, if others stand in the region than before.
    void look(const PlotView &view);

signals:
    void fromChanged();
    void toChanged();
    void seriesChanged();
    void visibleChanged();
    void nameChanged();
    void statisticsChanged();

private:
    double m_from = 0.0;
    double m_to = 0.0;
    bool m_visible = true;
    QString m_name;
    QPointer<PlotSeries> m_series;
    std::optional<RegionPart> m_part; ///< what is told of
    SRegionStatistics m_told;
};
