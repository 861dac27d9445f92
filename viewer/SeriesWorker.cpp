// SPDX-License-Identifier: MIT
#include "viewer/SeriesWorker.h"

#include "viewer/LineChecks.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace {

using Series = QVector<double>;

Series seriesOf(const QObject &node)
{
    return node.property("data").value<Series>();
}

/// Hands a series to a node. True if the node takes it.
bool give(QObject &node, const Series &series)
{
    return node.setProperty("data", QVariant::fromValue(series));
}

double largestFinite(const Series &series)
{
    double largest = 0.0;
    for (const double value : series) {
        if (value > largest && std::isfinite(value))
            largest = value;
    }
    return largest;
}

/// Closes the file before it looks at the lines: as long as it is open, it is taken for being read.
SLineChecks checkHead(const QString &path)
{
    constexpr int headSize = 1 << 20; // bytes
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray head = file.read(headSize);
    file.close();
    const int wholeLines = head.lastIndexOf('\n') + 1;
    if (head.size() == headSize && wholeLines > 0)
        head.truncate(wholeLines);
    QBuffer lines(&head);
    lines.open(QIODevice::ReadOnly);
    return checkLines(lines, QFileInfo(path).fileName());
}

/// Values of 1 and below lie on the axis.
void takeLogarithms(Series &series)
{
    for (double &value : series)
        value = value > 1.0 ? std::log10(value) : 0.0;
}

} // namespace

int paddedSize(int count)
{
    constexpr int leastBars = 512;
    qint64 step = 1;
    while (count / (2 * step) >= leastBars)
        step *= 2;
    const qint64 padded = (count + step - 1) / step * step;
    constexpr int longest = (1 << 28) - 16; // what fits into a vector of doubles
    return padded <= longest ? int(padded) : count;
}

SeriesWorker::SeriesWorker(std::unique_ptr<QObject> reader, std::unique_ptr<QObject> average, QThread *receiver)
    : m_reader(std::move(reader)),
      m_average(std::move(average)),
      m_receiver(receiver)
{
}

void SeriesWorker::work(const SSeriesOrder &order)
{
    if (order.file != m_file) {
        m_file = order.file;
        read(m_file);
    }
    SSeriesResult result;
    result.problem = m_problem;
    result.hasNumbers = m_hasNumbers;
    result.count = m_count;
    result.values = m_values;
    result.shown = order.smoothDepth > 1 && m_count > 0 ? smoothed(order.smoothDepth) : m_values;
    if (order.logarithmic)
        takeLogarithms(result.shown);
    result.maximum = largestFinite(result.shown);
    if (result.problem.isEmpty() && result.maximum == 0.0)
        result.problem = m_count == 0 ? tr("the file is empty")
            : order.logarithmic       ? tr("no value above 1, so nothing to see on a logarithmic scale")
                                      : tr("no numbers above 0");
    // Here and not by the receiver: with ten million values this is what takes longest, after reading them.
    result.nodes = order.nodes;
    for (const auto &node : {result.nodes.chart, result.nodes.navigator}) {
        give(*node, result.shown);
        node->moveToThread(m_receiver);
    }
    emit finished(result);
}

void SeriesWorker::read(const QString &file)
{
    const SLineChecks checks = checkHead(file);
    give(*m_reader, {});
    m_reader->setProperty("file", file);
    m_values = seriesOf(*m_reader);
    give(*m_reader, {}); // it is not to keep a second copy once this one is padded
    m_count = m_values.size();
    m_hasNumbers =
        checks.hasNumbers || std::any_of(m_values.cbegin(), m_values.cend(), [](double value) { return value != 0.0; });
    m_values.resize(paddedSize(m_count));
    const QFileInfo info(file);
    if (!info.isFile())
        m_problem = tr("no such file");
    else
        m_problem = m_count == 0 && info.size() > 0 ? tr("the file cannot be read") : checks.problem;
}

QVector<double> SeriesWorker::smoothed(int depth)
{
    Series input = m_values;
    input.resize(m_count);
    m_average->setProperty("depth", depth);
    give(*m_average, input);
    Series average = seriesOf(*m_average);
    give(*m_average, {0.0});
    // The average is longer than its input at both ends: value i of the input lies in the middle of what went into
    // this.
    const int shift = std::max(0, depth / 2 - 1);
    if (average.size() < m_count + shift)
        return m_values;
    average = average.mid(shift, m_count);
    average.resize(m_values.size());
    return average;
}
