// SPDX-License-Identifier: MIT
#include "views/items/OutputFile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace {

const auto standardOutput = QLatin1String("-");

std::unique_ptr<QFileDevice> fileAt(const QString &path)
{
    const QFileInfo target(path);
    const bool isDevice = target.exists() && !target.isFile() && !target.isDir();
    if (path == standardOutput || isDevice)
        return std::make_unique<QFile>(path);
    return std::make_unique<QSaveFile>(path);
}

} // namespace

OutputFile::OutputFile(const QString &path) : m_path(path), m_file(fileAt(path)) {}

OutputFile::~OutputFile() = default;

bool OutputFile::fail()
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("%1: %2").arg(m_path, m_file->errorString());
    return false;
}

/// Without a buffer: a write that stops half-way doesn't say why, the next one does.
bool OutputFile::open()
{
    constexpr QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Unbuffered;
    if (m_path == standardOutput)
        return static_cast<QFile &>(*m_file).open(stdout, mode) || fail();
    return m_file->open(mode) || fail();
}

bool OutputFile::write(const char *bytes, qint64 count)
{
    while (m_error.isEmpty() && count > 0) {
        const qint64 written = m_file->write(bytes, count);
        if (written <= 0)
            return fail();
        bytes += written;
        count -= written;
    }
    return m_error.isEmpty();
}

bool OutputFile::close()
{
    if (!m_error.isEmpty())
        return false;
    if (auto *whole = qobject_cast<QSaveFile *>(m_file.get()))
        return whole->commit() || fail();
    m_file->close();
    return true;
}
