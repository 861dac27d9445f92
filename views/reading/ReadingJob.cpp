// SPDX-License-Identifier: MIT
#include "views/reading/ReadingJob.h"

#include "views/reading/MappedFile.h"
#include "views/reading/SampleReading.h"
#include "views/reading/TextReading.h"
#include "views/store/SeriesData.h"

#include <algorithm>
#include <system_error>
#include <thread>
#include <utility>

namespace {

constexpr int lookEvery = 100; // milliseconds; at a file that others write or replace

} // namespace

std::shared_ptr<ReadingJob> ReadingJob::start(const SReadingRequest &request, std::function<void()> changed)
{
    const std::shared_ptr<ReadingJob> job(new ReadingJob(request));
    job->m_changed = std::move(changed);
    job->m_wakeup.follow(request.follows);
    job->m_wakeup.hold(request.isHeld);
    try {
        std::thread([job] { job->run(); }).detach();
    } catch (const std::system_error &) {
        job->update([](SReadingState &state) {
            state.status = SReadingState::Status::Error;
            state.error = QStringLiteral("There is no thread left to read with: too much is running at once");
            state.ended = true;
        });
        job->m_hasEnded = true;
    }
    return job;
}

SReadingState ReadingJob::state() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

void ReadingJob::forget()
{
    m_wakeup.cancel();
    const std::lock_guard lock(m_mutex);
    m_changed = nullptr;
}

bool ReadingJob::waitForEnd(int milliseconds)
{
    std::unique_lock lock(m_mutex);
    return m_endCondition.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return m_hasEnded; });
}

void ReadingJob::update(const std::function<void(SReadingState &)> &change)
{
    const std::lock_guard lock(m_mutex);
    change(m_state);
    if (m_changed)
        m_changed();
}

void ReadingJob::say(QString words)
{
    update([&](SReadingState &state) { state.detected = std::move(words); });
}

void ReadingJob::fail(const InputFile &file, const QString &words)
{
    update([&](SReadingState &state) {
        state.status = SReadingState::Status::Error;
        state.error = file.name() + QLatin1Char(' ') + words;
    });
}

bool ReadingJob::failIfShortened(InputFile &file)
{
    if (m_wakeup.follows() || file.change() != InputFile::Change::Shrunk)
        return false;
    fail(file,
         QStringLiteral("was shortened or written anew by another program while it was read, so that what is shown "
                        "isn't all of it. Read it once more when that program is done, or set follow"));
    return true;
}

void ReadingJob::dropExcess(SeriesData &series) const
{
    const qint64 most = m_maximumCount;
    if (most > 0 && series.end() - series.begin() > most)
        series.dropBefore(series.end() - most);
}

void ReadingJob::noteProgress(const InputFile &file, qint64 values)
{
    constexpr qint64 window = 250; // milliseconds
    m_hasValues = m_hasValues || values > 0;
    const qint64 now = m_since.elapsed();
    const qint64 position = file.position();
    const qint64 size = file.size();
    const qint64 passed = now - m_windowBegin;
    const double rate = double(position - m_windowBytes) * 1000.0 / double(std::max(passed, qint64(1)));
    update([&](SReadingState &state) {
        state.progress = size > 0 ? std::min(double(position) / double(size), 1.0) : 0.0;
        if (passed >= window || state.bytesPerSecond == 0.0)
            state.bytesPerSecond = rate;
    });
    if (passed >= window) {
        m_windowBegin = now;
        m_windowBytes = position;
    }
}

void ReadingJob::run()
{
    m_since.start();
    while (readOnce() == Next::Again)
        beginAnew();
    update([this](SReadingState &state) {
        state.ended = true;
        if (state.status != SReadingState::Status::Loading)
            return;
        state.status = SReadingState::Status::Ready;
        if (m_wakeup.isCancelled())
            state.detected = state.detected.isEmpty() ? QStringLiteral("stopped")
                                                      : state.detected + QStringLiteral("; stopped before the end");
    });
    {
        const std::lock_guard lock(m_mutex);
        m_hasEnded = true;
        m_endCondition.notify_all();
    }
    m_wakeup.stopWatching(); // may take a while, so it comes after the others were woken
}

