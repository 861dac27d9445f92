// SPDX-License-Identifier: MIT
#include "sources/NumberLines.h"

#include "common/HelperThreads.h"
#include "common/Storage.h"
#include "sources/NumberBlock.h"
#include "sources/TextBlocks.h"

#include <QIODevice>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <shared_mutex>
#include <utility>

namespace {

QString tooManyLines(int limit)
{
    return QStringLiteral("it has more than %1 lines").arg(limit);
}

/// Gathers values up to a limit.
class Values
{
public:
    Values(const QIODevice &device, int limit) : m_device(&device), m_limit(limit) {}

    int limit() const { return m_limit; }
    bool mayTake(int count) const { return count <= m_limit - m_values.size(); }
    bool hasRoomFor(int count) const { return count <= m_values.capacity() - m_values.size(); }

    /// Makes room for `count` values, which come from what follows the first `taken` bytes, and for as many more as
    /// there will be if the text goes on as it began. Growing copies; room that is not used costs address space only.
    void makeRoomFor(int count, qint64 taken)
    {
        constexpr double slack = 1.125;
        constexpr qint64 sample = 1 << 16; // bytes that tell something about the rest
        const double size = double(m_values.size()) + count;
        const double whole = double(std::max(m_device->size(), taken));
        const double room = taken < sample ? 2.0 * size : slack * size * (whole / double(taken));
        m_values.reserve(int(std::min(room, double(m_limit))));
    }

    /// Where the next `count` values are to be written.
    double *append(int count) { return extend(m_values, count); }

    QVector<double> take() { return std::move(m_values); }

private:
    const QIODevice *m_device;
    int m_limit;
    QVector<double> m_values;
};

/// Reads and converts a text in blocks, as many at a time as there are threads.
class BlockReader
{
public:
    BlockReader(QIODevice &device, Values &values, int blockSize) : m_blocks(device, blockSize), m_values(values) {}

    /// May be called by several threads at once. Returns when there are no more blocks.
    void work()
    {
        STextBlock block;
        for (;;) {
            std::unique_lock<std::mutex> turn(m_turn);
            double *place = takeBlock(block);
            if (!place)
                return;
            const std::shared_lock<std::shared_mutex> stay(m_place);
            if (!block.isLong) // those are converted one at a time, to need little memory
                turn.unlock();
            if (!convertLines(block, place))
                m_needsTextMode = true;
        }
    }

    bool needsTextMode() const { return m_needsTextMode; }
    const QString &error() const { return m_error; }

private:
    /// Reads the next block and appends a place for its values; null when there is none.
    double *takeBlock(STextBlock &block)
    {
        if (m_ended || m_needsTextMode)
            return nullptr;
        m_ended = !m_blocks.next(block);
        m_error = m_blocks.error();
        if (m_ended)
            return nullptr;
        if (!m_values.mayTake(block.lines)) {
            m_ended = true;
            m_error = tooManyLines(m_values.limit());
            return nullptr;
        }
        if (!m_values.hasRoomFor(block.lines)) {
            const std::unique_lock<std::shared_mutex> move(m_place); // when no thread writes values any more
            m_values.makeRoomFor(block.lines, m_blocks.taken());
        }
        return m_values.append(block.lines);
    }

    std::mutex m_turn; ///< of the thread that uses what follows, up to m_ended
    TextBlocks m_blocks;
    Values &m_values;
    QString m_error;
    bool m_ended = false;
    std::shared_mutex m_place; ///< shared by those who write values: these must not be moved
    std::atomic<bool> m_needsTextMode{false};
};

/// How many threads a text is worth.
int threadCount(qint64 textSize, const SReadingParts &parts)
{
    constexpr int blocksEach = 4; // fewer are not worth starting a thread
    return parts.threads > 0 ? parts.threads : HelperThreads::threadsFor(textSize / parts.blockSize / blocksEach);
}

/// The plain way, from the beginning. Returns an error.
QString readInTextMode(QIODevice &device, Values &values)
{
    if (!device.seek(0))
        return device.errorString();
    device.setTextModeEnabled(true);
    while (!device.atEnd()) {
        const qint64 position = device.pos();
        const QByteArray line = device.readLine();
        char byte;
        if (line.isEmpty() && device.pos() == position) // the size promised more than there is
            return device.read(&byte, 1) < 0 ? device.errorString() : QString();
        if (line.size() > longestLine)
            return lineTooLong();
        if (!values.mayTake(1))
            return tooManyLines(values.limit());
        if (!values.hasRoomFor(1))
            values.makeRoomFor(1, device.pos());
        *values.append(1) = QString::fromUtf8(line.constData()).toDouble(); // to a NUL, as in a block
    }
    return {};
}

} // namespace

SNumberLines readNumberLines(QIODevice &device, int limit, SReadingParts parts)
{
    if (device.size() <= 0)
        return {};
    Values values(device, limit);
    BlockReader reader(device, values, parts.blockSize);
    {
        const HelperThreads helpers(threadCount(device.size(), parts) - 1, [&] { reader.work(); });
        reader.work();
    }
    QString error = reader.error();
    if (reader.needsTextMode()) {
        values = Values(device, limit);
        error = readInTextMode(device, values);
    }
    if (!error.isEmpty())
        return {{}, error};
    return {values.take(), {}};
}
