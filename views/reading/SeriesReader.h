// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesStore.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QStringList>
#include <QVariant>

#include <atomic>
#include <memory>

class ReadingJob;
struct SReadingRequest;
struct SReadingState;

/// Reads the numbers of a file, a pipe or standard input into stores, one for each column, while plots already show
/// what there is. Text of any usual kind, NumPy arrays, WAV and raw samples; files that others are still writing.
///
/// It begins by itself once `source` is set and the component is complete, in a thread of its own; the thread of this
/// object waits for a disk in firstLines() alone. What was guessed is said in `detected`, and every guess has a
/// property. Setting a property that matters reads again.
class SeriesReader : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)

    /// A path, a file: or qrc: URL, or "-" for standard input.
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    Q_PROPERTY(Format format READ format WRITE setFormat NOTIFY formatChanged)
    /// The column that `store` is: a number from 1, or a name. Unset: the first one that isn't x.
    Q_PROPERTY(QVariant column READ column WRITE setColumn NOTIFY columnChanged)
    /// The column that `xStore` is. Unset: none, unless the first column holds times that ascend.
    Q_PROPERTY(QVariant xColumn READ xColumn WRITE setXColumn NOTIFY xColumnChanged)
    /// What is between columns: one character; " " stands for any number of blanks and tabs. Empty: guessed.
    Q_PROPERTY(QString separator READ separator WRITE setSeparator NOTIFY separatorChanged)
    /// "." or ",". Empty: guessed.
    Q_PROPERTY(QString decimalPoint READ decimalPoint WRITE setDecimalPoint NOTIFY decimalPointChanged)
    /// What a line of comment begins with. Empty: "#", "%" and "//" do.
    Q_PROPERTY(QString commentPrefix READ commentPrefix WRITE setCommentPrefix NOTIFY commentPrefixChanged)
    /// Lines at the beginning of a text that are not looked at.
    Q_PROPERTY(int skipLines READ skipLines WRITE setSkipLines NOTIFY skipLinesChanged)
    /// What raw samples are: SeriesStore.Float64 and so on.
    Q_PROPERTY(SeriesStore::ValueType sampleType READ sampleType WRITE setSampleType NOTIFY sampleTypeChanged)
    /// Of raw samples.
    Q_PROPERTY(ByteOrder byteOrder READ byteOrder WRITE setByteOrder NOTIFY byteOrderChanged)
    /// Bytes in front of raw samples.
    Q_PROPERTY(qreal offset READ offset WRITE setOffset NOTIFY offsetChanged)
    /// The channel of a WAV file that `store` is, from 1; 0 is the first.
    Q_PROPERTY(int channel READ channel WRITE setChannel NOTIFY channelChanged)
    /// Whether a file goes on being read while others write it. Pipes are read until their writer closes them, always.
    Q_PROPERTY(bool follow READ follow WRITE setFollow NOTIFY followChanged)
    /// False holds: nothing is read until it's true again.
    Q_PROPERTY(bool running READ isRunning WRITE setRunning NOTIFY runningChanged)

    /// The chosen column; null until it's known which columns there are. Until it's complete, it refuses append() and
    /// clear().
    Q_PROPERTY(SeriesStore *store READ store NOTIFY storesChanged)
    /// All columns of numbers.
    Q_PROPERTY(QList<QObject *> stores READ stores NOTIFY storesChanged)
    /// The places of the values; null if they are evenly spaced. Times count seconds from its `startTime`.
    Q_PROPERTY(SeriesStore *xStore READ xStore NOTIFY storesChanged)
    /// Names and units of `stores`; empty texts for those that have none.
    Q_PROPERTY(QStringList columnNames READ columnNames NOTIFY storesChanged)
    Q_PROPERTY(QStringList columnUnits READ columnUnits NOTIFY storesChanged)
    /// Ready: everything that is there was read. A followed file goes on from there.
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// 0 to 1; 0 while the size isn't known.
    Q_PROPERTY(qreal progress READ progress NOTIFY progressChanged)
    /// What went wrong and what helps, for people; empty if nothing did.
    Q_PROPERTY(QString errorString READ errorString NOTIFY statusChanged)
    /// What was guessed, and what was noticed, for people.
    Q_PROPERTY(QString detected READ detected NOTIFY detectedChanged)
    /// How a text is read, be it guessed or set: its separator, decimalPoint and headLines. Empty for other files.
    Q_PROPERTY(QVariantMap layout READ layout NOTIFY storesChanged)
    /// Lines of a text with something that was not understood; they are gaps. The first one counts from 1; 0 if there
    /// is none.
    Q_PROPERTY(qreal badLines READ badLines NOTIFY badLinesChanged)
    Q_PROPERTY(qreal firstBadLine READ firstBadLine NOTIFY badLinesChanged)
    /// How fast bytes were read lately.
    Q_PROPERTY(qreal bytesPerSecond READ bytesPerSecond NOTIFY progressChanged)
    /// Samples a second as a WAV file says it; 0 if it isn't known.
    Q_PROPERTY(qreal sampleRate READ sampleRate NOTIFY storesChanged)

