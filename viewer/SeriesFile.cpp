// SPDX-License-Identifier: MIT
#include "viewer/SeriesFile.h"

#include "viewer/ReadingPosition.h"

#include <QFileInfo>
#include <QQmlEngine>
#include <QRectF>

#include <algorithm>
#include <chrono>
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
    constexpr std::chrono::milliseconds watchInterval{60};
    m_watch.setInterval(watchInterval);
    connect(&m_watch, &QTimer::timeout, this, &SeriesFile::watch);
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
    m_worker = new SeriesWorker(std::move(reader), std::move(average), thread());
    m_worker->moveToThread(&m_thread);
    connect(m_worker, &SeriesWorker::finished, this, &SeriesFile::take); // queued: from the thread
    m_thread.setObjectName(QStringLiteral("reader"));
    m_thread.start();
}

std::shared_ptr<QObject> SeriesFile::makeNode()
{
    std::unique_ptr<QObject> node = make(m_decimatorComponent);
    node->moveToThread(&m_thread);
    return {node.release(), [](QObject *done) {
                // Of a thread that has ended, nobody else would.
                if (done->thread() == QThread::currentThread() || !done->thread()->isRunning())
                    delete done;
                else
                    done->deleteLater();
            }};
}

void SeriesFile::order()
{
    if (m_file.isEmpty())
        return;
    ++m_openOrders;
    const SSeriesOrder order{m_file, std::max(m_smoothDepth, 1), m_logarithmic, {makeNode(), makeNode()}};
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, order] { worker->work(order); }, Qt::QueuedConnection);
    setBusy(true);
}

void SeriesFile::setBusy(bool busy)
{
    if (busy == m_busy)
        return;
    m_busy = busy;
    if (busy)
        m_watch.start();
    else
        m_watch.stop();
    setProgress(-1.0);
    emit busyChanged();
}

void SeriesFile::watch()
{
    const qint64 size = QFileInfo(m_file).size();
    const qint64 read = readingPosition(m_file);
    // It begins twice: its head is looked at first.
    setProgress(size > 0 && read >= 0 ? std::max(std::min(double(read) / size, 1.0), m_progress) : -1.0);
}

void SeriesFile::setProgress(double progress)
{
    if (progress == m_progress)
        return;
    m_progress = progress;
    emit progressChanged();
}

void SeriesFile::take(const SSeriesResult &result)
{
    if (--m_openOrders > 0)
        return;                                 // a newer order stands
    const SSeriesNodes former = m_result.nodes; // until nobody shows them
    m_result = result;
    emit seriesChanged();
    setBusy(false);
}

void SeriesFile::spreadNodes() const
{
    const double height = m_result.maximum > 0.0 ? m_result.maximum : 1.0;
    const QRectF area(0.0, 0.0, m_result.shown.size() * m_binWidth, height);
    for (QObject *node : {chartNode(), navigatorNode()}) {
        if (node)
            node->setProperty("area", area);
    }
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
