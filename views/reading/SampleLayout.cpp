// SPDX-License-Identifier: MIT
#include "views/reading/SampleLayout.h"

#include <QFloat16>
#include <QtEndian>

#include <cstring>

namespace {

/// The unsigned whole number of so many bytes at `bytes`.
template <class Bits, int size>
Bits bitsAt(const char *bytes, bool bigEndian)
{
    Bits bits = 0;
    for (int i = 0; i < size; ++i)
        bits |= Bits(quint8(bytes[i])) << 8 * (bigEndian ? size - 1 - i : i);
    return bits;
}

template <class Value, class Bits>
Value valueOf(Bits bits)
{
    static_assert(sizeof(Value) == sizeof(Bits));
    Value value;
    std::memcpy(static_cast<void *>(&value), &bits, sizeof value);
    return value;
}

/// Converts every frame by value(bytes).
template <class Value>
void convert(const char *bytes, qint64 frames, qint64 stride, char *target, Value value)
{
    for (qint64 i = 0; i < frames; ++i) {
        const auto sample = value(bytes + i * stride);
        std::memcpy(target + i * qint64(sizeof sample), &sample, sizeof sample);
    }
}

template <class Value, class Bits>
void convertPlain(const char *bytes, qint64 frames, const SSampleLayout &layout, char *target)
{
    const bool big = layout.bigEndian;
    convert(bytes, frames, layout.frameSize(), target,
            [big](const char *at) { return valueOf<Value>(bitsAt<Bits, sizeof(Bits)>(at, big)); });
}

} // namespace

int sizeOf(FileSample type)
{
    switch (type) {
    case FileSample::Int24:
        return 3;
    case FileSample::Int64:
    case FileSample::UInt64:
        return 8;
    case FileSample::Float16:
        return 2;
    default:
        return sizeOf(SampleType(type));
    }
}

SampleType storedAs(FileSample type)
{
    switch (type) {
    case FileSample::Int24:
        return SampleType::Int32;
    case FileSample::Int64:
    case FileSample::UInt64:
        return SampleType::Float64;
    case FileSample::Float16:
        return SampleType::Float32;
    default:
        return SampleType(type);
    }
}

QString nameOf(FileSample type)
{
    switch (type) {
    case FileSample::Int24:
        return QStringLiteral("Int24");
    case FileSample::Int64:
        return QStringLiteral("Int64");
    case FileSample::UInt64:
        return QStringLiteral("UInt64");
    case FileSample::Float16:
        return QStringLiteral("Float16");
    default:
        return QString::fromLatin1(nameOf(SampleType(type)));
    }
}

void convertSamples(const char *bytes, qint64 frames, const SSampleLayout &layout, int channel, char *target)
{
    const bool big = layout.bigEndian;
    const qint64 stride = layout.frameSize();
    bytes += channel * sizeOf(layout.type);
    switch (layout.type) {
    case FileSample::Float64:
        return convertPlain<double, quint64>(bytes, frames, layout, target);
    case FileSample::Float32:
        return convertPlain<float, quint32>(bytes, frames, layout, target);
    case FileSample::Int32:
    case FileSample::UInt32:
        return convertPlain<quint32, quint32>(bytes, frames, layout, target);
    case FileSample::Int16:
    case FileSample::UInt16:
        return convertPlain<quint16, quint16>(bytes, frames, layout, target);
    case FileSample::Int8:
    case FileSample::UInt8:
        return convertPlain<quint8, quint8>(bytes, frames, layout, target);
    case FileSample::Int24:
        return convert(bytes, frames, stride, target,
                       [big](const char *at) { return qint32(bitsAt<quint32, 3>(at, big) << 8) >> 8; });
    case FileSample::Int64:
        return convert(bytes, frames, stride, target,
                       [big](const char *at) { return double(qint64(bitsAt<quint64, 8>(at, big))); });
    case FileSample::UInt64:
        return convert(bytes, frames, stride, target,
                       [big](const char *at) { return double(bitsAt<quint64, 8>(at, big)); });
    case FileSample::Float16:
        return convert(bytes, frames, stride, target,
                       [big](const char *at) { return float(valueOf<qfloat16>(bitsAt<quint16, 2>(at, big))); });
    }
}

QString describe(const SSampleLayout &layout)
{
    QStringList words{layout.format};
    words << (layout.channels == 1 ? nameOf(layout.type)
                                   : QStringLiteral("%1 channels of %2").arg(layout.channels).arg(nameOf(layout.type)));
    if (layout.bigEndian && sizeOf(layout.type) > 1)
        words << QStringLiteral("most significant byte first");
    if (layout.sampleRate > 0.0)
        words << QStringLiteral("%1 samples a second").arg(layout.sampleRate);
    return (words + layout.remarks).join(QStringLiteral("; "));
}