void ReadingJob::beginAnew()
{
    m_windowBegin = m_since.elapsed();
    m_windowBytes = 0;
    m_hasValues = false;
    update([](SReadingState &state) {
        state.status = SReadingState::Status::Loading;
        state.ended = false;
    });
}

ReadingJob::Next ReadingJob::readOnce()
{
    InputFile file(m_wakeup);
    if (file.open(m_request.path)) {
        m_nextLook = 1;
        return readFile(file);
    }
    if (!file.isMissing() || !m_wakeup.follows() || m_wakeup.isCancelled()) {
        if (!m_wakeup.isCancelled())
            fail(file, file.errorString());
        return Next::Finish;
    }
    say(QStringLiteral("%1 doesn't exist yet; waiting for it").arg(file.name()));
    m_wakeup.wait(nextLook());
    return m_wakeup.isCancelled() ? Next::Stop : Next::Again;
}

ReadingJob::Next ReadingJob::readFile(InputFile &file)
{
    QByteArray front;
    Next next = Next::Finish;
    if (!gatherFront(file, front, next))
        return next;
    FileFormat format = m_request.format;
    QString obstacle;
    if (format == FileFormat::Auto)
        format = formatOf(front, obstacle);
    if (format == FileFormat::Auto) {
        fail(file, obstacle);
        return Next::Finish;
    }
    file.putBack(front);
    if (format == FileFormat::Text)
        return TextReading(*this, file, front).run();
    return SampleReading(*this, file, format).run();
}

/// Reads the bytes that tell the format; fewer if no more come for a while. False if there is an end to it: `next`.
bool ReadingJob::gatherFront(InputFile &file, QByteArray &front, Next &next)
{
    constexpr int patience = 100; // milliseconds
    QElapsedTimer since;
    while (front.size() < tellingBytes) {
        char bytes[tellingBytes];
        qint64 count = 0;
        const InputFile::Got got =
            m_wakeup.mayRead() ? file.read(bytes, tellingBytes - front.size(), count) : InputFile::Got::Nothing;
        if (got == InputFile::Got::Bytes) {
            front.append(bytes, int(count));
            if (!since.isValid())
                since.start();
            continue;
        }
        if (got == InputFile::Got::Error) {
            fail(file, file.errorString());
            return false;
        }
        if (got == InputFile::Got::End && !(front.isEmpty() && m_wakeup.follows()))
            return true;
        if (since.isValid() && since.elapsed() >= patience)
            return true;
        next = waitFor(file, got, since.isValid() ? patience : -1);
        if (next == Next::Finish)
            return true;
        if (next != Next::Read)
            return false;
    }
    return true;
}

ReadingJob::Next ReadingJob::waitFor(InputFile &file, InputFile::Got got, int milliseconds)
{
    constexpr int patience = 3000; // milliseconds without any value
    bool wasHeld = false;
    while (!m_wakeup.isCancelled()) {
        if (m_wakeup.isHeld()) {
            m_wakeup.wait(-1);
            wasHeld = true;
            continue;
        }
        if (wasHeld)
            return Next::Read;
        if (got != InputFile::Got::Nothing)
            return m_wakeup.follows() && !file.isStream() ? waitForFollowed(file, milliseconds) : Next::Finish;
        const bool mayHint = !m_hasValues && file.isStream();
        const qint64 left = patience - m_since.elapsed();
        if (mayHint && left <= 0) {
            m_hasValues = true; // said once
            say(
                QStringLiteral("no value after 3 s. If the program that writes keeps its output back, start it behind: "
                               "stdbuf -oL"));
        }
        const int longest = mayHint && left > 0 ? int(left) + 1 : -1;
        file.wait(milliseconds < 0 ? longest : longest < 0 ? milliseconds : std::min(milliseconds, longest));
        if (m_wakeup.mayRead())
            return Next::Read;
    }
    return Next::Stop;
}

