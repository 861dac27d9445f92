// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A file of numbers that's written now and deleted at the end.
class NumberFile
{
public:
    enum class Kind {
        Column,       ///< a text of one number in each line
        ThreeColumns, ///< a text with a head, semicolons and decimal commas
        Floats        ///< samples of four bytes
    };
    /// Of `count` lines or samples, in `folder`.
    NumberFile(Kind kind, qint64 count, const QString &folder);
    ~NumberFile();
    NumberFile(const NumberFile &) = delete;
    NumberFile &operator=(const NumberFile &) = delete;

    const QString &path() const { return m_path; }

private:
    const QString m_path;
};
