// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesSnapshot.h"

#include <QByteArray>

#include <cmath>
#include <vector>

/// What a scan finds in a range.
struct SFound
{
    qint64 count = 0;
    qint64 positives = 0;
    double lowest = 0.0;
    double highest = 0.0;
    qint64 lowestAt = -1;
    qint64 highestAt = -1;
    double positive = std::nan("");
    qint64 firstGap = -1;
    qint64 firstValue = -1;
    long double sum = 0.0L;

    void take(qint64 index, double value);
};

/// The plainest series: what a store must answer is found by looking at every value.
class PlainSeries
{
public:
    PlainSeries() = default;
    PlainSeries(std::initializer_list<double> values) : m_values(values) {}

    void append(double value) { m_values.push_back(value); }
    const double *data() const { return m_values.data(); }
    double *data() { return m_values.data(); }
    qint64 size() const { return qint64(m_values.size()); }
    double at(qint64 i) const { return m_values[size_t(i)]; }

    /// What a snapshot answers wrongly about [from, to), in words; empty if all is right.
    QByteArray complaint(const SeriesSnapshot &snapshot, qint64 from, qint64 to) const;
    /// The same without mean and deviation, for values that are too large for them.
    QByteArray extremesComplaint(const SeriesSnapshot &snapshot, qint64 from, qint64 to) const;

private:
    SFound scan(qint64 from, qint64 to) const;

    std::vector<double> m_values;
};

/// The values in single precision.
PlainSeries singles(const PlainSeries &series);

#define COMPARE_BY(complains, snapshot, series, from, to) \
  do { \
    const QByteArray complaint = (series).complains((snapshot), (from), (to)); \
    QVERIFY2(complaint.isEmpty(), complaint.constData()); \
  } while (false)
#define COMPARE_RANGE(snapshot, series, from, to) COMPARE_BY(complaint, snapshot, series, from, to)
#define COMPARE_EXTREMES(snapshot, series, from, to) COMPARE_BY(extremesComplaint, snapshot, series, from, to)
