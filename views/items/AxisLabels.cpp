// SPDX-License-Identifier: MIT
#include "views/items/AxisLabels.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr double baseFrom = 1e-4;    // a range below this part of the values is written from a base
constexpr double prefixAbove = 1e4;  // up to four digits are read without a prefix…
constexpr double prefixBelow = 1e-2; // …and so is a hundredth
constexpr int mostDecimals = 12;
constexpr int readDecimals = 2; // with a prefix

int thousands(double value)
{
    if (value >= prefixBelow && value < prefixAbove)
        return 0;
    // The logarithm of 1e6 less a rounding error is still a million's.
    return value > 0.0 && std::isfinite(value) ? int(std::floor((std::log10(value) + 1e-9) / 3.0)) * 3 : 0;
}

/// A value divided by a power of ten, which may be smaller than any that a double holds.
double inUnitsOf(double value, int exponent)
{
    constexpr int most = 300;
    return exponent < -most ? value * 1e300 / std::pow(10.0, exponent + most) : value / std::pow(10.0, exponent);
}

/// The fewest decimals in which a step, and so each of its multiples, is whole.
int decimalsOf(double step)
{
    if (!(step > 0.0))
        return 0;
    const int first = std::max(0, int(std::ceil(-std::log10(step) - 1e-9)));
    for (int decimals = first; decimals < std::min(first + 4, mostDecimals); ++decimals) {
        const double scaled = step * std::pow(10.0, decimals);
        if (std::abs(scaled - std::round(scaled)) < 1e-6 * scaled)
            return decimals;
    }
    return std::min(first + 1, mostDecimals);
}

QString plain(double value, int decimals)
{
    const QString text = QString::number(value, 'f', std::max(0, decimals));
    static const QRegularExpression minusZero(QStringLiteral("^-0(\\.0*)?$"));
    return minusZero.match(text).hasMatch() ? text.mid(1) : text;
}

QString withoutTrailingZeros(QString number)
{
    if (!number.contains(QLatin1Char('.')))
        return number;
    while (number.endsWith(QLatin1Char('0')))
        number.chop(1);
    if (number.endsWith(QLatin1Char('.')))
        number.chop(1);
    return number;
}

/// The letters that asprintf() takes for a double, and those for a whole number.
const QRegularExpression &numberFormat()
{
    static const QRegularExpression format(
        QStringLiteral("^((?:[^%]|%%)*)%([-+ 0#]*)(\\d{0,2})(\\.\\d{0,2})?([diufFeEgGxXo])((?:[^%]|%%)*)$"));
    return format;
}

} // namespace

AxisLabels::AxisLabels(const AxisMapping &mapping, double step)
{
    if (!mapping.isValid() || mapping.log || !(step > 0.0)) {
        m_eachItsOwn = true;
        return;
    }
    const double farthest = std::max(std::abs(mapping.from), std::abs(mapping.to));
    if (std::abs(mapping.span()) < baseFrom * farthest)
        chooseBase(mapping, step);
    m_exponent = thousands(m_hasBase ? std::abs(mapping.span()) : farthest);
    m_decimals = decimalsOf(step / std::pow(10.0, m_exponent));
    while (m_exponent != 0 && m_decimals > readDecimals) { // 12345.5 is read more easily than 12.3455k
        m_exponent -= 3;
        m_decimals = std::max(0, m_decimals - 3);
    }
}

/// The base is a round number a hundred ranges wide, so that it seldom changes in a pan.
void AxisLabels::chooseBase(const AxisMapping &mapping, double step)
{
    const double width = std::pow(10.0, std::ceil(std::log10(std::abs(mapping.span()))) + 1.0);
    m_base = std::floor(std::min(mapping.from, mapping.to) / width) * width;
    m_baseDecimals = decimalsOf(width);
    m_hasBase = m_base != 0.0 && std::isfinite(m_base) && m_base + step != m_base;
}

QString AxisLabels::text(double value) const
{
    if (!std::isfinite(value))
        return {};
    if (m_eachItsOwn)
        return shortNumber(value);
    if (!m_hasBase)
        return withPrefix(value, m_exponent, m_decimals);
    const double offset = value - m_base;
    const QString number = withPrefix(offset, m_exponent, m_decimals);
    return offset < 0.0 && number.startsWith(QLatin1Char('-')) ? number : QLatin1Char('+') + number;
}

QString AxisLabels::baseText() const
{
    return m_hasBase ? plain(m_base, m_baseDecimals) : QString();
}

QString AxisLabels::withPrefix(double value, int exponent, int decimals) const
{
    const QString number = plain(value / std::pow(10.0, exponent), decimals);
    return value == 0.0 ? QStringLiteral("0") : number + prefixText(exponent);
}

QString shortNumber(double value, int significant)
{
    if (std::isnan(value))
        return QStringLiteral("–");
    if (std::isinf(value))
        return value < 0.0 ? QStringLiteral("-∞") : QStringLiteral("∞");
    if (value == 0.0)
        return QStringLiteral("0");
    const int exponent = thousands(std::abs(value));
    const double scaled = inUnitsOf(value, exponent);
    const int whole = int(std::floor(std::log10(std::abs(scaled)) + 1e-12)) + 1;
    const int decimals = std::max(0, std::min(significant - whole, mostDecimals));
    return withoutTrailingZeros(plain(scaled, decimals)) + prefixText(exponent);
}

QString prefixText(int exponent)
{
    switch (exponent) {
    case 0:
        return {};
    case 3:
        return QStringLiteral("k");
    case 6:
        return QStringLiteral("M");
    case 9:
        return QStringLiteral("G");
    case -3:
        return QStringLiteral("m");
    case -6:
        return QStringLiteral("u");
    case -9:
        return QStringLiteral("n");
    case -12:
        return QStringLiteral("p");
    default:
        return QStringLiteral("e%1").arg(exponent);
    }
}

bool isNumberFormat(const QString &format)
{
    return numberFormat().match(format).hasMatch();
}

QString formattedNumber(double value, const QString &format)
{
    const QRegularExpressionMatch match = numberFormat().match(format);
    if (!match.hasMatch() || !std::isfinite(value))
        return {};
    const QString letter = match.captured(5);
    const bool isWhole = QStringLiteral("diuxXo").contains(letter);
    const QString conversion = QLatin1Char('%') + match.captured(2) + match.captured(3) + match.captured(4)
        + (isWhole ? QStringLiteral("ll") : QString()) + letter;
    constexpr double mostWhole = 9.2e18;
    const QByteArray c = conversion.toLatin1();
    const QString number = isWhole
        ? QString::asprintf(c.constData(), qint64(std::round(qBound(-mostWhole, value, mostWhole))))
        : QString::asprintf(c.constData(), value);
    const auto literal = [&](int part) {
        return match.captured(part).replace(QStringLiteral("%%"), QStringLiteral("%"));
    };
    return literal(1) + number + literal(6);
}
