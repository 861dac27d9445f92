// SPDX-License-Identifier: MIT
#include "views/reading/TextReading.h"

#include "common/HelperThreads.h"
#include "views/reading/TextPump.h"
#include "views/store/SeriesData.h"

#include <cstring>

namespace {

QString lines(qint64 count)
{
    return count == 1 ? QStringLiteral("1 line") : QStringLiteral("%1 lines").arg(count);
}

QString lineTooLong()
{
    return QStringLiteral(
               "has a line of more than %1 bytes, so it's hardly a text of numbers, one or a few in a line. If "
               "it holds plain samples, set format to Raw")
        .arg(TextFeeder::longestTextLine);
}

/// How many threads the rest of a file is worth.
int threadsFor(const InputFile &file)
{
    constexpr qint64 piecesEach = 4; // fewer are not worth calling a thread
    return HelperThreads::threadsFor((file.size() - file.position()) / TextFeeder::defaultPieceSize / piecesEach);
}

} // namespace

TextReading::TextReading(ReadingJob &job, InputFile &file, const QByteArray &front)
    : m_job(job),
      m_file(file),
      m_feeder(file, front)
{
}

TextReading::Next TextReading::run()
{
    Next next = Next::Finish;
    if (!findLayout(next))
        return next;
    return readAll();
}

/// Reads the beginning until it's known how the text is written. False if that ends the pass: `next`.
bool TextReading::findLayout(Next &next)
{
    constexpr int patience = 100;       // milliseconds that a text that comes slowly is waited for
    constexpr qint64 longest = 1 << 20; // bytes that are looked at
    qint64 wanted = 1 << 16;            // bytes
    QElapsedTimer since;
    for (;;) {
        const bool isFull = m_feeder.end() - m_feeder.begin() >= wanted;
        const InputFile::Got got =
            isFull ? InputFile::Got::Bytes : (m_job.wakeup().mayRead() ? m_feeder.readMore() : InputFile::Got::Nothing);
        if (got == InputFile::Got::Error) {
            m_job.fail(m_file, m_file.errorString());
            return false;
        }
        if (!isFull && got == InputFile::Got::Bytes)
            continue;
        const bool isAtEnd = got == InputFile::Got::End;
        if (isAtEnd && m_job.failIfShortened(m_file))
            return false;
        const bool isWhole = isAtEnd && (m_file.isStream() || !m_job.wakeup().follows());
        if (isFull || isAtEnd || (since.isValid() && since.elapsed() >= patience)) {
            SDetection detection;
            if (detect(isWhole, wanted, detection))
                return begin(std::move(*detection.layout));
            if (detection.isFinal || isWhole || wanted >= longest) {
                m_job.fail(m_file, detection.obstacle);
                return false;
            }
            wanted = isFull ? longest : wanted;
            since.invalidate();
        }
        if (!isFull) {
            const bool hasLine = m_feeder.wholeEnd(longest) != m_feeder.begin();
            if (hasLine && !since.isValid())
                since.start();
            next = m_job.waitFor(m_file, got, hasLine ? patience : -1);
            if (next != Next::Read && next != Next::Finish)
                return false;
        }
    }
}

/// Looks at the first `most` bytes, as far as they were read. False if they don't tell how the text is written.
bool TextReading::detect(bool isWhole, qint64 most, SDetection &detection)
{
    if (isWhole)
        m_feeder.endLastLine();
    const char *const end = m_feeder.wholeEnd(most);
    const auto size = size_t(end - m_feeder.begin());
    if (size > 0 && std::memchr(m_feeder.begin(), '\0', size)) {
        detection = {
            {},
            QStringLiteral("is not a text: it has zero bytes. If it holds plain samples, set format to Raw, and "
                           "sampleType to what they are"),
            true};
        return false;
    }
    if (isWhole && size == 0) {
        detection = {{}, QStringLiteral("is empty"), true};
        return false;
    }
    if (size == 0 && m_feeder.end() - m_feeder.begin() >= TextFeeder::longestTextLine) {
        detection = {{}, lineTooLong(), true};
        return false;
    }
    detection = detectLayout(m_feeder.begin(), end, m_job.request().text);
    return detection.layout.has_value();
}

QVector<SReadSeries> TextReading::seriesOfColumns() const
{
    QVector<SReadSeries> all;
    for (int i = 0; i < int(m_layout->columns.size()); ++i) {
        const STextColumn &column = m_layout->columns.at(i);
        if (!m_sink->series(i))
            continue;
        SReadSeries series{column.name, column.unit, i + 1, m_sink->series(i)};
        if (column.isTime())
            series.startTime = double(column.origin);
        all << series;
    }
    return all;
}

