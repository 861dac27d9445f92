// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVector>

/// Produces series on a thread of its own. The nodes belong to the GUI thread, so `produced` has to be queued to it.
class Sampler : public QObject
{
    Q_OBJECT

public:
    explicit Sampler(int series) : m_series(series) {}

public slots:
    /// Produces all series, one after the other.
    void run();

signals:
    void produced(const QVector<double> &series);

private:
    int m_series;
};
