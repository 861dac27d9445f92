// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

/// How bright a color looks, 0 to 1. Transparency is left out.
inline double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// How well two colors can be told apart, 1 to 21. Text wants 4.5, lines and marks 3.
inline double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, brighter] = std::minmax({luminance(a), luminance(b)});
    return (brighter + 0.05) / (darker + 0.05);
}
