// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/ReadingJob.h"
#include "views/reading/TextFeeder.h"
#include "views/reading/TextSink.h"

#include <QElapsedTimer>

/// One pass through a text, from its beginning on. For the reading thread.
class TextReading
{
public:
    /// `front` are the first bytes that `file` will give.
    TextReading(ReadingJob &job, InputFile &file, const QByteArray &front);

    ReadingJob::Next run();

private:
    using Next = ReadingJob::Next;

    bool findLayout(Next &next);
    bool detect(bool isWhole, qint64 most, SDetection &detection);
    QVector<SReadSeries> seriesOfColumns() const;
    bool begin(STextLayout layout);
    QVariantMap layoutMap() const;
    Next readAll();
    void noteAppended();
    void report(TextSink &sink, bool finished);
    QString words(const TextSink &sink, bool finished) const;

    ReadingJob &m_job;
    InputFile &m_file;
    TextFeeder m_feeder;
    std::optional<STextLayout> m_layout;
    std::optional<TextSink> m_sink;
    QString m_described;
    QElapsedTimer m_sinceReport; ///< the last one
    bool m_isUnreported = false;
};
