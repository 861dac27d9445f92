// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisRange.h"

#include <QObject>
#include <QString>

#include <limits>

/// One axis of a view: which part of the values is shown, and how its ticks are written. GUI thread.
///
/// An end that was set (min, max) stays there: it is home, to which the view returns after a zoom. Ends that weren't
/// set follow the data while autoRange is on. A range is never empty, upside down or beyond 1e300: an end that passes
/// the other pushes it away, and what isn't a number (or 0 and below on a log scale) changes nothing and is said once.
class PlotAxis : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double min READ min WRITE setMin RESET resetMin NOTIFY minChanged)
    Q_PROPERTY(double max READ max WRITE setMax RESET resetMax NOTIFY maxChanged)
    /// Whether ends that weren't set follow the data.
    Q_PROPERTY(bool autoRange READ autoRange WRITE setAutoRange NOTIFY autoRangeChanged)
    Q_PROPERTY(QString titleText READ titleText WRITE setTitleText NOTIFY titleTextChanged)
    /// Written behind the title, in brackets, and behind values in the read-out.
    Q_PROPERTY(QString unit READ unit WRITE setUnit NOTIFY unitChanged)
    /// The distance of labelled ticks, in values, on a time axis in seconds. 0: chosen. Where it would crowd the
    /// labels, multiples.
    Q_PROPERTY(double tickInterval READ tickInterval WRITE setTickInterval NOTIFY tickIntervalChanged)
    /// Ticks without a label between two labelled ones, 0 to 100. A log scale has its own.
    Q_PROPERTY(int subTickCount READ subTickCount WRITE setSubTickCount NOTIFY subTickCountChanged)
    /// How numbers are written, as printf does, such as "%.2f" or "%d". Empty: chosen. Any other format is said and not
    /// used.
    Q_PROPERTY(QString labelFormat READ labelFormat WRITE setLabelFormat NOTIFY labelFormatChanged)
    /// How moments are written, as QDateTime does, such as "hh:mm:ss". It makes the axis one of time. Empty: chosen.
    Q_PROPERTY(QString timeFormat READ timeFormat WRITE setTimeFormat NOTIFY timeFormatChanged)
    /// The moment at value 0, in seconds since 1970 (UTC); values are seconds from there. It makes the axis one of
    /// time. NaN: none, or that of the store.
    Q_PROPERTY(double startTime READ startTime WRITE setStartTime NOTIFY startTimeChanged)
    Q_PROPERTY(bool gridVisible READ gridVisible WRITE setGridVisible NOTIFY gridVisibleChanged)
    Q_PROPERTY(bool labelsVisible READ labelsVisible WRITE setLabelsVisible NOTIFY labelsVisibleChanged)
    /// No hand and no data move the shown part beyond these. NaN or an infinity: no limit.
    Q_PROPERTY(double lowerLimit READ lowerLimit WRITE setLowerLimit NOTIFY lowerLimitChanged)
    Q_PROPERTY(double upperLimit READ upperLimit WRITE setUpperLimit NOTIFY upperLimitChanged)
    /// Whether equal ratios are equally long. The type says what it is at first.
    Q_PROPERTY(bool logScale READ isLog WRITE setLog NOTIFY logScaleChanged)

