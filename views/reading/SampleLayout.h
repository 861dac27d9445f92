// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SampleType.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// What a sample is in a file. The first eight are SampleType's, in the same order.
enum class FileSample { Float64, Float32, Int32, UInt32, Int16, UInt16, Int8, UInt8, Int24, Int64, UInt64, Float16 };

int sizeOf(FileSample type);
/// What samples of this type are stored as.
SampleType storedAs(FileSample type);
QString nameOf(FileSample type);

/// How the samples of a binary file lie in it.
struct SSampleLayout
{
    FileSample type = FileSample::Float64;
    int channels = 1; ///< interleaved
    bool bigEndian = false;
    qint64 headerSize = 0;   ///< bytes in front of the samples
    qint64 frames = -1;      ///< of one sample for each channel; -1: up to the end of the file
    double sampleRate = 0.0; ///< frames a second; 0 if it isn't known
    QString format;          ///< for people: "NumPy array"
    QStringList remarks;

    int frameSize() const { return sizeOf(type) * channels; }
    /// Whether a channel lies in the file as it would in memory.
    bool isPlain() const { return channels == 1 && int(type) < sampleTypeCount && (sizeOf(type) == 1 || !isSwapped()); }
    bool isSwapped() const { return bigEndian != (Q_BYTE_ORDER == Q_BIG_ENDIAN); }
};

/// A layout, or why there is none.
struct SHeader
{
    std::optional<SSampleLayout> layout;
    qint64 needed = 0; ///< more than 0: so many bytes from the beginning of the file tell more
    QString obstacle;  ///< for people, behind the name of the file
};

/// Reads the header of a .npy file, versions 1 to 3, from its first bytes. Takes any bytes.
SHeader npyHeader(const QByteArray &front);

/// Reads the header of a WAV file, RIFF or RF64, from its first bytes. A length that can't be means "up to the end".
/// `fileSize` is -1 if it isn't known. Takes any bytes.
SHeader wavHeader(const QByteArray &front, qint64 fileSize);

/// Converts `frames` frames, one channel after the other, to samples of the type that they are stored as. Any thread.
void convertSamples(const char *bytes, qint64 frames, const SSampleLayout &layout, int channel, char *target);

/// "2 channels of Int16, 44100 a second"
QString describe(const SSampleLayout &layout);
