// SPDX-License-Identifier: MIT
#include "Sampler.h"

#include <QThread>

//! [run]
void Sampler::run()
{
    constexpr int samples = 400;
    for (int series = 1; !QThread::currentThread()->isInterruptionRequested(); ++series) {
        QVector<double> values(samples, 0.0);
        values[samples / 4] = 100.0 * series;
        values[samples / 2] = 50.0 * series;
        emit produced(values);
        QThread::msleep(5);
    }
}
//! [run]
