// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QVariant>

#include <limits>

// Values that nobody should pass, and somebody will.

inline double hostileDouble(Chance &chance)
{
    using Limits = std::numeric_limits<double>;
    static const double values[] = {0.0, -0.0, 1.0, -1.0, 0.5, 3.0, 1e308, -1e308, Limits::max(), Limits::lowest(), Limits::min(),
                                    Limits::denorm_min(), -Limits::denorm_min(), Limits::infinity(), -Limits::infinity(),
                                    Limits::quiet_NaN(), 2147483647.0, 2147483648.0, -2147483649.0, 9007199254740993.0, 1e-300};
    return chance.pick(values);
}

inline int hostileInt(Chance &chance)
{
    static const int values[] = {0, 1, -1, 2, 3, 7, 255, 256, -255, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
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

/// Of any type, most often the wrong one.
inline QVariant hostileVariant(Chance &chance)
{
    switch (chance.below(12)) {
    case 0: return hostileDouble(chance);
    case 1: return hostileInt(chance);
    case 2: return hostileRect(chance);
    case 3: return QVariant::fromValue(hostileSeries(chance));
    case 4: return QStringLiteral("no number");
    case 5: return QString();
    case 6: return QColor();
    case 7: return QPointF(hostileDouble(chance), hostileDouble(chance));
    case 8: return QVariant::fromValue<QObject *>(nullptr);
    case 9: return QVariantList{1, QStringLiteral("two"), QVariant()};
    case 10: return chance.oneIn(2);
    default: return {};
    }
}
