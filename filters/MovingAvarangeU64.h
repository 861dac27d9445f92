// SPDX-License-Identifier: MIT
#pragma once

#include "filters/Filter1D.h"

/// Smooths its input by a running average over `depth` values. The ends are extended by repeating the first and the
/// last value, which makes the result longer than the input by 2 * (depth - 1) values.
///
/// The sum is carried along: one subtraction and one addition per value, in this order, whatever the depth. Deliberate:
/// what is subtracted lags one place behind the window. Every series but an empty one is published, an unchanged one
/// too. A depth above maximumDepth, or a result longer than a series can be, fails with a warning and publishes
/// nothing. GUI thread.
class MovingAvarangeU64 : public Filter1D
{
    Q_OBJECT
    /// At least 1. Applies from the next series on.
    Q_PROPERTY(int depth READ depth WRITE setDepth NOTIFY depthChanged)

public:
    /// Keeps the memory that a mistaken depth costs within 256 MiB.
    static constexpr int maximumDepth = 1 << 24;

    explicit MovingAvarangeU64(QObject *parent = nullptr);
    ~MovingAvarangeU64() override;

    int depth() const { return m_depth; }
    void setDepth(int depth);

signals:
    void depthChanged();

protected:
    bool _filter_func(const QVector<double> &data) override;

private:
    int m_depth = 16;
};
