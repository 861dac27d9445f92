// SPDX-License-Identifier: MIT
#pragma once

#include "views/items/AxisMapping.h"

#include <QString>

/// How the numbers of one axis are written: all with the same prefix and the digits that the step needs, so that they
/// can be compared at a glance. Where the range is less than 1e-4 of the values, they are written as an offset from a
/// base. A plain value: any thread. Numbers are written with a point, whatever the locale.
class AxisLabels
{
public:
    AxisLabels() = default;
    /// @param step the distance of two ticks; 0 on a log scale, where each number gets a prefix of its own
    AxisLabels(const AxisMapping &mapping, double step);

    /// The text at a tick, such as "250k", "0.25" or "+0.5" (from the base).
    QString text(double value) const;
    /// What the texts are counted from, such as "1000000"; empty unless hasBase().
    QString baseText() const;
    bool hasBase() const { return m_hasBase; }

private:
    QString withPrefix(double value, int exponent, int decimals) const;
    void chooseBase(const AxisMapping &mapping, double step);

    int m_exponent = 0; ///< of the prefix: a multiple of 3
    int m_decimals = 0;
    bool m_eachItsOwn = false;
    bool m_hasBase = false;
    double m_base = 0.0;
    int m_baseDecimals = 0;
};

/// A number in as many significant digits as it needs, seven at most, with a prefix: what log axes and the read-out
/// write.
QString shortNumber(double value, int significant = 7);

/// The prefix of a power of ten that is a multiple of 3: "k" for 3, "m" for -3, "e18" where there is none.
QString prefixText(int exponent);

/// Whether this is a format of printf for one number, such as "%.2f" or "%d counts". An empty one isn't.
bool isNumberFormat(const QString &format);
/// The number in such a format. Empty if the format isn't one or the number isn't finite.
QString formattedNumber(double value, const QString &format);
