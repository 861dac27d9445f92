// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/ReadingJob.h"

#include <memory>
#include <vector>

class MappedFile;

/// One pass through a file of samples: NumPy, WAV or raw. For the reading thread.
class SampleReading
{
public:
    SampleReading(ReadingJob &job, InputFile &file, FileFormat format) : m_job(job), m_file(file), m_format(format) {}

    ReadingJob::Next run();

private:
    using Next = ReadingJob::Next;

    bool findLayout(Next &next);
    SHeader header(const QByteArray &front) const;
    SSampleLayout rawLayout() const;
    bool skipHeader(QByteArray front, Next &next);
    bool begin(const std::shared_ptr<SeriesData> &whole);
    std::shared_ptr<SeriesData> seriesOver(const std::shared_ptr<const MappedFile> &mapped) const;
    bool isWorthMapping() const;
    Next showMapped(const std::shared_ptr<const MappedFile> &mapped);
    Next readAll();
    InputFile::Got readSome();
    InputFile::Got readPlain();
    bool append(const char *bytes, qint64 frames);
    qint64 wantedBytes(qint64 most) const;
    void report(bool finished);
    QString words(bool finished) const;

    ReadingJob &m_job;
    InputFile &m_file;
    const FileFormat m_format;
    SSampleLayout m_layout;
    std::vector<std::shared_ptr<SeriesData>> m_series;
    qint64 m_frames = 0; ///< appended
    QByteArray m_buffer; ///< of frames that have to be converted
    int m_held = 0;      ///< bytes of a frame that isn't whole, in the buffer or behind the last value
    bool m_outOfMemory = false;
};
