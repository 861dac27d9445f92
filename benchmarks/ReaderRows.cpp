// SPDX-License-Identifier: MIT
#include "benchmarks/Rows.h"

#include "views/reading/ReadingJob.h"
#include "views/store/SeriesData.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <malloc.h>

#include <charconv>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace {

QString folderTemplate()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/series-XXXXXX");
}

enum class Kind { OneColumn, ThreeColumns, Floats };

QByteArray written(Kind kind, int count)
{
    QByteArray bytes;
    if (kind == Kind::Floats) {
        for (const double value : randomSeries(count, 1)) {
            const auto sample = float(value);
            bytes.append(reinterpret_cast<const char *>(&sample), sizeof sample);
        }
        return bytes;
    }
    for (const double value : randomSeries(count, 1)) {
        const QByteArray number = QByteArray::number(value * 1000.0, 'g', 6);
        if (kind == Kind::OneColumn)
            bytes += number + '\n';
        else
            bytes += QByteArray(number + ';' + number + ';' + number + '\n').replace('.', ',');
    }
    return bytes;
}

/// A file of `count` lines or samples; one is kept at a time.
QString fileOf(Kind kind, int count)
{
    static std::unique_ptr<QTemporaryDir> folder;
    static std::pair<Kind, int> kept;
    const std::pair<Kind, int> wanted(kind, count);
    if (!folder || kept != wanted) {
        folder = std::make_unique<QTemporaryDir>(folderTemplate());
        kept = wanted;
        QFile file(folder->filePath(QStringLiteral("series")));
        const QByteArray bytes = written(kind, count);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("%s cannot be written", qPrintable(file.fileName()));
    }
    return folder->filePath(QStringLiteral("series"));
}

SReadingRequest requestFor(Kind kind, int count)
{
    SReadingRequest request;
    request.path = fileOf(kind, count);
    if (kind == Kind::Floats) {
        request.format = FileFormat::Raw;
        request.rawType = SampleType::Float32;
    }
    return request;
}

/// A reading, and a way to wait until its state is as wanted.
class WatchedJob
{
public:
    explicit WatchedJob(const SReadingRequest &request)
        : m_job(ReadingJob::start(request, [this] {
              const std::lock_guard lock(m_mutex);
              m_hasChanged = true;
              m_changed.notify_one();
          }))
    {
    }
    ~WatchedJob() { end(); }
    void end()
    {
        m_job->forget();
        m_job->waitForEnd(10'000);
    }

    template <class Wanted>
    SReadingState waitFor(const Wanted &wanted)
    {
        for (;;) {
            {
                std::unique_lock lock(m_mutex);
                m_changed.wait(lock, [&] { return std::exchange(m_hasChanged, false); });
            }
            SReadingState now = m_job->state();
            if (!now.error.isEmpty())
                qFatal("%s", qPrintable(now.error));
            if (wanted(now))
                return now;
        }
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_hasChanged = false;
    std::shared_ptr<ReadingJob> m_job; ///< last: it calls as soon as it's there
};

void readAll(benchmark::State &state, const SReadingRequest &request)
{
    const auto read = [&] {
        WatchedJob job(request);
        const SReadingState all = job.waitFor([](const SReadingState &now) { return now.ended; });
        benchmark::DoNotOptimize(all.series.first().data->end());
    };
    read();
    for ([[maybe_unused]] auto _ : state)
        read();
}

template <Kind kind>
void readFile(benchmark::State &state)
{
    readAll(state, requestFor(kind, int(state.range(0))));
}

/// The limit: the file in memory, and each number converted once by the standard library.
template <Kind kind>
void mapAndConvert(benchmark::State &state)
{
    const QString name = fileOf(kind, int(state.range(0)));
    const auto convert = [&] {
        QFile mapped(name);
        if (!mapped.open(QIODevice::ReadOnly))
            qFatal("%s cannot be read", qPrintable(name));
        QByteArray text(reinterpret_cast<const char *>(mapped.map(0, mapped.size())), int(mapped.size()));
        if (kind == Kind::ThreeColumns)
            text.replace(',', '.');
        const int columns = kind == Kind::ThreeColumns ? 3 : 1;
        std::vector<QVector<double>> values{size_t(columns)};
        const char *at = text.constData();
        for (const char *const end = at + text.size(); at != end;) {
            for (QVector<double> &column : values) {
                double value = 0.0;
                at = std::from_chars(at, end, value).ptr + 1;
                column.append(value);
            }
        }
        benchmark::DoNotOptimize(values.front().constData());
    };
    convert();
    for ([[maybe_unused]] auto _ : state)
        convert();
}

/// The limit of samples: a copy of them to memory that the system has yet to give, as it has for a series.
void copyFloats(benchmark::State &state)
{
    const QByteArray samples = written(Kind::Floats, int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        std::unique_ptr<char[]> copy(new char[size_t(samples.size())]);
        std::memcpy(copy.get(), samples.constData(), size_t(samples.size()));
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
        state.PauseTiming();
        copy.reset();
        malloc_trim(0);
        state.ResumeTiming();
    }
}

/// From opening to the first values that a plot could show.
void readFirst(benchmark::State &state)
{
    const SReadingRequest request = requestFor(Kind::OneColumn, int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        WatchedJob job(request);
        job.waitFor(
            [](const SReadingState &now) { return !now.series.isEmpty() && now.series.first().data->end() > 0; });
        state.PauseTiming();
        job.end();
        state.ResumeTiming();
    }
}

/// From cancelling in the middle to the end of the thread.
void cancel(benchmark::State &state)
{
    const SReadingRequest request = requestFor(Kind::OneColumn, int(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const auto job = ReadingJob::start(request, {});
        while (job->state().series.isEmpty())
            std::this_thread::yield();
        state.ResumeTiming();
        job->forget();
        job->waitForEnd(10'000);
    }
}

void readMapped(benchmark::State &state)
{
    SReadingRequest request = requestFor(Kind::Floats, int(state.range(0)));
    request.mapFrom = 1;
    readAll(state, request);
}

} // namespace

void addReaderRows()
{
    addRow("SeriesReader, one column", readFile<Kind::OneColumn>);
    addRow("SeriesReader, one column|memory map and from_chars", mapAndConvert<Kind::OneColumn>);
    addRow("SeriesReader, three columns with decimal comma", readFile<Kind::ThreeColumns>);
    addRow("SeriesReader, three columns with decimal comma|memory map and from_chars",
           mapAndConvert<Kind::ThreeColumns>);
    addRow("SeriesReader, first values", readFirst);
    addRow("SeriesReader, cancelling", cancel);
    addRow("SeriesReader, raw floats", readFile<Kind::Floats>);
    addRow("SeriesReader, raw floats|copy to fresh memory", copyFloats);
    addRow("SeriesReader, mapped floats", readMapped);
}
