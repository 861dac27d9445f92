// SPDX-License-Identifier: MIT
#include "views/reading/SeriesReader.h"

#include "common/Change.h"
#include "common/LocalPath.h"
#include "views/reading/ReadingJob.h"
#include "views/reading/TextPreview.h"

#include <QMetaObject>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The path that a source means; `error` says if it means none.
QString pathOf(const QString &source, QString &error)
{
    const QString path = localPath(source);
    if (path.isEmpty() && !source.isEmpty())
        error = QStringLiteral("“%1” is not a file here. Fetch it first, or read standard input behind: curl URL")
                    .arg(source);
    return path;
}

/// A number, or a name. A number that was written as text is a number.
bool readChoice(const QVariant &value, const char *property, SColumnChoice &choice, QString &error)
{
    if (!value.isValid() || value.isNull())
        return true;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber) {
        choice.name = value.toString();
        return true;
    }
    if (number == 0.0)
        return true;
    if (!(number >= 1.0 && number <= 1e6 && number == std::floor(number)))
        error = QStringLiteral("%1 is %2; columns count from 1").arg(QLatin1String(property), value.toString());
    choice.number = error.isEmpty() ? int(number) : 0;
    return error.isEmpty();
}

} // namespace

bool SeriesReader::makeRequest(SReadingRequest &request, QString &error) const
{
    request.path = pathOf(m_source, error);
    request.format = FileFormat(int(m_format));
    request.text.commentPrefix = m_commentPrefix.toUtf8();
    request.text.skipLines = m_skipLines;
    const QByteArray separator = m_separator.toUtf8();
    if (separator.size() > 1)
        error = QStringLiteral("separator is “%1”; it may be one character").arg(m_separator);
    else if (!separator.isEmpty())
        request.text.separator = separator.at(0);
    if (m_decimalPoint == QLatin1String("."))
        request.text.decimalSign = DecimalSign::Point;
    else if (m_decimalPoint == QLatin1String(","))
        request.text.decimalSign = DecimalSign::Comma;
    else if (!m_decimalPoint.isEmpty())
        error = QStringLiteral("decimalPoint is “%1”; it may be a point or a comma").arg(m_decimalPoint);
    if (m_channel > 0)
        request.column.number = m_channel;
    readChoice(m_column, "column", request.column, error);
    readChoice(m_xColumn, "xColumn", request.xColumn, error);
    request.rawType = SampleType(int(m_sampleType));
    request.rawBigEndian = m_byteOrder == BigEndian;
    request.rawOffset = qint64(m_offset);
    request.follows = m_follow;
    request.isHeld = !m_running;
    request.mapFrom = m_mapFrom;
    return error.isEmpty();
}

SeriesReader::SeriesReader(QObject *parent) : QObject(parent) {}

SeriesReader::~SeriesReader()
{
    stopJob();
}

/// Ends the reading. Its thread is waited for only as long as it takes when no disk hangs.
void SeriesReader::stopJob()
{
    constexpr int patience = 50; // milliseconds
    if (!m_job)
        return;
    m_job->forget();
    m_job->waitForEnd(patience);
    m_job.reset();
}

void SeriesReader::componentComplete()
{
    m_isComplete = true;
    if (!m_source.isEmpty())
        startSoon();
}

/// Starts once for all properties that are set together.
void SeriesReader::startSoon()
{
    if (!m_isComplete || std::exchange(m_isStarting, true))
        return;
    QMetaObject::invokeMethod(this, &SeriesReader::start, Qt::QueuedConnection);
}

void SeriesReader::start()
{
    m_isStarting = false;
    stopJob();
    m_shownPass = 0;
    SReadingRequest request;
    QString error;
    if (m_source.isEmpty() || !makeRequest(request, error)) {
        const QPointer<SeriesReader> alive(this);
        letGoOfStores();
        if (alive)
            setStatus(m_source.isEmpty() ? Null : Error, error);
        return;
    }
    setStatus(Loading, {});
    m_job = ReadingJob::start(request, [this] {
        if (!m_isPending.exchange(true))
            QMetaObject::invokeMethod(this, &SeriesReader::showState, Qt::QueuedConnection);
    });
    keepAtMost();
}

void SeriesReader::reload()
{
    startSoon();
}

void SeriesReader::cancel()
{
    if (m_job)
        m_job->wakeup().cancel();
}

