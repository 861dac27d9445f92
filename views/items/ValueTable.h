// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/SeriesProbe.h"

#include <QByteArray>
#include <QString>
#include <QVector>

#include <vector>

class PlotView;

/// What the visible series of views have in their part of x, as a table in CSV. Series that share their places share a
/// column of x; each other one has a column of x of its own before its values. A head names the columns.
///
/// It's taken in the GUI thread, holds the values of that moment without copying them, and is then written by any one
/// thread, some rows at a time.
class ValueTable
{
public:
    explicit ValueTable(const QVector<PlotView *> &views);

    /// Whether no value stands in view.
    bool isEmpty() const { return m_rowCount == 0; }
    QByteArray head() const;
    /// The next rows; empty after the last one. Values have the digits of their own type, gaps are empty cells.
    QByteArray nextRows();

private:
    struct SColumn
    {
        QString name;
        SeriesSnapshot values;
        std::vector<double> numbers; ///< of the rows that are being written
    };
    /// Series at the same places, and the range of their indices that is in view.
    struct SGroup
    {
        QString name; ///< of x
        SeriesProbe places;
        qint64 first = 0;
        qint64 end = 0;
        std::vector<double> xs;
        std::vector<SColumn> columns;
    };

    void add(const PlotView &view, const SeriesProbe &probe, const QString &name);
    void load(qint64 rows);
    char *writeRow(char *text, qint64 row) const;

    std::vector<SGroup> m_groups;
    qint64 m_rowCount = 0;
    qint64 m_nextRow = 0;
    int m_columnCount = 0;
};
