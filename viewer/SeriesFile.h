// SPDX-License-Identifier: MIT
#pragma once

#include "viewer/SeriesWorker.h"

#include <QQmlComponent>
#include <QQmlParserStatus>
#include <QThread>
#include <QTimer>
#include <QVariantMap>

/// A file of numbers, read and transformed in a thread of its own; every change of what is asked for starts it anew.
/// GUI thread.
class SeriesFile : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(QString file MEMBER m_file NOTIFY orderChanged)
    /// Running average over so many values; 1 for none.
    Q_PROPERTY(int smoothDepth MEMBER m_smoothDepth NOTIFY orderChanged)
    /// Whether the series becomes its decimal logarithms.
    Q_PROPERTY(bool logarithmic MEMBER m_logarithmic NOTIFY orderChanged)
    /// Width of one value along x.
    Q_PROPERTY(double binWidth MEMBER m_binWidth NOTIFY binWidthChanged)
    /// Make an SCSVReader, a MovingAvarangeU64 and a DecimatorU64.
    Q_PROPERTY(QQmlComponent *reader MEMBER m_readerComponent)
    Q_PROPERTY(QQmlComponent *average MEMBER m_averageComponent)
    Q_PROPERTY(QQmlComponent *decimator MEMBER m_decimatorComponent)
    /// The series to show, for the chart and for the navigator: nodes that the decimator component made. New ones with
    /// every change of the series; null before the first.
    Q_PROPERTY(QObject *chartNode READ chartNode NOTIFY seriesChanged)
    Q_PROPERTY(QObject *navigatorNode READ navigatorNode NOTIFY seriesChanged)
    /// Whether an order is being worked on.
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)
    /// How much of the file has been read, from 0 to 1; -1 while it is not being read or nobody knows.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// Why there is nothing to see, or not what the file's author meant, in words; empty for no reason.
    Q_PROPERTY(QString problem READ problem NOTIFY seriesChanged)
    /// Whether any line of the file is a number.
    Q_PROPERTY(bool hasNumbers READ hasNumbers NOTIFY seriesChanged)
    /// Values in the file.
    Q_PROPERTY(int count READ count NOTIFY seriesChanged)
    /// The largest finite value to show, at least 0.
    Q_PROPERTY(double maximum READ maximum NOTIFY seriesChanged)

public:
    explicit SeriesFile(QObject *parent = nullptr);
    ~SeriesFile() override;

    QObject *chartNode() const { return m_result.nodes.chart.get(); }
    QObject *navigatorNode() const { return m_result.nodes.navigator.get(); }
    bool isBusy() const { return m_busy; }
    double progress() const { return m_progress; }
    QString problem() const { return m_result.problem; }
    bool hasNumbers() const { return m_result.hasNumbers; }
    int count() const { return m_result.count; }
    double maximum() const { return m_result.maximum; }

    /// Spreads the nodes over the series' area, which may reach a little beyond the file's last value.
    Q_INVOKABLE void spreadNodes() const;
    /// The highest of the values that the file has between two places along x: "index", "value" and, of how many,
    /// "count". Empty where it has none.
    Q_INVOKABLE QVariantMap highestIn(double left, double right) const;

    void classBegin() override {}
    void componentComplete() override;

signals:
    void orderChanged();
    void binWidthChanged();
    void busyChanged();
    void progressChanged();
    void seriesChanged();

private:
    void start();
    std::shared_ptr<QObject> makeNode();
    void order();
    void setBusy(bool busy);
    void watch();
    void setProgress(double progress);
    void take(const SSeriesResult &result);

    QString m_file;
    int m_smoothDepth = 1;
    bool m_logarithmic = false;
    double m_binWidth = 1.0;
    QQmlComponent *m_readerComponent = nullptr;
    QQmlComponent *m_averageComponent = nullptr;
    QQmlComponent *m_decimatorComponent = nullptr;
    bool m_busy = false;
    double m_progress = -1.0;
    QTimer m_watch; ///< runs while busy
    int m_openOrders = 0;
    SSeriesResult m_result;
    QThread m_thread;
    SeriesWorker *m_worker = nullptr; ///< lives in the thread and goes with it
};