QVariantList SeriesReader::firstLines(int count) const
{
    const QByteArray separator = m_layout.value(QStringLiteral("separator")).toString().toUtf8();
    QVariantList lines;
    for (const QStringList &cells : previewOf(localPath(m_source), count, separator.isEmpty() ? 0 : separator.at(0)))
        lines.append(cells);
    return lines;
}

/// Shows what the reading thread told last. Whoever hears of it may destroy this.
void SeriesReader::showState()
{
    m_isPending = false;
    if (!m_job)
        return;
    const QPointer<SeriesReader> alive(this);
    const SReadingState state = m_job->state();
    if (state.pass != m_shownPass)
        showSeries(state);
    if (!alive)
        return;
    for (SeriesStore *store : qAsConst(m_stores)) {
        store->announce();
        if (!alive)
            return;
    }
    if (state.ended)
        letGoOfStores();
    if (alive)
        showCounts(state);
    if (alive)
        setStatus(Status(int(state.status) + 1), state.error);
}

/// No more values come: whoever wants to may append.
void SeriesReader::letGoOfStores()
{
    const QPointer<SeriesReader> alive(this);
    for (SeriesStore *store : qAsConst(m_stores)) {
        store->setFilledElsewhere(false);
        store->setComplete(true);
        if (!alive)
            return;
    }
}

void SeriesReader::showCounts(const SReadingState &state)
{
    const QPointer<SeriesReader> alive(this);
    const bool isCountOther = change(m_badLines, qreal(state.badLines));
    const bool areBadLinesOther = change(m_firstBadLine, qreal(state.firstBadLine)) || isCountOther;
    const bool isShareOther = change(m_progress, state.progress);
    const bool isProgressOther = change(m_bytesPerSecond, state.bytesPerSecond) || isShareOther;
    if (change(m_detected, state.detected))
        emit detectedChanged();
    if (alive && areBadLinesOther)
        emit badLinesChanged();
    if (alive && isProgressOther)
        emit progressChanged();
}

void SeriesReader::showSeries(const SReadingState &state)
{
    m_shownPass = state.pass;
    const QList<SeriesStore *> left = m_stores.mid(state.series.size());
    m_stores = m_stores.mid(0, state.series.size());
    m_columnNames.clear();
    m_columnUnits.clear();
    for (int i = 0; i < int(state.series.size()); ++i) {
        if (i == m_stores.size()) {
            m_stores.append(new SeriesStore(this));
            connect(m_stores.last(), &SeriesStore::maximumCountChanged, this, &SeriesReader::keepAtMost);
        }
        const SReadSeries &series = state.series.at(i);
        m_stores.at(i)->setFilledElsewhere(!state.ended,
                                           QStringLiteral("a SeriesReader is filling this store. Append to a store of "
                                                          "your own, or call the reader's cancel() before"));
        m_stores.at(i)->setComplete(state.ended);
        m_stores.at(i)->setStartTime(series.startTime);
        m_stores.at(i)->setData(series.data);
        m_columnNames << series.name;
        m_columnUnits << series.unit;
    }
    m_store = m_stores.value(state.chosen);
    m_xStore = m_stores.value(state.x);
    m_sampleRate = state.sampleRate;
    m_layout = state.layout;
    for (SeriesStore *store : left)
        store->deleteLater();
    emit storesChanged();
}

/// All columns keep as many values as the one that may keep most: x and the values belong together.
void SeriesReader::keepAtMost()
{
    qint64 most = 0;
    for (const SeriesStore *store : qAsConst(m_stores))
        most = std::max(most, qint64(store->maximumCount()));
    if (m_job)
        m_job->keepAtMost(most);
}

void SeriesReader::setStatus(Status status, const QString &error)
{
    const bool isStatusOther = change(m_status, status);
    if (change(m_errorString, error) || isStatusOther)
        emit statusChanged();
}

QList<QObject *> SeriesReader::stores() const
{
    QList<QObject *> stores;
    for (SeriesStore *store : m_stores)
        stores << store;
    return stores;
}

void SeriesReader::setMapFrom(qint64 bytes)
{
    if (change(m_mapFrom, bytes))
        startSoon();
}

void SeriesReader::setFollow(bool follow)
{
    if (!change(m_follow, follow))
        return;
    emit followChanged();
    if (m_job && !follow)
        m_job->wakeup().follow(false); // it ends where the file ends
    else if (m_job)
        startSoon();
}

void SeriesReader::setRunning(bool running)
{
    if (!change(m_running, running))
        return;
    emit runningChanged();
    if (m_job)
        m_job->wakeup().hold(!running);
}
