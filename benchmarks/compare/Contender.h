// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/compare/TestSeries.h"

#include <QString>
#include <QStringList>

class QWindow;

/// What is to be drawn: one series, in one of three ways, by one of the contender's variants.
struct STask
{
    QString kind; ///< "bars", "line" or "area"
    QString variant;
    int count = 0;
};

/// One library that draws the series in a black window of 1000 x 600 pixels, without axes, legends or margins: the plot
/// is the window. Value 0 is the bottom edge, plotTop the top edge. GUI thread.
class Contender
{
public:
    Contender() = default;
    virtual ~Contender() = default;
    Contender(const Contender &) = delete;
    Contender &operator=(const Contender &) = delete;

    /// The variants that can draw `kind`, none if the library cannot.
    virtual QStringList variants(const QString &kind) const = 0;
    /// Brings the contest's series into the contender's own form, before any clock runs: applications have theirs.
    virtual void prepare(const STask &, const QVector<double> &) {}
    /// Makes the chart with the whole series in view, shows the window and returns it.
    virtual QWindow *open(const STask &task, const QVector<double> &series) = 0;
    /// Shows another series of the same length.
    virtual void replace(const QVector<double> &series) = 0;
    /// Shows a part of the series.
    virtual void zoom(const SView &view) = 0;
};

constexpr int windowWidth = 1000;
constexpr int windowHeight = 600;

/// To be called whenever a frame may have reached the screen. Any thread.
void frameFinished();

/// Runs the task of the command line and prints a line of JSON per measurement. The application object exists.
int runContest(Contender &contender);