public:
    ~PlotAxis() override;

    double min() const { return m_range.min; }
    void setMin(double min);
    void resetMin();
    double max() const { return m_range.max; }
    void setMax(double max);
    void resetMax();
    bool autoRange() const { return m_autoRange; }
    void setAutoRange(bool autoRange);
    QString titleText() const { return m_titleText; }
    void setTitleText(const QString &titleText);
    QString unit() const { return m_unit; }
    void setUnit(const QString &unit);
    double tickInterval() const { return m_tickInterval; }
    void setTickInterval(double tickInterval);
    int subTickCount() const { return m_subTickCount; }
    void setSubTickCount(int subTickCount);
    QString labelFormat() const { return m_labelFormat; }
    void setLabelFormat(const QString &labelFormat);
    QString timeFormat() const { return m_timeFormat; }
    void setTimeFormat(const QString &timeFormat);
    double startTime() const { return m_startTime; }
    void setStartTime(double startTime);
    bool gridVisible() const { return m_gridVisible; }
    void setGridVisible(bool gridVisible);
    bool labelsVisible() const { return m_labelsVisible; }
    void setLabelsVisible(bool labelsVisible);
    double lowerLimit() const { return m_lowerLimit; }
    void setLowerLimit(double lowerLimit);
    double upperLimit() const { return m_upperLimit; }
    void setUpperLimit(double upperLimit);
    bool isLog() const { return m_log; }
    /// A range that has no place on the new scale is mended.
    void setLog(bool log);

    // Called by the view's parts.

    SAxisRange range() const { return m_range; }
    /// Shows another part, within the limits, without making it home.
    void setRange(double min, double max);
    /// What setRange() would show.
    SAxisRange allowed(const SAxisRange &range) const;
    bool followsMin() const { return m_autoRange && !m_minIsSet; }
    bool followsMax() const { return m_autoRange && !m_maxIsSet; }
    /// The range after a reset: ends that were set where they were set, the others where `data` ends.
    SAxisRange home(const SAxisRange &data) const;

    AxisMapping mapping(double pixelsFrom, double pixelsTo) const;
    bool isTime() const;
    /// Whether it's one of time, but what it shows reaches beyond calendars: then it writes seconds.
    bool isBeyondDates() const;
    /// The moment at value 0: startTime, else that of the stores, else 1970.
    double effectiveStartTime() const;
    /// The moment that the view's stores carry; NaN if they have none.
    void setStoreStartTime(double startTime);
    /// Title and unit in one line.
    QString heading() const;
    /// A value with its unit, or a moment, as precise as `resolution` (in values) asks for.
    QString valueText(double value, double resolution) const;

signals:
    void minChanged();
    void maxChanged();
    void autoRangeChanged();
    void titleTextChanged();
    void unitChanged();
    void tickIntervalChanged();
    void subTickCountChanged();
    void labelFormatChanged();
    void timeFormatChanged();
    void startTimeChanged();
    void gridVisibleChanged();
    void labelsVisibleChanged();
    void lowerLimitChanged();
    void upperLimitChanged();
    void logScaleChanged();

    /// After minChanged and maxChanged, once however many of them changed, and when the scale is another one.
    void rangeChanged();
    /// Ticks, labels or grid look different although the range is the same.
    void lookChanged();
    /// Which ends follow the data, or the limits, are others: whoever keeps the range looks again.
    void rulesChanged();
    /// It's being destroyed, but can still be asked for everything: several views may have it, and what one of them
    /// tells lets others look at it.
    void aboutToGo(QObject *self);

protected:
    explicit PlotAxis(bool log, QObject *parent);

private:
    bool accepts(double end, const char *name);
    void tellIfBeyondDates();
    void takeRange(const SAxisRange &range);

    SAxisRange m_range;
    SAxisRange m_home; ///< the ends that were set
    bool m_minIsSet = false;
    bool m_maxIsSet = false;
    bool m_autoRange = true;
    bool m_log;
    bool m_gridVisible = true;
    bool m_labelsVisible = true;
    bool m_hasWarned = false;
    bool m_hasToldOfDates = false;
    int m_subTickCount = 0;
    double m_tickInterval = 0.0;
    double m_startTime = std::numeric_limits<double>::quiet_NaN();
    double m_storeStartTime = std::numeric_limits<double>::quiet_NaN();
    double m_lowerLimit = -std::numeric_limits<double>::infinity();
    double m_upperLimit = std::numeric_limits<double>::infinity();
    QString m_titleText;
    QString m_unit;
    QString m_labelFormat;
    QString m_timeFormat;
};
