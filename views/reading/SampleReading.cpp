// SPDX-License-Identifier: MIT
#include "views/reading/SampleReading.h"

#include "views/reading/MappedFile.h"
#include "views/store/SeriesData.h"

#include <algorithm>
#include <cstring>

#include <unistd.h>

namespace {

constexpr qint64 portion = 1 << 18; // bytes that are read at once

/// Half of the memory of this machine: larger files are mapped.
qint64 halfOfMemory()
{
    return qint64(sysconf(_SC_PHYS_PAGES)) / 2 * qint64(sysconf(_SC_PAGESIZE));
}

} // namespace

SampleReading::Next SampleReading::run()
{
    Next next = Next::Finish;
    if (!findLayout(next))
        return next;
    const auto mapped = isWorthMapping() ? MappedFile::map(m_file.descriptor(), m_file.size()) : nullptr;
    if (mapped)
        return showMapped(mapped);
    return begin(nullptr) ? readAll() : Next::Finish;
}

/// Shows the samples where they are.
SampleReading::Next SampleReading::showMapped(const std::shared_ptr<const MappedFile> &mapped)
{
    m_file.skipTo(mapped->size());
    m_file.watch();
    const std::shared_ptr<SeriesData> whole = seriesOver(mapped);
    if (!begin(whole))
        return Next::Finish;
    m_frames = whole->end();
    report(true);
    return m_job.stayWith(m_file, *mapped);
}

SSampleLayout SampleReading::rawLayout() const
{
    SSampleLayout layout;
    layout.format = QStringLiteral("raw samples");
    layout.type = FileSample(m_job.request().rawType);
    layout.bigEndian = m_job.request().rawBigEndian;
    layout.headerSize = m_job.request().rawOffset;
    return layout;
}

SHeader SampleReading::header(const QByteArray &front) const
{
    if (m_format == FileFormat::Raw)
        return {rawLayout(), 0, {}};
    return m_format == FileFormat::Npy ? npyHeader(front) : wavHeader(front, m_file.size());
}

/// Reads as much of the beginning as tells how the samples lie. False if that ends the pass: `next`.
bool SampleReading::findLayout(Next &next)
{
    QByteArray front;
    for (;;) {
        const SHeader found = header(front);
        if (found.layout) {
            m_layout = *found.layout;
            return skipHeader(front, next);
        }
        if (found.needed <= front.size()) {
            m_job.fail(m_file, found.obstacle);
            return false;
        }
        QByteArray bytes(int(found.needed - front.size()), Qt::Uninitialized);
        qint64 count = 0;
        const InputFile::Got got =
            m_job.wakeup().mayRead() ? m_file.read(bytes.data(), bytes.size(), count) : InputFile::Got::Nothing;
        if (got == InputFile::Got::Bytes) {
            front.append(bytes.constData(), int(count));
            continue;
        }
        next = got == InputFile::Got::Error ? Next::Finish : m_job.waitFor(m_file, got);
        if (next == Next::Finish)
            m_job.fail(m_file, got == InputFile::Got::Error ? m_file.errorString() : found.obstacle);
        if (next != Next::Read)
            return false;
    }
}

/// Goes to where the samples begin; `front` was read so far. False if that ends the pass: `next`.
bool SampleReading::skipHeader(QByteArray front, Next &next)
{
    if (front.size() > m_layout.headerSize)
        m_file.putBack(front.mid(int(m_layout.headerSize)));
    qint64 left = m_layout.headerSize - front.size();
    QByteArray bytes(int(std::min(std::max(left, qint64(0)), portion)), Qt::Uninitialized);
    while (left > 0) {
        qint64 count = 0;
        const InputFile::Got got = m_job.wakeup().mayRead() ? m_file.read(bytes.data(), std::min(left, portion), count)
                                                            : InputFile::Got::Nothing;
        if (got == InputFile::Got::Bytes) {
            left -= count;
            continue;
        }
        next = got == InputFile::Got::Error ? Next::Finish : m_job.waitFor(m_file, got);
        if (next == Next::Finish)
            m_job.fail(m_file,
                       got == InputFile::Got::Error ? m_file.errorString()
                                                    : QStringLiteral("ends before its samples begin"));
        if (next != Next::Read)
            return false;
    }
    return true;
}

/// Not a file that is followed: what is mapped is as long as the file was then.
bool SampleReading::isWorthMapping() const
{
    const qint64 from = m_job.request().mapFrom > 0 ? m_job.request().mapFrom : halfOfMemory();
    return !m_file.isStream() && !m_job.wakeup().follows() && m_layout.isPlain() && m_file.size() >= from;
}

std::shared_ptr<SeriesData> SampleReading::seriesOver(const std::shared_ptr<const MappedFile> &mapped) const
{
    const qint64 there = std::max((mapped->size() - m_layout.headerSize) / sizeOf(m_layout.type), qint64(0));
    const qint64 count = m_layout.frames < 0 ? there : std::min(there, m_layout.frames);
    return SeriesData::createOver(storedAs(m_layout.type), mapped->begin() + m_layout.headerSize, count, mapped);
}

