// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesSnapshot.h"

#include <QByteArray>

#include <cmath>
#include <vector>

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

private:
    std::vector<double> m_values;
};

#define COMPARE_RANGE(snapshot, series, from, to) \
  do { \
    const QByteArray complaint = (series).complaint((snapshot), (from), (to)); \
    QVERIFY2(complaint.isEmpty(), complaint.constData()); \
  } while (false)
