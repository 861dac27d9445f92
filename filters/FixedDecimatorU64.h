// SPDX-License-Identifier: MIT
#pragma once

#include "filters/Filter1D.h"

/// Reduces its input to `numPoint` values, the largest of as many buckets of about equal size.
///
/// Every series is published, an unchanged one too; an empty one, and any while the area is null, changes nothing. The
/// node's series always has `numPoint` values, zeros at first. With `numPoint` larger than the input, buckets without a
/// value give 0.0; with two or more buckets per value, those after the last value keep what they held. An area that is
/// set after the series does not filter it again. GUI thread.
class FixedDecimatorU64 : public Filter1D
{
    Q_OBJECT
    /// At least 1, at most maximumPoints and, where the node has a parent with data, at most as many as the parent has.
    /// A change filters the parent's series again.
    Q_PROPERTY(int numPoint READ numPoint WRITE setNumPoint NOTIFY numPointChanged)

public:
    /// Keeps the memory for a mistaken number within 128 MiB.
    static constexpr int maximumPoints = 1 << 24;

    explicit FixedDecimatorU64(QObject *parent = nullptr);
    ~FixedDecimatorU64() override;

    int numPoint() const { return m_numPoint; }
    void setNumPoint(int numPoint);

signals:
    void numPointChanged();

protected:
    bool _filter_func(const QVector<double> &data) override;

private:
    int m_numPoint = 256;
};