/// Milliseconds until the next look for a file that's missing. The kernel doesn't tell when it comes, and programs that
/// replace a file make it again at once. So it's looked for soon, then ever more rarely.
int ReadingJob::nextLook()
{
    return std::exchange(m_nextLook, std::min(2 * m_nextLook, lookEvery));
}

ReadingJob::Next ReadingJob::waitForFollowed(InputFile &file, int milliseconds)
{
    InputFile::Change change = file.change();
    if (change == InputFile::Change::None || change == InputFile::Change::Missing) {
        const int longest = change == InputFile::Change::Missing ? nextLook() : lookEvery;
        file.wait(milliseconds < 0 ? longest : std::min(milliseconds, longest));
        if (!m_wakeup.mayRead())
            return m_wakeup.isCancelled() ? Next::Stop : Next::Read;
        change = file.change();
    }
    switch (change) {
    case InputFile::Change::Shrunk:
        m_reason = QStringLiteral("read anew, since the file was truncated or written anew");
        return Next::Again;
    case InputFile::Change::Replaced:
        m_reason = QStringLiteral("read anew, since there is another file of that name");
        return Next::Again;
    case InputFile::Change::None:
    case InputFile::Change::Grown:
    case InputFile::Change::Missing:
        break;
    }
    return Next::Read;
}

ReadingJob::Next ReadingJob::stayWith(InputFile &file, const MappedFile &mapped)
{
    update([](SReadingState &state) { state.ended = true; });
    while (!m_wakeup.isCancelled()) {
        file.wait(lookEvery);
        const qint64 torn = mapped.tornFrom();
        if (torn >= 0 && !file.canBeRead(torn)) {
            update([](SReadingState &state) { // zeros stand for what is missing: better nothing
                state.series = {};
                state.chosen = state.x = -1;
                ++state.pass;
            });
            fail(file, QStringLiteral("can't be read any more: the disk or device reports an error"));
            return Next::Finish;
        }
        if (torn >= 0 || file.change() == InputFile::Change::Shrunk) {
            m_reason = QStringLiteral("read anew, since the file was truncated or written anew");
            return Next::Again;
        }
    }
    return Next::Stop;
}

bool ReadingJob::choose(const InputFile &file, SReadingState &state, int timeColumn)
{
    const auto find = [&](const SColumnChoice &choice, int &index) {
        if (!choice.isSet())
            return true;
        const auto found = std::find_if(state.series.begin(), state.series.end(), [&](const SReadSeries &series) {
            return choice.number > 0 ? series.column == choice.number : series.name == choice.name;
        });
        index = found == state.series.end() ? -1 : int(found - state.series.begin());
        return index >= 0;
    };
    const auto indexOf = [&](int column) {
        SColumnChoice choice;
        choice.number = column + 1;
        int index = -1;
        find(choice, index);
        return index;
    };
    state.x = timeColumn >= 0 ? indexOf(timeColumn) : -1;
    QStringList columns;
    for (const SReadSeries &series : qAsConst(state.series))
        columns << (series.name.isEmpty() ? QString::number(series.column) : series.name);
    for (const SColumnChoice &choice : {m_request.column, m_request.xColumn}) {
        int index = -1;
        if (!find(choice, index)) {
            state.error = QStringLiteral("%1 has no column of numbers “%2”; it has: %3")
                              .arg(file.name(), choice.number > 0 ? QString::number(choice.number) : choice.name,
                                   columns.join(QLatin1String(", ")));
            state.status = SReadingState::Status::Error;
            return false;
        }
    }
    find(m_request.xColumn, state.x);
    state.chosen = state.x == 0 && state.series.size() > 1 ? 1 : 0;
    find(m_request.column, state.chosen);
    return true;
}
