// SPDX-License-Identifier: MIT
#include "viewer/SeriesFile.h"

#include <QQmlEngine>
#include <QRectF>

#include <algorithm>
#include <cmath>

namespace {

/// A node that belongs to nobody but the caller.
std::unique_ptr<QObject> make(QQmlComponent *component)
{
    std::unique_ptr<QObject> node(component ? component->create() : nullptr);
    if (!node)
        return std::make_unique<QObject>();
    QQmlEngine::setObjectOwnership(node.get(), QQmlEngine::CppOwnership);
    node->setParent(nullptr);
    return node;
}

} // namespace

SeriesFile::SeriesFile(QObject *parent) : QObject(parent)
{
    qRegisterMetaType<SSeriesOrder>();
    qRegisterMetaType<SSeriesResult>();
}

SeriesFile::~SeriesFile()
{
    m_thread.quit();
    m_thread.wait();
    delete m_worker; // its thread has ended; so this one may
}

void SeriesFile::componentComplete()
{
    start();
    connect(this, &SeriesFile::orderChanged, this, &SeriesFile::order);
    connect(this, &SeriesFile::binWidthChanged, this, &SeriesFile::seriesChanged);
    order();
}

void SeriesFile::start()
{
    std::unique_ptr<QObject> reader = make(m_readerComponent);
    std::unique_ptr<QObject> average = make(m_averageComponent);
    reader->moveToThread(&m_thread);
    average->moveToThread(&m_thread);
    m_worker = new SeriesWorker(std::move(reader), std::move(average));
    m_worker->moveToThread(&m_thread);
    connect(m_worker, &SeriesWorker::finished, this, &SeriesFile::take); // queued: from the thread
    m_thread.setObjectName(QStringLiteral("reader"));
    m_thread.start();
}

void SeriesFile::order()
{
    if (m_file.isEmpty())
        return;
    ++m_openOrders;
    const SSeriesOrder order{m_file, std::max(m_smoothDepth, 1), m_logarithmic};
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, order] { worker->work(order); }, Qt::QueuedConnection);
    if (m_busy)
        return;
    m_busy = true;
    emit busyChanged();
}

void SeriesFile::take(const SSeriesOrder &, const SSeriesResult &result)
{
    if (--m_openOrders > 0)
        return; // a newer order stands
    m_result = result;
    emit seriesChanged();
    m_busy = false;
    emit busyChanged();
}

void SeriesFile::feed(QObject *node) const
{
    if (!node)
        return;
    const double height = m_result.maximum > 0.0 ? m_result.maximum : 1.0;
    node->setProperty("area", QRectF(0.0, 0.0, m_result.shown.size() * m_binWidth, height));
    node->setProperty("data", QVariant::fromValue(m_result.shown));
}

QVariantMap SeriesFile::highestIn(double left, double right) const
{
    const auto index = [this](double x) {
        return int(std::lround(std::min(std::max(x / m_binWidth, 0.0), double(count()))));
    };
    const int first = index(left);
    const int end = index(right);
    if (first >= end)
        return {};
    const auto begin = m_result.values.cbegin();
    const auto highest = std::max_element(begin + first, begin + end);
    return {{QStringLiteral("index"), int(highest - begin)},
            {QStringLiteral("value"), *highest},
            {QStringLiteral("count"), end - first}};
}
