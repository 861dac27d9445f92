// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/FileFormat.h"
#include "views/reading/SampleLayout.h"
#include "views/reading/TextLayout.h"

#include <QString>
#include <QVariantMap>
#include <QVector>

#include <limits>
#include <memory>

class SeriesData;

/// A column, by number or by name.
struct SColumnChoice
{
    bool isSet() const { return number > 0 || !name.isEmpty(); }

    int number = 0; ///< from 1
    QString name;
};

/// What is to be read, and how.
struct SReadingRequest
{
    QString path; ///< "-": standard input
    FileFormat format = FileFormat::Auto;
    STextHints text;
    SColumnChoice column; ///< or channel
    SColumnChoice xColumn;
    SampleType rawType = SampleType::Float64;
    bool rawBigEndian = false;
    qint64 rawOffset = 0;
    bool follows = false;
    bool isHeld = false; ///< begins only when it's told to
    qint64 mapFrom = 0;  ///< bytes; larger files are mapped if they can be
};

/// One series that was found.
struct SReadSeries
{
    QString name;
    QString unit;
    int column = 0; ///< or channel, from 1
    std::shared_ptr<SeriesData> data;
    double startTime = std::numeric_limits<double>::quiet_NaN();
};

/// What is known about a reading at one moment.
struct SReadingState
{
    enum class Status { Loading, Ready, Error };

    Status status = Status::Loading;
    double progress = 0.0; ///< 0 to 1; 0 as long as the size isn't known
    QString error;
    QString detected;
    QVariantMap layout; ///< of a text: separator, decimalPoint, headLines
    QVector<SReadSeries> series;
    int chosen = -1; ///< among the series
    int x = -1;      ///< among the series; -1: none
    int pass = 0;    ///< how often it was begun anew: another one has other series
    qint64 badLines = 0;
    qint64 firstBadLine = 0; ///< from 1; 0 if there is none
    double bytesPerSecond = 0.0;
    double sampleRate = 0.0;
    bool ended = false; ///< no more values will come
};