/// Makes the series, or takes the one that is `whole`, and shows them. False if the wanted channel isn't among them.
bool SampleReading::begin(const std::shared_ptr<SeriesData> &whole)
{
    QVector<SReadSeries> series;
    for (int channel = 0; channel < m_layout.channels; ++channel) {
        m_series.push_back(whole ? whole : SeriesData::create(storedAs(m_layout.type)));
        series << SReadSeries{{}, {}, channel + 1, m_series.back()};
    }
    bool found = false;
    m_job.update([&](SReadingState &state) {
        state.series = series; // never changed in place: the GUI thread may hold a copy
        found = m_job.choose(m_file, state, -1);
        ++state.pass;
        state.detected = words(false);
        state.sampleRate = m_layout.sampleRate;
    });
    return found;
}

SampleReading::Next SampleReading::readAll()
{
    for (;;) {
        const bool isWhole = m_layout.frames >= 0 && m_frames >= m_layout.frames;
        const InputFile::Got got = isWhole ? InputFile::Got::End
            : m_job.wakeup().mayRead()     ? readSome()
                                           : InputFile::Got::Nothing;
        if (m_outOfMemory || got == InputFile::Got::Error) {
            m_job.fail(m_file,
                       m_outOfMemory ? QStringLiteral("is larger than the memory; %1 samples were read").arg(m_frames)
                                     : m_file.errorString());
            return Next::Finish;
        }
        if (got == InputFile::Got::Bytes) {
            report(false);
            continue;
        }
        if (got == InputFile::Got::End && !isWhole && m_job.failIfShortened(m_file))
            return Next::Finish;
        if (got == InputFile::Got::End)
            report(true);
        const Next next = m_job.waitFor(m_file, got);
        if (next != Next::Read)
            return next;
    }
}

/// So many bytes may be read at once: none of what is behind the samples.
qint64 SampleReading::wantedBytes(qint64 most) const
{
    if (m_layout.frames < 0)
        return most;
    return std::min(most, (m_layout.frames - m_frames) * m_layout.frameSize() - m_held);
}

InputFile::Got SampleReading::readSome()
{
    if (m_layout.isPlain())
        return readPlain();
    m_buffer.resize(int(portion) + m_layout.frameSize());
    qint64 count = 0;
    const InputFile::Got got = m_file.read(m_buffer.data() + m_held, wantedBytes(portion), count);
    if (got != InputFile::Got::Bytes)
        return got;
    const qint64 held = m_held + count;
    const qint64 frames = held / m_layout.frameSize();
    m_outOfMemory = !append(m_buffer.constData(), frames);
    m_held = int(held - frames * m_layout.frameSize());
    std::memmove(m_buffer.data(), m_buffer.constData() + frames * m_layout.frameSize(), size_t(m_held));
    return got;
}

/// Reads right into the memory of the series.
InputFile::Got SampleReading::readPlain()
{
    SeriesData &series = *m_series.front();
    const SRoom room = series.room();
    if (room.count == 0) {
        m_outOfMemory = true;
        return InputFile::Got::Nothing;
    }
    const qint64 size = m_layout.frameSize();
    qint64 count = 0;
    const InputFile::Got got =
        m_file.read(room.begin + m_held, wantedBytes(std::min(room.count * size - m_held, portion)), count);
    if (got != InputFile::Got::Bytes)
        return got;
    const qint64 frames = (m_held + count) / size;
    m_held = int(m_held + count - frames * size);
    series.publish(frames);
    m_frames += frames;
    return got;
}

bool SampleReading::append(const char *bytes, qint64 frames)
{
    while (frames > 0) {
        qint64 count = frames;
        for (const std::shared_ptr<SeriesData> &series : m_series)
            count = std::min(count, series->room().count);
        if (count == 0)
            return false;
        for (int channel = 0; channel < m_layout.channels; ++channel) {
            SeriesData &series = *m_series[size_t(channel)];
            convertSamples(bytes, count, m_layout, channel, series.room().begin);
            series.publish(count);
        }
        bytes += count * m_layout.frameSize();
        frames -= count;
        m_frames += count;
    }
    return true;
}

/// Tells how far it is. `finished`: everything that is there was read.
void SampleReading::report(bool finished)
{
    for (const std::shared_ptr<SeriesData> &series : m_series)
        m_job.dropExcess(*series);
    m_job.noteProgress(m_file, m_frames);
    if (!finished)
        return;
    m_job.update([&](SReadingState &state) {
        state.detected = words(true);
        state.status = SReadingState::Status::Ready;
        state.progress = 1.0;
    });
}

QString SampleReading::words(bool finished) const
{
    QStringList words{describe(m_layout)};
    if (!m_job.reason().isEmpty())
        words << m_job.reason();
    if (finished && m_layout.frames > m_frames)
        words << QStringLiteral("it ends after %1 of %2 samples").arg(m_frames).arg(m_layout.frames);
    if (finished && m_held > 0)
        words << QStringLiteral("the last %1 bytes are less than a sample").arg(m_held);
    return words.join(QStringLiteral("; "));
}
