// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class QThread;

/// Nodes that keep a series at every resolution, one for each chart that shows it. They are deleted in the thread in
/// which they live.
struct SSeriesNodes
{
    std::shared_ptr<QObject> chart;
    std::shared_ptr<QObject> navigator;
};

/// What a file's series is to become.
struct SSeriesOrder
{
    QString file;
    int smoothDepth = 1;      ///< running average over so many values; 1 for none
    bool logarithmic = false; ///< decimal logarithms instead of the values
    SSeriesNodes nodes;       ///< to be given the series; they live in the worker's thread
};
Q_DECLARE_METATYPE(SSeriesOrder)

/// What became of an order. Both series are padded with zeros, see paddedSize().
struct SSeriesResult
{
    QString problem;         ///< in words; empty for none
    bool hasNumbers = false; ///< whether any line of the file is one
    int count = 0;           ///< values in the file
    double maximum = 0.0;    ///< the largest finite value of `shown`, at least 0
    QVector<double> values;  ///< as the file has them
    QVector<double> shown;   ///< smoothed, as logarithms, or the same as `values`
    SSeriesNodes nodes;      ///< those of the order, with `shown`; they live in the thread that the worker was told
};
Q_DECLARE_METATYPE(SSeriesResult)

/// The size to which a series of `count` values is padded so that its ten or so coarsest sizes, and with them the bars
/// that a plot of usual width shows, halve without a rest: every coarse bar then stands exactly over the values that it
/// is the maximum of. At most a 512th larger than `count`.
int paddedSize(int count);

/// Reads and transforms series with data nodes of the module, away from the GUI thread. Lives in a thread of its own.
class SeriesWorker : public QObject
{
    Q_OBJECT

public:
    /// `reader` is an SCSVReader and `average` a MovingAvarangeU64. They are used in this object's thread alone.
    /// Results are for the thread `receiver`.
    SeriesWorker(std::unique_ptr<QObject> reader, std::unique_ptr<QObject> average, QThread *receiver);

    void work(const SSeriesOrder &order);

signals:
    void finished(const SSeriesResult &result);

private:
    void read(const QString &file);
    QVector<double> smoothed(int depth);

    std::unique_ptr<QObject> m_reader;
    std::unique_ptr<QObject> m_average;
    QThread *m_receiver;
    QString m_file;
    QString m_problem;
    bool m_hasNumbers = false;
    int m_count = 0;
    QVector<double> m_values;
};
