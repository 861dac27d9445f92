// SPDX-License-Identifier: MIT
#include "sources/RandomU64Data.h"

#include "common/Change.h"

#include <QRandomGenerator>

#include <algorithm>
#include <random>

namespace {

QVector<double> normalHistogram(int bins, int samples, double mean, double sigma)
{
    std::mt19937 engine(quint32(QRandomGenerator64::global()->generate()));
    std::normal_distribution<double> standard; // scaled here, because a distribution takes no sigma of 0
    QVector<double> histogram(bins, 0.0);
    double *counts = histogram.data();
    for (int i = 0; i < samples; ++i) {
        const double x = standard(engine) * sigma + mean;
        if (x >= 0.0 && x < bins)
            counts[int(x)] += 1.0;
    }
    return histogram;
}

/// Uniform in [0, 100), on a grid of 2^-53 of that range.
QVector<double> whiteNoise(int bins)
{
    QVector<double> noise(bins, 0.0);
    for (double &value : noise)
        value = double(QRandomGenerator64::global()->generate() >> 11) * 0x1p-53 * 100.0;
    return noise;
}

} // namespace

RandomU64Data::RandomU64Data(QObject *parent) : Filter1D(parent)
{
    m_timer.setInterval(m_interval);
    m_timer.setSingleShot(!m_repeat);
    connect(&m_timer, &QTimer::timeout, this, &RandomU64Data::tick);
    m_timer.start();
    connect(this, &Filter1D::areaChanged, this, &RandomU64Data::restartSeries);
}

RandomU64Data::~RandomU64Data()
{
    withdraw();
}

// properties

void RandomU64Data::setType(const QString &type)
{
    if (!change(m_type, type))
        return;
    const QPointer<RandomU64Data> alive(this);
    restartSeries();
    if (alive)
        emit typeChanged();
}

void RandomU64Data::setAppend(bool append)
{
    if (change(m_append, append))
        emit appendChanged();
}

void RandomU64Data::setInterval(int milliseconds)
{
    if (!change(m_interval, milliseconds))
        return;
    m_timer.setInterval(m_interval);
    emit intervalChanged();
}

void RandomU64Data::setRepeat(bool repeat)
{
    if (!change(m_repeat, repeat))
        return;
    m_timer.setSingleShot(!m_repeat);
    emit repeatChanged();
}

void RandomU64Data::setRunning(bool running)
{
    if (!change(m_running, running))
        return;
    m_timer.start(int(m_running)); // Deliberate: the flag is the period in milliseconds, so neither value stops it.
    emit runningChanged();
}

void RandomU64Data::setNumBin(int numBin)
{
    if (change(m_numBin, numBin))
        emit numBinChanged();
}

// the series

void RandomU64Data::tick()
{
    if (!m_append)
        reset();
    generate();
}

void RandomU64Data::restartSeries()
{
    reset();
    generate();
}

void RandomU64Data::reset()
{
    m_data = QVector<double>(bins(), 0.0);
}

void RandomU64Data::generate()
{
    constexpr int samples = 10000;
    QVector<double> series;
    if (m_type == QLatin1String("normal"))
        series = normalHistogram(bins(), samples, bins() / 2, bins() / 8); // Deliberate: whole numbers.
    else if (m_type == QLatin1String("white"))
        series = whiteNoise(bins());
    else
        return;
    const int known = std::min(series.size(), m_data.size());
    for (int i = 0; i < known; ++i)
        series[i] += m_data.at(i);
    setData(series);
}

int RandomU64Data::bins() const
{
    return std::min(std::max(m_numBin, 0), maximumBins);
}