/// Makes the series that a layout asks for and shows them. False if the wanted column isn't among them.
bool TextReading::begin(STextLayout layout)
{
    m_layout = std::move(layout);
    m_sink.emplace(*m_layout);
    m_layout->firstMayBeX = m_layout->firstMayBeX && !m_job.request().xColumn.isSet();
    m_described = describe(*m_layout);
    m_feeder.skip(m_layout->headSize);
    bool found = false;
    const QVector<SReadSeries> series = seriesOfColumns();
    m_job.update([&](SReadingState &state) {
        state.series = series; // never changed in place: the GUI thread may hold a copy
        found = m_job.choose(m_file, state, m_layout->timeColumn);
        ++state.pass;
        state.detected = words(*m_sink, false);
        state.layout = layoutMap();
    });
    return found;
}

/// What the layout is, in the terms of the reader's properties.
QVariantMap TextReading::layoutMap() const
{
    const bool hasComma = m_layout->decimalSign == DecimalSign::Comma;
    return {{QStringLiteral("separator"), QString(QLatin1Char(m_layout->separator))},
            {QStringLiteral("decimalPoint"), QString(QLatin1Char(hasComma ? ',' : '.'))},
            {QStringLiteral("headLines"), m_layout->headLines}};
}

TextReading::Next TextReading::readAll()
{
    TextPump pump(m_feeder, *m_layout, *m_sink, [this] { noteAppended(); });
    for (;;) {
        const TextPump::Stop stop = pump.run(m_job.wakeup(), m_file.isStream() ? 1 : threadsFor(m_file));
        if (m_isUnreported)
            report(*m_sink, false);
        if (stop == TextPump::Stop::Error || stop == TextPump::Stop::Memory) {
            const QString why = stop == TextPump::Stop::Memory
                ? QStringLiteral("is larger than the memory; %1 were read").arg(lines(m_sink->rows()))
                : m_feeder.isLineTooLong() ? lineTooLong()
                                           : m_file.errorString();
            m_job.fail(m_file, why);
            return Next::Finish;
        }
        const InputFile::Got got = stop == TextPump::Stop::End ? InputFile::Got::End : InputFile::Got::Nothing;
        if (stop == TextPump::Stop::End && m_job.failIfShortened(m_file))
            return Next::Finish;
        if (stop == TextPump::Stop::End)
            report(*m_sink, true);
        const Next next = stop == TextPump::Stop::Told ? m_job.waitFor(m_file, InputFile::Got::Nothing, 0)
                                                       : m_job.waitFor(m_file, got);
        if (next == Next::Finish && m_feeder.begin() != m_feeder.end()) {
            m_feeder.endLastLine();
            continue;
        }
        if (next != Next::Read)
            return next;
    }
}

/// Called after every piece by the thread that appended it. It tells now and then: a piece takes less than a
/// millisecond.
void TextReading::noteAppended()
{
    constexpr int reportEvery = 5; // milliseconds
    for (int i = 0; i < int(m_layout->columns.size()); ++i) {
        if (m_sink->series(i))
            m_job.dropExcess(*m_sink->series(i));
    }
    m_isUnreported = true;
    if (!m_sinceReport.isValid() || m_sinceReport.elapsed() >= reportEvery)
        report(*m_sink, false);
}

/// Tells how far it is. `finished`: everything that is there was read.
void TextReading::report(TextSink &sink, bool finished)
{
    m_sinceReport.start();
    m_isUnreported = false;
    m_job.noteProgress(m_file, sink.rows());
    m_job.update([&](SReadingState &state) {
        state.badLines = sink.badLines();
        state.firstBadLine = sink.firstBadLine();
        if (!finished)
            return;
        state.detected = words(sink, true);
        state.status = SReadingState::Status::Ready;
        state.progress = 1.0;
    });
}

QString TextReading::words(const TextSink &sink, bool finished) const
{
    QStringList words{m_described};
    if (!m_job.reason().isEmpty())
        words << m_job.reason();
    if (m_feeder.encoding() != TextDecoder::Encoding::Plain)
        words << QStringLiteral("UTF-16");
    if (!finished)
        return words.join(QStringLiteral("; "));
    if (sink.usedOtherSign())
        words << QStringLiteral("commas inside numbers taken as decimal");
    if (sink.comments() > 0)
        words << QStringLiteral("%1 of comments between the numbers").arg(lines(sink.comments()));
    if (sink.linesBehind() > 0)
        words << QStringLiteral("%1 after the numbers").arg(lines(sink.linesBehind()));
    if (sink.badLines() > 0)
        words << QStringLiteral("%1 not understood in full, shown as gaps, the first one line %2")
                     .arg(lines(sink.badLines()))
                     .arg(sink.firstBadLine());
    return words.join(QStringLiteral("; "));
}
