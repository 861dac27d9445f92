// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QVariant>

#include <limits>

// Values that an application shouldn't pass, and will.

inline double hostileDouble(Chance &chance)
{
    using Limits = std::numeric_limits<double>;
    static const double values[] = {0.0,
                                    -0.0,
                                    1.0,
                                    -1.0,
                                    0.5,
                                    3.0,
                                    1e308,
                                    -1e308,
                                    Limits::max(),
                                    Limits::lowest(),
                                    Limits::min(),
                                    Limits::denorm_min(),
                                    -Limits::denorm_min(),
                                    Limits::infinity(),
                                    -Limits::infinity(),
                                    Limits::quiet_NaN(),
                                    2147483647.0,
                                    2147483648.0,
                                    -2147483649.0,
                                    9007199254740993.0,
                                    1e-300};
    return chance.pick(values);
}

inline int hostileInt(Chance &chance)
{
    static const int values[] = {
        0, 1, -1, 2, 3, 7, 255, 256, -255, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    return chance.pick(values);
}

inline QRectF hostileRect(Chance &chance)
{
    return {hostileDouble(chance), hostileDouble(chance), hostileDouble(chance), hostileDouble(chance)};
}

/// Of 0 to 3 values, and sometimes more.
inline QVector<double> hostileSeries(Chance &chance)
{
    QVector<double> series(chance.oneIn(4) ? chance.below(40) : chance.below(4));
    for (double &value : series)
        value = hostileDouble(chance);
    return series;
}

/// A value of a property's type that should not be there; invalid for types that have none.
inline QVariant hostileValue(Chance &chance, int type)
{
    switch (type) {
    case QMetaType::Double:
        return hostileDouble(chance);
    case QMetaType::Int:
        return hostileInt(chance);
    case QMetaType::UInt:
        return uint(hostileInt(chance));
    case QMetaType::UChar:
        return QVariant::fromValue(uchar(hostileInt(chance)));
    case QMetaType::Bool:
        return chance.oneIn(2);
    case QMetaType::QRectF:
        return hostileRect(chance);
    case QMetaType::QPointF:
        return QPointF(hostileDouble(chance), hostileDouble(chance));
    default:
        return type == qMetaTypeId<QVector<double>>() ? QVariant::fromValue(hostileSeries(chance)) : QVariant();
    }
}

/// Of any type, most often the wrong one.
inline QVariant hostileVariant(Chance &chance)
{
    static const int types[] = {QMetaType::Double,
                                QMetaType::Int,
                                QMetaType::UInt,
                                QMetaType::Bool,
                                QMetaType::QRectF,
                                QMetaType::QPointF,
                                qMetaTypeId<QVector<double>>()};
    static const QVariant others[] = {QVariant(),
                                      QStringLiteral("no number"),
                                      QString(),
                                      QColor(),
                                      QVariant::fromValue<QObject *>(nullptr),
                                      QVariantList{1, QStringLiteral("two"), QVariant()}};
    return chance.oneIn(2) ? hostileValue(chance, chance.pick(types)) : chance.pick(others);
}
