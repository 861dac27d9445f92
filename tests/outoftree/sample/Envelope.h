// SPDX-License-Identifier: MIT
#pragma once

//! [class]
#include <filters/Filter1D.h>

/// A node that holds a peak and lets it fall off: each number is at least `decay` times its left neighbour's result.
class Envelope : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(double decay READ decay WRITE setDecay NOTIFY decayChanged)

public:
    using Filter1D::Filter1D;
    ~Envelope() override;

    double decay() const { return m_decay; }
    void setDecay(double decay);

signals:
    void decayChanged();

protected:
    bool _filter_func(const QVector<double> &data) override;

private:
    double m_decay = 0.9;
};
//! [class]
