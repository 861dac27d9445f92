// SPDX-License-Identifier: MIT

// The reader of numbers against the plain way of Qt, for any bytes, also where they cross the ends of buffers.

#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "sources/NumberLines.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace {

QString scratchPath()
{
    const QString folder = QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath();
    return folder + QStringLiteral("/vorlix-fuzz-reader-%1").arg(getpid());
}

/// Removed when the process ends.
struct SScratchFile
{
    const QString path = scratchPath();
    ~SScratchFile() { QFile::remove(path); }
};

QVector<double> plainLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        fail("plain way", "cannot open");
    QVector<double> values;
    while (!file.atEnd())
        values.append(QString::fromUtf8(file.readLine()).toDouble());
    return values;
}

QVector<double> readLines(const QString &path, SReadingParts parts)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail("reader", "cannot open");
    const SNumberLines lines = readNumberLines(file, longestSeries, parts);
    if (!lines.error.isEmpty())
        fail("reader", lines.error.toUtf8());
    return lines.values;
}

/// The bytes, some of them so often or behind so many others that they meet the end of a buffer.
QByteArray spread(Bytes &bytes, const QByteArray &text)
{
    constexpr int qtBuffer = 16384;
    const int ourBlock = SReadingParts().blockSize;
    const int where = bytes.below(64);
    const int shift = int(bytes.byte()) - 128;
    if (where == 0)
        return QByteArray(ourBlock + shift, '1').replace(1000, 1, "\n") + text;
    if (where < 8)
        return QByteArray(qtBuffer + shift, '2').replace(1000, 1, "\n") + text;
    if (where < 12)
        return text.repeated(1 + bytes.below(200));
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const SScratchFile scratch;
    Bytes bytes(data, std::min(size, size_t(3)));
    const size_t used = std::min(size, size_t(3));
    const QByteArray text = spread(bytes, QByteArray(reinterpret_cast<const char *>(data) + used, int(size - used)));
    QFile written(scratch.path);
    if (!written.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || written.write(text) != text.size())
        fail("scratch file", "cannot write");
    written.close();

    const QVector<double> expected = plainLines(scratch.path);
    compare("reader", readLines(scratch.path, {}), expected);
    const int few = 1 + text.size() % 97;             // bytes
    const int threads = text.size() % 4 == 0 ? 3 : 1; // starting some is slow
    compare("reader in small blocks", readLines(scratch.path, {few, threads}), expected);
    return 0;
}
