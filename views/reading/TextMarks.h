// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <vector>

/// Where the bytes of a text are that aren't digits. A minus sign isn't counted among them if what is in front of it is
/// neither a digit nor such a sign: it's likely to be a number's.
class TextMarks
{
public:
    /// Finds them among the bytes [from, to) of `text`, where a line begins; textMargin bytes may be read from `to` on.
    void find(const char *text, qint64 from, qint64 to);

    /// Their places in the text, ascending. The first one is in front of the bytes, and may be -1.
    const quint32 *begin() const { return m_places.data(); }
    const quint32 *end() const { return m_places.data() + m_count; }

private:
    std::vector<quint32> m_places;
    qint64 m_count = 0;
};
