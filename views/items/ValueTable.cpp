// SPDX-License-Identifier: MIT
#include "views/items/ValueTable.h"

#include "views/items/NumberText.h"
#include "views/items/PlotAxis.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotView.h"

#include <algorithm>

namespace {

constexpr qint64 cellsAtOnce = 16'384; // some milliseconds

/// A cell of text: in quotes where it must be.
QByteArray cell(QString text)
{
    const bool isPlain = !text.contains(QLatin1Char(',')) && !text.contains(QLatin1Char('"'))
        && !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\r'));
    if (isPlain)
        return text.toUtf8();
    text.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return '"' + text.toUtf8() + '"';
}

/// "energy [keV]".
QString withUnit(const QString &name, const PlotAxis &axis)
{
    return axis.unit().isEmpty() || axis.isTime() ? name : QStringLiteral("%1 [%2]").arg(name, axis.unit());
}

QString nameOr(const QString &name, const QString &other)
{
    return name.isEmpty() ? other : name;
}

} // namespace

ValueTable::ValueTable(const QVector<PlotView *> &views)
{
    for (const PlotView *view : views) {
        for (const PlotSeries *series : view->series()) {
            if (series->isVisible())
                add(*view, SeriesProbe(*series), series->name());
        }
    }
    for (const SGroup &group : m_groups)
        m_rowCount = std::max(m_rowCount, group.end - group.first);
}

void ValueTable::add(const PlotView &view, const SeriesProbe &probe, const QString &name)
{
    ++m_columnCount;
    if (probe.isEmpty())
        return;
    const SAxisRange part = view.axisX()->range();
    const qint64 first = probe.firstFrom(part.min);
    const qint64 end = probe.firstAbove(part.max);
    if (first >= end)
        return;
    const QString own =
        nameOr(name, m_columnCount == 1 ? QStringLiteral("y") : QStringLiteral("y%1").arg(m_columnCount));
    auto group = std::find_if(m_groups.begin(), m_groups.end(),
                              [&](const SGroup &other) { return other.places.hasPlacesOf(probe); });
    if (group == m_groups.end()) {
        QString x = nameOr(view.axisX()->titleText(), QStringLiteral("x"));
        if (!m_groups.empty())
            x += QStringLiteral(" of ") + own;
        m_groups.push_back({withUnit(x, *view.axisX()), probe, first, end, {}, {}});
        group = m_groups.end() - 1;
    }
    group->first = std::min(group->first, first);
    group->end = std::max(group->end, end);
    group->columns.push_back({withUnit(own, *view.axisY()), probe.values(), {}});
}

QByteArray ValueTable::head() const
{
    QByteArrayList cells;
    for (const SGroup &group : m_groups) {
        cells.append(cell(group.name));
        for (const SColumn &column : group.columns)
            cells.append(cell(column.name));
    }
    return cells.join(',') + '\n';
}

QByteArray ValueTable::nextRows()
{
    qint64 cells = 0;
    for (const SGroup &group : m_groups)
        cells += 1 + qint64(group.columns.size());
    const qint64 rows = std::min(std::max(cellsAtOnce / std::max(cells, qint64(1)), qint64(1)), m_rowCount - m_nextRow);
    load(rows);
    QByteArray text(int(rows * cells * (longestNumberText + 1)), Qt::Uninitialized);
    char *end = text.data();
    for (qint64 row = 0; row < rows; ++row)
        end = writeRow(end, row);
    text.truncate(int(end - text.constData()));
    m_nextRow += rows;
    return text;
}

void ValueTable::load(qint64 rows)
{
    for (SGroup &group : m_groups) {
        const qint64 from = group.first + m_nextRow;
        const qint64 to = std::clamp(group.end, from, from + rows);
        group.xs.resize(size_t(to - from));
        group.places.copyXs(from, to, group.xs.data());
        for (SColumn &column : group.columns) {
            column.numbers.resize(size_t(to - from));
            column.values.copyValues(from, to, column.numbers.data());
        }
    }
}

char *ValueTable::writeRow(char *text, qint64 row) const
{
    const auto writeCell = [&](const std::vector<double> &numbers, SampleType type) {
        if (size_t(row) < numbers.size())
            text = writeNumber(text, numbers[size_t(row)], type);
        *text++ = ',';
    };
    for (const SGroup &group : m_groups) {
        writeCell(group.xs, group.places.xType());
        for (const SColumn &column : group.columns)
            writeCell(column.numbers, column.values.type());
    }
    text[-1] = '\n';
    return text;
}
