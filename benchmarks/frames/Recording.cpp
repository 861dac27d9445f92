// SPDX-License-Identifier: MIT
#include "benchmarks/frames/Recording.h"

#include <QLocale>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

/// What a series repeats: it isn't so short that a picture shows it.
const std::vector<float> &portion()
{
    static const std::vector<float> made = [] {
        constexpr int count = 1'000'003;
        std::mt19937 random(1);
        std::normal_distribution<double> noise(0.0, 0.3);
        std::vector<float> values;
        for (int i = 0; i < count; ++i)
            values.push_back(float(std::sin(i * 6e-5) + noise(random) + (i % 250'007 == 0 ? 4.0 : 0.0)));
        return values;
    }();
    return made;
}

/// Calls take(values, count) until it had as many; false if it once returned false.
template <class Take>
bool makeValues(qint64 count, Take &&take)
{
    while (count > 0) {
        const qint64 next = std::min(count, qint64(portion().size()));
        if (!take(portion().data(), next))
            return false;
        count -= next;
    }
    return true;
}

bool writeAll(int file, const void *bytes, size_t count)
{
    const char *next = static_cast<const char *>(bytes);
    while (count > 0) {
        const ssize_t written = ::write(file, next, count);
        if (written <= 0)
            return false;
        next += written;
        count -= size_t(written);
    }
    return true;
}

/// A file without a name that the values were written to.
int newFile(qint64 count, const QString &folder)
{
    QByteArray path = (folder + QStringLiteral("/recording-XXXXXX")).toLocal8Bit();
    const int file = ::mkstemp(path.data());
    if (file < 0)
        qFatal("%s: %s", path.constData(), strerror(errno));
    ::unlink(path.constData()); // whatever happens, nothing is left
    const auto write = [file](const float *values, qint64 size) {
        return writeAll(file, values, size_t(size) * sizeof *values);
    };
    if (!makeValues(count, write))
        qFatal("%s: %s", path.constData(), strerror(errno));
    return file;
}

} // namespace

/// The values in a mapped file.
struct Mapping
{
    Mapping(qint64 count, const QString &folder)
        : file(newFile(count, folder)),
          bytes(size_t(count) * sizeof(float)),
          begin(::mmap(nullptr, bytes, PROT_READ, MAP_SHARED, file, 0))
    {
        if (begin == MAP_FAILED)
            qFatal("A recording can't be mapped: %s", strerror(errno));
        ::madvise(begin, bytes, MADV_RANDOM);
    }
    ~Mapping()
    {
        ::munmap(begin, bytes);
        ::close(file);
    }
    Mapping(const Mapping &) = delete;
    Mapping &operator=(const Mapping &) = delete;

    /// Has the system read it from the disk again.
    void forgetPages() const
    {
        ::fdatasync(file);
        ::madvise(begin, bytes, MADV_DONTNEED);
        ::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    }

    const int file;
    const size_t bytes;
    void *const begin;
};

Recording::Recording(qint64 count) : m_count(count)
{
    m_store.setValueType(SeriesStore::Float32);
    if (!makeValues(count, [this](const float *values, qint64 size) { return m_store.append(values, size); }))
        qFatal("There isn't memory for %lld values", static_cast<long long>(count));
    m_isGrowing = true;
    m_device = std::thread([this] { grow(); });
}

Recording::Recording(qint64 count, const QString &folder, bool isCold)
    : m_count(count),
      m_isCold(isCold),
      m_mapping(std::make_shared<const Mapping>(count, folder))
{
}

Recording::~Recording()
{
    m_isGrowing = false;
    if (m_device.joinable())
        m_device.join();
}

void Recording::grow()
{
    SeriesWriter writer = m_store.writer();
    auto next = std::chrono::steady_clock::now();
    for (size_t i = 0; m_isGrowing; i = (i + 1) % portion().size()) {
        writer.append(&portion()[i], 1);
        next += std::chrono::milliseconds(1);
        std::this_thread::sleep_until(next);
    }
}

void Recording::close()
{
    if (!m_mapping)
        return;
    m_store.setData(SeriesData::create(SampleType::Float32)); // the one before is looked through no more
    if (m_isCold)
        m_mapping->forgetPages();
}

void Recording::open()
{
    if (m_mapping)
        m_store.setData(SeriesData::createOver(SampleType::Float32, m_mapping->begin, m_count, m_mapping));
}

QString Recording::name() const
{
    const QString count = QLocale(QLocale::English).toString(m_count).replace(QLatin1Char(','), QLatin1Char(' '));
    return count + (m_mapping ? QStringLiteral(", mapped") : QStringLiteral(", growing"));
}
