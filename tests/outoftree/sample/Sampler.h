// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVector>

/// Produces series on a thread of its own until that is interrupted. The nodes belong to the GUI thread, so `produced`
/// has to be queued to it.
class Sampler : public QObject
{
    Q_OBJECT

public slots:
    /// Produces one series after the other.
    void run();

signals:
    void produced(const QVector<double> &series);
};
