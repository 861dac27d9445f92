// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <memory>

/// The bytes of a file without a copy of them.
///
/// The kernel ends a process that looks at a mapped page which its file no longer has, or which the disk can't give.
/// Not here: as long as such an object lives, a handler of SIGBUS puts pages of zeros there and remembers where. Faults
/// anywhere else go to the handler that was there before, which is put back when the last file is unmapped. A handler
/// that the program installs later must pass on what isn't its own.
class MappedFile
{
public:
    /// Maps the first `size` bytes. Null if they can't be mapped, or if as many files are mapped as can be watched
    /// over.
    static std::shared_ptr<const MappedFile> map(int descriptor, qint64 size);
    ~MappedFile();
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;

    const char *begin() const { return m_begin; }
    qint64 size() const { return m_size; }
    /// From which byte on there are zeros instead of what was in the file; -1 as long as nothing is missing. Any
    /// thread.
    qint64 tornFrom() const;

    static constexpr int mostFiles = 64;

private:
    MappedFile(char *begin, qint64 size, int guard) : m_begin(begin), m_size(size), m_guard(guard) {}

    char *const m_begin;
    const qint64 m_size;
    const int m_guard;
};
