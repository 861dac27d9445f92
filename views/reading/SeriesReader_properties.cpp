// SPDX-License-Identifier: MIT
#include "views/reading/SeriesReader.h"

#include "common/Change.h"

#include <algorithm>
#include <cmath>

// Setting a property that matters reads again, once for all that are set together.

void SeriesReader::setSource(const QString &value)
{
    if (!change(m_source, value))
        return;
    emit sourceChanged();
    startSoon();
}

void SeriesReader::setFormat(Format value)
{
    if (!change(m_format, value))
        return;
    emit formatChanged();
    startSoon();
}

void SeriesReader::setColumn(const QVariant &value)
{
    if (!change(m_column, value))
        return;
    emit columnChanged();
    startSoon();
}

void SeriesReader::setXColumn(const QVariant &value)
{
    if (!change(m_xColumn, value))
        return;
    emit xColumnChanged();
    startSoon();
}

void SeriesReader::setSeparator(const QString &value)
{
    if (!change(m_separator, value))
        return;
    emit separatorChanged();
    startSoon();
}

void SeriesReader::setDecimalPoint(const QString &value)
{
    if (!change(m_decimalPoint, value))
        return;
    emit decimalPointChanged();
    startSoon();
}

void SeriesReader::setCommentPrefix(const QString &value)
{
    if (!change(m_commentPrefix, value))
        return;
    emit commentPrefixChanged();
    startSoon();
}

void SeriesReader::setSampleType(SeriesStore::ValueType value)
{
    if (!change(m_sampleType, value))
        return;
    emit sampleTypeChanged();
    startSoon();
}

void SeriesReader::setByteOrder(ByteOrder value)
{
    if (!change(m_byteOrder, value))
        return;
    emit byteOrderChanged();
    startSoon();
}

void SeriesReader::setChannel(int value)
{
    if (!change(m_channel, value))
        return;
    emit channelChanged();
    startSoon();
}

void SeriesReader::setSkipLines(int count)
{
    if (!change(m_skipLines, std::max(count, 0)))
        return;
    emit skipLinesChanged();
    startSoon();
}

void SeriesReader::setOffset(qreal bytes)
{
    constexpr qreal most = 9e15; // whole numbers that a double holds
    if (!std::isfinite(bytes) || !change(m_offset, std::clamp(std::floor(bytes), 0.0, most)))
        return;
    emit offsetChanged();
    startSoon();
}
