// SPDX-License-Identifier: MIT
#pragma once

#include "filters/Filter1D.h"

/// Walks through a series of (width, value) pairs in `numPoint` equal steps across the area and publishes `numPoint`
/// numbers: the width of a step, 0, the largest value of the last step, and zeros.
///
/// Deliberate: every step writes to entries 0 and 2, so a series of `numPoint` bins never comes about; fewer than three
/// entries leave out what does not fit. The walk stops at the last pair. Every series is published, an unchanged one
/// too; one without a pair, and any while the area is null, changes nothing. GUI thread.
class FixedDecimator2D : public Filter1D
{
    Q_OBJECT
    /// At least 1, at most maximumPoints. A change filters the parent's series again.
    Q_PROPERTY(int numPoint READ numPoint WRITE setNumPoint NOTIFY numPointChanged)

public:
    /// Keeps the memory for a mistaken number within 128 MiB.
    static constexpr int maximumPoints = 1 << 24;

    explicit FixedDecimator2D(QObject *parent = nullptr);
    ~FixedDecimator2D() override;

    int numPoint() const { return m_numPoint; }
    void setNumPoint(int numPoint);

signals:
    void numPointChanged();

protected:
    bool _filter_func(const QVector<double> &data) override;

private:
    int m_numPoint = 256;
};