public:
    enum Format : int { Auto, Text, Npy, Raw, Wav };
    Q_ENUM(Format)
    enum ByteOrder : int { LittleEndian, BigEndian };
    Q_ENUM(ByteOrder)
    enum Status : int { Null, Loading, Ready, Error };
    Q_ENUM(Status)

    explicit SeriesReader(QObject *parent = nullptr);
    ~SeriesReader() override;

    const QString &source() const { return m_source; }
    void setSource(const QString &value);
    Format format() const { return m_format; }
    void setFormat(Format value);
    const QVariant &column() const { return m_column; }
    void setColumn(const QVariant &value);
    const QVariant &xColumn() const { return m_xColumn; }
    void setXColumn(const QVariant &value);
    const QString &separator() const { return m_separator; }
    void setSeparator(const QString &value);
    const QString &decimalPoint() const { return m_decimalPoint; }
    void setDecimalPoint(const QString &value);
    const QString &commentPrefix() const { return m_commentPrefix; }
    void setCommentPrefix(const QString &value);
    int skipLines() const { return m_skipLines; }
    void setSkipLines(int count);
    SeriesStore::ValueType sampleType() const { return m_sampleType; }
    void setSampleType(SeriesStore::ValueType value);
    ByteOrder byteOrder() const { return m_byteOrder; }
    void setByteOrder(ByteOrder value);
    qreal offset() const { return m_offset; }
    void setOffset(qreal bytes);
    int channel() const { return m_channel; }
    void setChannel(int value);
    bool follow() const { return m_follow; }
    void setFollow(bool follow);
    bool isRunning() const { return m_running; }
    void setRunning(bool running);

    SeriesStore *store() const { return m_store; }
    QList<QObject *> stores() const;
    SeriesStore *xStore() const { return m_xStore; }
    const QStringList &columnNames() const { return m_columnNames; }
    const QStringList &columnUnits() const { return m_columnUnits; }
    Status status() const { return m_status; }
    qreal progress() const { return m_progress; }
    const QString &errorString() const { return m_errorString; }
    const QString &detected() const { return m_detected; }
    const QVariantMap &layout() const { return m_layout; }
    qreal badLines() const { return m_badLines; }
    qreal firstBadLine() const { return m_firstBadLine; }
    qreal bytesPerSecond() const { return m_bytesPerSecond; }
    qreal sampleRate() const { return m_sampleRate; }

    /// Reads everything again, from the beginning.
    Q_INVOKABLE void reload();
    /// Stops reading for good, within 50 ms; what was read stays. reload() begins again.
    Q_INVOKABLE void cancel();
    /// The first lines of a regular file, at most `count`, each a list of cells, cut as the file is read; of a long
    /// line the first 400 letters. Waits for the disk. Empty for pipes, and for what can't be opened.
    Q_INVOKABLE QVariantList firstLines(int count) const;

    /// Files of so many bytes and more are mapped instead of copied if they can be; 0 for half of the memory. C++ only.
    void setMapFrom(qint64 bytes);

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

signals:
    void sourceChanged();
    void formatChanged();
    void columnChanged();
    void xColumnChanged();
    void separatorChanged();
    void decimalPointChanged();
    void commentPrefixChanged();
    void skipLinesChanged();
    void sampleTypeChanged();
    void byteOrderChanged();
    void offsetChanged();
    void channelChanged();
    void followChanged();
    void runningChanged();
    void storesChanged();
    void statusChanged();
    void progressChanged();
    void detectedChanged();
    void badLinesChanged();

private:
    void startSoon();
    void start();
    void stopJob();
    bool makeRequest(SReadingRequest &request, QString &error) const;
    void showState();
    void showSeries(const SReadingState &state);
    void keepAtMost();
    void letGoOfStores();
    void showCounts(const SReadingState &state);
    void setStatus(Status status, const QString &error);

    QString m_source;
    Format m_format = Auto;
    QVariant m_column;
    QVariant m_xColumn;
    QString m_separator;
    QString m_decimalPoint;
    QString m_commentPrefix;
    int m_skipLines = 0;
    SeriesStore::ValueType m_sampleType = SeriesStore::Float64;
    ByteOrder m_byteOrder = LittleEndian;
    qreal m_offset = 0.0;
    int m_channel = 0;
    bool m_follow = false;
    bool m_running = true;
    qint64 m_mapFrom = 0;

    QList<SeriesStore *> m_stores; ///< children; used again by the next reading
    SeriesStore *m_store = nullptr;
    SeriesStore *m_xStore = nullptr;
    QStringList m_columnNames;
    QStringList m_columnUnits;
    Status m_status = Null;
    qreal m_progress = 0.0;
    QString m_errorString;
    QString m_detected;
    QVariantMap m_layout;
    qreal m_badLines = 0.0;
    qreal m_firstBadLine = 0.0;
    qreal m_bytesPerSecond = 0.0;
    qreal m_sampleRate = 0.0;

    bool m_isComplete = true; ///< of QML; objects of C++ are complete from the start
    bool m_isStarting = false;
    std::shared_ptr<ReadingJob> m_job;
    int m_shownPass = 0;
    std::atomic<bool> m_isPending{false}; ///< a call of showState() is on its way
};
