// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVector>

#include <cstring>

// Exact comparison: NaN equals the same NaN, and the zeros of both signs differ.

inline quint64 bitsOf(double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

inline bool sameBits(const QVector<double> &a, const QVector<double> &b)
{
    return a.size() == b.size()
        && (a.isEmpty() || std::memcmp(a.constData(), b.constData(), sizeof(double) * size_t(a.size())) == 0);
}

/// Where two series differ first, for the message of a failed test.
inline QByteArray difference(const QVector<double> &actual, const QVector<double> &expected)
{
    if (actual.size() != expected.size())
        return QByteArray("sizes ") + QByteArray::number(actual.size()) + " and " + QByteArray::number(expected.size());
    for (int i = 0; i < actual.size(); ++i) {
        if (bitsOf(actual.at(i)) != bitsOf(expected.at(i))) {
            return "index " + QByteArray::number(i) + " of " + QByteArray::number(actual.size()) + ": "
                + QByteArray::number(actual.at(i), 'g', 17) + " (" + QByteArray::number(bitsOf(actual.at(i)), 16)
                + ") instead of " + QByteArray::number(expected.at(i), 'g', 17) + " ("
                + QByteArray::number(bitsOf(expected.at(i)), 16) + ")";
        }
    }
    return "none";
}

#define COMPARE_BITS(actual, expected) \
  do { \
    const QVector<double> actualSeries(actual); \
    const QVector<double> expectedSeries(expected); \
    QVERIFY2(sameBits(actualSeries, expectedSeries), difference(actualSeries, expectedSeries).constData()); \
  } while (false)
