// SPDX-License-Identifier: MIT
#include "views/reading/SampleLayout.h"

#include <QtEndian>

namespace {

constexpr qint64 chunkHead = 8;          // bytes: its name and its size
constexpr qint64 longestFront = 1 << 24; // bytes in front of the samples

constexpr int pcm = 1;
constexpr int floatingPoint = 3;
constexpr int extensible = 0xFFFE;

template <class T>
T at(const QByteArray &bytes, qint64 position)
{
    return qFromLittleEndian<T>(bytes.constData() + position);
}

/// What the chunk "fmt " says.
struct SFormat
{
    bool isKnown = false;
    int tag = 0;
    int channels = 0;
    quint32 rate = 0;
    int frameSize = 0;
    int bits = 0;
};

SFormat readFormat(const QByteArray &front, qint64 begin, qint64 size)
{
    constexpr qint64 subFormat = 24;
    SFormat format;
    format.isKnown = true;
    format.tag = at<quint16>(front, begin);
    format.channels = at<quint16>(front, begin + 2);
    format.rate = at<quint32>(front, begin + 4);
    format.frameSize = at<quint16>(front, begin + 12);
    format.bits = at<quint16>(front, begin + 14);
    if (format.tag == extensible && size >= subFormat + 2)
        format.tag = at<quint16>(front, begin + subFormat);
    return format;
}

QString codecName(int tag)
{
    switch (tag) {
    case 2:
    case 17:
        return QStringLiteral("ADPCM");
    case 6:
        return QStringLiteral("A-law");
    case 7:
        return QStringLiteral("mu-law");
    case 85:
        return QStringLiteral("MP3");
    default:
        return QStringLiteral("codec %1").arg(tag);
    }
}

/// The type of the samples, if it is one that can be read.
std::optional<FileSample> sampleType(const SFormat &format, int bytes)
{
    if (format.tag == floatingPoint && bytes == 4)
        return FileSample::Float32;
    if (format.tag == floatingPoint && bytes == 8)
        return FileSample::Float64;
    if (format.tag != pcm || bytes < 1 || bytes > 4)
        return {};
    static constexpr FileSample types[] = {FileSample::UInt8, FileSample::Int16, FileSample::Int24, FileSample::Int32};
    return types[bytes - 1];
}

SHeader refused(const QString &words)
{
    return {{}, 0, words};
}

/// The layout of samples that begin at `begin`; `size` bytes of them, -1 for up to the end.
SHeader layoutFor(const SFormat &format, qint64 begin, qint64 size)
{
    if (!format.isKnown)
        return refused(QStringLiteral("is a damaged WAV file: it doesn't say what its samples are"));
    if (format.tag != pcm && format.tag != floatingPoint)
        return refused(
            QStringLiteral("has compressed samples (%1); convert it to PCM first: sox FILE -e signed OUT.wav")
                .arg(codecName(format.tag)));
    const int bytes = format.channels > 0 && format.frameSize % format.channels == 0
        ? format.frameSize / format.channels
        : (format.bits + 7) / 8;
    const std::optional<FileSample> type = sampleType(format, bytes);
    if (!type || format.channels < 1 || format.bits > 8 * bytes)
        return refused(QStringLiteral("has samples that can't be read: %1 channels of %2 bits in %3 bytes")
                           .arg(format.channels)
                           .arg(format.bits)
                           .arg(format.frameSize));
    SSampleLayout layout;
    layout.format = QStringLiteral("WAV");
    layout.type = *type;
    layout.channels = format.channels;
    layout.headerSize = begin;
    layout.sampleRate = format.rate;
    layout.frames = size < 0 ? -1 : size / layout.frameSize();
    return {layout, 0, {}};
}

/// The size of the samples; -1 if what is written there can't be.
qint64 sampleSize(quint32 written, qint64 longSize, bool isLong, qint64 left)
{
    constexpr quint32 unknown = 0xFFFFFFFF;
    const qint64 size = isLong && written == unknown ? longSize : qint64(written);
    const bool lies = size <= 0 || (!isLong && written == unknown) || (left >= 0 && size > left);
    return lies ? -1 : size;
}

} // namespace

SHeader wavHeader(const QByteArray &front, qint64 fileSize)
{
    constexpr qint64 fileHead = 12;
    constexpr qint64 shortestFormat = 16;
    constexpr qint64 shortestLongSizes = 16;
    const QString tooShort = QStringLiteral("ends within its header");
    if (front.size() < fileHead)
        return {{}, fileHead, tooShort};
    const bool isLong = front.startsWith("RF64") || front.startsWith("BW64");
    if ((!isLong && !front.startsWith("RIFF")) || front.mid(8, 4) != "WAVE")
        return refused(QStringLiteral("is not a WAV file: it doesn't begin like one"));
    SFormat format;
    qint64 longSize = -1;
    qint64 begin = fileHead;
    for (;;) {
        if (begin > longestFront)
            return refused(QStringLiteral("is a damaged WAV file: its samples don't begin"));
        if (front.size() < begin + chunkHead)
            return {{}, begin + chunkHead, tooShort};
        const QByteArray name = front.mid(int(begin), 4);
        const auto size = at<quint32>(front, begin + 4);
        begin += chunkHead;
        if (name == "data") {
            const qint64 left = fileSize < 0 ? -1 : fileSize - begin;
            return layoutFor(format, begin, sampleSize(size, longSize, isLong, left));
        }
        const qint64 looked = name == "fmt " ? shortestFormat + 10 : name == "ds64" ? shortestLongSizes : 0;
        const qint64 known = std::min(looked, qint64(size));
        if (front.size() < begin + known)
            return {{}, begin + known, tooShort};
        if (name == "fmt " && size >= shortestFormat)
            format = readFormat(front, begin, size);
        if (name == "ds64" && size >= shortestLongSizes)
            longSize = at<qint64>(front, begin + 8);
        begin += qint64(size) + qint64(size & 1); // padded to an even length
    }
}
