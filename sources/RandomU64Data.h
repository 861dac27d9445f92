// SPDX-License-Identifier: MIT
#pragma once

#include "filters/Filter1D.h"

#include <QTimer>

/// Publishes random series from a timer: histograms of normally distributed samples, or white noise.
///
/// It ticks from its construction on, first after `interval`. A tick adds new values to the series that is there, or
/// replaces it (`append`). A change of `type` or of the area starts again from zeros and generates at once. GUI thread.
class RandomU64Data : public Filter1D
{
    Q_OBJECT
    /// "normal": 10000 samples counted in bins, mean numBin / 2, standard deviation numBin / 8 (whole numbers).
    /// "white": uniform values from 0 to below 100. Anything else generates and publishes nothing.
    Q_PROPERTY(QString type READ type WRITE setType NOTIFY typeChanged)
    /// Whether a tick adds to the series. Applies from the next tick on.
    Q_PROPERTY(bool append READ append WRITE setAppend NOTIFY appendChanged)
    /// Milliseconds between ticks.
    Q_PROPERTY(int interval READ interval WRITE setInterval NOTIFY intervalChanged)
    /// Whether the timer goes on after its next tick. Does not start or stop it.
    Q_PROPERTY(bool repeat READ repeat WRITE setRepeat NOTIFY repeatChanged)
    /// Never stops the timer: true ticks each millisecond, false on each pass of the event loop, until `interval` is
    /// set.
    Q_PROPERTY(bool running READ running WRITE setRunning NOTIFY runningChanged)
    /// The length of the series from the next generation on. Nothing is generated for 0 and below; above maximumBins,
    /// maximumBins are.
    Q_PROPERTY(int numBin READ numBin WRITE setNumBin NOTIFY numBinChanged)

public:
    /// Keeps the memory for a mistaken number within 128 MiB a series.
    static constexpr int maximumBins = 1 << 24;

    explicit RandomU64Data(QObject *parent = nullptr);
    ~RandomU64Data() override;

    const QString &type() const { return m_type; }
    void setType(const QString &type);
    bool append() const { return m_append; }
    void setAppend(bool append);
    int interval() const { return m_interval; }
    void setInterval(int milliseconds);
    bool repeat() const { return m_repeat; }
    void setRepeat(bool repeat);
    bool running() const { return m_running; }
    void setRunning(bool running);
    int numBin() const { return m_numBin; }
    void setNumBin(int numBin);

signals:
    void typeChanged();
    void appendChanged();
    void intervalChanged();
    void repeatChanged();
    void numBinChanged();
    void runningChanged();

private:
    void tick();
    void restartSeries();
    void reset();
    void generate();
    int bins() const;

    QString m_type = QStringLiteral("normal");
    bool m_append = true;
    int m_interval = 2500;
    bool m_repeat = true;
    bool m_running = true;
    int m_numBin = 1024;
    QTimer m_timer;
};
