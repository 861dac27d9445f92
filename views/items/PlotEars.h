// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

class PlotView;

/// What a screen reader gets of a view: a sentence about it and what the cursor tells. The sentence follows at most
/// once a second, so that a series that grows isn't told all the time. GUI thread.
class PlotEars : public QObject
{
    Q_OBJECT
    /// Title, series with their counts and ranges, and the part that's shown.
    Q_PROPERTY(QString sentence READ sentence NOTIFY sentenceChanged)
    /// The place of the cursor and the values there.
    Q_PROPERTY(QString cursor READ cursor NOTIFY cursorChanged)

public:
    explicit PlotEars(PlotView &view);

    QString sentence() const { return m_sentence; }
    QString cursor() const { return m_cursor; }

signals:
    void sentenceChanged();
    void cursorChanged();

private:
    void watchSeries();
    void listen();
    void tell();
    void tellCursor();
    QString seriesText() const;

    PlotView &m_view;
    QTimer m_pause;
    QString m_sentence;
    QString m_cursor;
};
