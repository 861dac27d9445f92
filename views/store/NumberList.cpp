// SPDX-License-Identifier: MIT
#include "views/store/NumberList.h"

#include <QVariantList>

#include <cmath>
#include <cstring>

namespace {

bool isNumber(const QVariant &value)
{
    switch (int(value.userType())) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

SNumbers numbersOf(const QVariantList &list)
{
    SNumbers numbers;
    numbers.values.reserve(list.size());
    for (const QVariant &entry : list) {
        if (!isNumber(entry) && !isNothing(entry))
            return {{}, QStringLiteral("entry %1 of the list is not a number").arg(numbers.values.size())};
        numbers.values.append(isNumber(entry) ? entry.toDouble() : std::nan(""));
    }
    return numbers;
}

SNumbers numbersOf(const QByteArray &buffer)
{
    if (buffer.size() % int(sizeof(double)) != 0)
        return {{}, QStringLiteral("%1 bytes are not a whole number of doubles").arg(buffer.size())};
    SNumbers numbers;
    numbers.values.resize(buffer.size() / int(sizeof(double)));
    std::memcpy(numbers.values.data(), buffer.constData(), size_t(buffer.size()));
    return numbers;
}

SNumbers noNumbers(bool isObject)
{
    const QString words = QStringLiteral("a number or a list of numbers was expected");
    return {{}, isObject ? words + QStringLiteral("; of a typed array, hand over its buffer") : words};
}

/// Of what can become a list. So can every object of JavaScript, but that list is empty; what tells a typed array from
/// an empty list is that it has properties.
SNumbers numbersOfList(const QVariant &values)
{
    const QVariantList list = values.toList();
    if (!list.isEmpty() || !values.canConvert<QVariantMap>() || values.toMap().isEmpty())
        return numbersOf(list);
    return noNumbers(true);
}

} // namespace

SNumbers numbersIn(const QVariant &values)
{
    if (isNothing(values))
        return {};
    if (isNumber(values))
        return {{values.toDouble()}, {}};
    if (values.userType() == qMetaTypeId<QVector<double>>())
        return {values.value<QVector<double>>(), {}};
    if (values.userType() == QMetaType::QByteArray)
        return numbersOf(values.toByteArray());
    if (values.canConvert<QVariantList>())
        return numbersOfList(values);
    return noNumbers(values.userType() == QMetaType::QVariantMap); // what a property makes of a typed array
}

bool isNothing(const QVariant &value)
{
    return !value.isValid() || value.userType() == QMetaType::Nullptr || value.userType() == QMetaType::Void;
}

std::shared_ptr<SeriesData> seriesOver(const QVector<double> &numbers)
{
    const auto owner = std::make_shared<QVector<double>>(numbers);
    return SeriesData::createOver(SampleType::Float64, owner->constData(), owner->size(), owner);
}
