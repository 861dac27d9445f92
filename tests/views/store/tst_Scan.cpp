// SPDX-License-Identifier: MIT
#include "common/Avx2.h"
#include "views/store/SampleType.h"
#include "views/store/ScanLoops.h"

#include <QtTest>

#include <array>
#include <random>
#include <vector>

// What the loops must find, number by number: the same whatever a processor has, to the last bit.

namespace {

enum Kind { Waves, Spikes, SomeGaps, ManyGaps, Zeros, Large, AllPositive, Equal, Any, kindCount };

template <class T>
T someValue(Kind kind, std::mt19937 &random)
{
    constexpr T largest = std::numeric_limits<T>::max();
    const T sign = std::is_signed_v<T> && random() % 2 ? T(-1) : T(1);
    const T small = T(sign * T(random() % 100));
    if (kind == Zeros) // of either sign, and hardly anything else
        return random() % 40 == 0 ? small : T(sign * T(0));
    if (kind == AllPositive)
        return T(1 + random() % 120);
    if (kind == Equal)
        return largest;
    if constexpr (std::is_floating_point_v<T>) {
        const T fine = small + T(random()) / T(3e9);
        const unsigned gaps = kind == SomeGaps ? 50 : 2;
        const T strange[] = {std::numeric_limits<T>::infinity(), -std::numeric_limits<T>::infinity(), T(std::nan(""))};
        if ((kind == SomeGaps || kind == ManyGaps) && random() % gaps == 0)
            return strange[random() % 3];
        if (kind == Large)
            return sign * largest / T(1 + random() % 3);
        return kind == Spikes && random() % 10 == 0 ? fine * T(1e9) : fine;
    }
    if (kind == Large || (kind == Spikes && random() % 10 == 0))
        return T(sign * (largest - T(random() % 3)));
    return kind == Any ? T(random()) : small;
}

template <class T>
T at(const char *values, qint64 index)
{
    T value;
    std::memcpy(&value, values + index * qint64(sizeof value), sizeof value);
    return value;
}

template <class T>
bool isFinite(T value)
{
    return double(value) - double(value) == 0.0;
}

/// As many running extremes as fit into 32 bytes, the first one wins.
template <class T>
SCell<T> plainCell(const char *values, qint64 count, bool &hasGap)
{
    constexpr size_t lanes = 32 / sizeof(T);
    std::array<SCell<T>, lanes> running;
    const qint64 whole = count / qint64(lanes) * qint64(lanes);
    const auto take = [&hasGap](SCell<T> &cell, T value) {
        if (!isFinite(value)) {
            hasGap = true;
            return;
        }
        cell.lowest = value < cell.lowest ? value : cell.lowest;
        cell.highest = value > cell.highest ? value : cell.highest;
    };
    for (qint64 i = 0; i < whole; ++i)
        take(running[size_t(i) % lanes], at<T>(values, i));
    SCell<T> cell;
    for (size_t i = 0; i < lanes / 2; ++i) {
        for (const size_t lane : {i, i + lanes / 2}) {
            cell.lowest = running[lane].lowest < cell.lowest ? running[lane].lowest : cell.lowest;
            cell.highest = running[lane].highest > cell.highest ? running[lane].highest : cell.highest;
        }
    }
    for (qint64 i = whole; i < count; ++i)
        take(cell, at<T>(values, i));
    return cell;
}

/// Eight running sums, joined in pairs.
template <class T>
SSums plainSums(double base, const char *values, qint64 count)
{
    std::array<double, 8> sums{};
    std::array<double, 8> squares{};
    SSums found;
    const qint64 whole = count / 8 * 8;
    const auto distanceAt = [&](qint64 i) {
        const T value = at<T>(values, i);
        found.count += isFinite(value);
        return isFinite(value) ? double(value) - base : 0.0;
    };
    for (qint64 i = 0; i < whole; ++i) {
        const double distance = distanceAt(i);
        sums[size_t(i % 8)] += distance;
        squares[size_t(i % 8)] += distance * distance;
    }
    for (size_t i = 0; i < 8; i += 2) {
        found.sum += sums[i] + sums[i + 1];
        found.squares += squares[i] + squares[i + 1];
    }
    for (qint64 i = whole; i < count; ++i) {
        const double distance = distanceAt(i);
        found.sum += distance;
        found.squares += distance * distance;
    }
    return found;
}

/// The sums of small whole numbers are exact in any order.
template <class T>
SWholeSums plainWholeSums(const char *values, qint64 count)
{
    SWholeSums found;
    for (qint64 i = 0; i < count; ++i) {
        found.sum += qint64(at<T>(values, i));
        found.squares += quint64(qint64(at<T>(values, i)) * qint64(at<T>(values, i)));
    }
    return found;
}

template <class T>
SPositives<T> plainPositives(const char *values, qint64 count)
{
    SPositives<T> found;
    for (qint64 i = 0; i < count; ++i) {
        const T value = at<T>(values, i);
        if (!(value > T(0)) || !isFinite(value))
            continue;
        found.smallest = found.count == 0 || value < found.smallest ? value : found.smallest;
        ++found.count;
    }
    return found;
}

template <class Number>
bool sameBits(Number a, Number b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

template <class T>
bool same(const SCell<T> &a, const SCell<T> &b)
{
    return sameBits(a.lowest, b.lowest) && sameBits(a.highest, b.highest);
}

/// Sums that aren't finite are only the same kind of number: nothing is made of them.
bool same(const SSums &a, const SSums &b)
{
    const auto sameSum = [](double x, double y) { return sameBits(x, y) || (!isFinite(x) && !isFinite(y)); };
    return a.count == b.count && sameSum(a.sum, b.sum) && sameSum(a.squares, b.squares);
}

#define CHECK(condition) \
  if (!(condition)) \
  return QByteArray(#condition)

/// What is wrong with what is found of the values, in words; empty if all is right.
template <class T, int registerSize>
QByteArray complaint(const char *values, qint64 count)
{
    using Loops = ScanLoops<T, registerSize>;
    bool hasGap = false;
    bool mustHaveGap = false;
    const SCell<T> cell = Loops::cellOf(values, count, hasGap);
    CHECK(same(cell, plainCell<T>(values, count, mustHaveGap)));
    CHECK(hasGap == mustHaveGap);
    const SPositives<T> positives = Loops::positivesOf(values, count);
    CHECK(sameBits(positives.smallest, plainPositives<T>(values, count).smallest));
    CHECK(positives.count == plainPositives<T>(values, count).count);
    for (const double base : {0.0, 17.25, cell.isEmpty() ? -1.5 : double(cell.lowest)}) {
        CHECK(same(Loops::sumsFrom(base, values, count, true), plainSums<T>(base, values, count)));
        CHECK(hasGap || same(Loops::sumsFrom(base, values, count, false), plainSums<T>(base, values, count)));
    }
    if constexpr (sizeof(T) < 4) {
        CHECK(Loops::wholeSums(values, count).sum == plainWholeSums<T>(values, count).sum);
        CHECK(Loops::wholeSums(values, count).squares == plainWholeSums<T>(values, count).squares);
    }
    std::array<SCell<T>, 64> cells;
    const int cellCount = int(std::min<qint64>(count / 64, 64));
    const quint64 gaps = Loops::cellsOf(values, cellCount, cells.data());
    for (int i = 0; i < cellCount; ++i) {
        bool isGappy = false;
        CHECK(same(cells[size_t(i)], plainCell<T>(values + i * 64 * int(sizeof(T)), 64, isGappy)));
        CHECK(isGappy == bool(gaps >> i & 1));
    }
    CHECK(cellCount == 64 || gaps >> cellCount == 0);
    return {};
}

template <int registerSize>
QByteArray complaintOfType(SampleType type, const char *values, qint64 count)
{
    return withSampleType(type, [&](auto zero) { return complaint<decltype(zero), registerSize>(values, count); });
}

/// Values of a type that begin anywhere.
std::vector<char> madeBytes(SampleType type, Kind kind, qint64 count, int offset, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<char> bytes(size_t(offset + count * sizeOf(type) + 1)); // never empty
    withSampleType(type, [&](auto zero) {
        for (qint64 i = 0; i < count; ++i) {
            const auto value = someValue<decltype(zero)>(kind, random);
            std::memcpy(bytes.data() + offset + i * qint64(sizeof value), &value, sizeof value);
        }
    });
    return bytes;
}

} // namespace

class tst_Scan : public QObject
{
    Q_OBJECT

private slots:
    void everyCountIsScannedAlike_data();
    void everyCountIsScannedAlike();
    void longRunsAreScannedAlike();
};

void tst_Scan::everyCountIsScannedAlike_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("isWide");
    for (int type = 0; type < sampleTypeCount; ++type) {
        QTest::addRow("%s, any processor", nameOf(SampleType(type))) << type << false;
        QTest::addRow("%s, AVX2", nameOf(SampleType(type))) << type << true;
    }
}

void tst_Scan::everyCountIsScannedAlike()
{
    QFETCH(int, type);
    QFETCH(bool, isWide);
    if (isWide && !hasAvx2())
        QSKIP("this processor has no AVX2");
    const auto complains = isWide ? complaintOfType<wideRegisters> : complaintOfType<narrowRegisters>;
    for (int kind = 0; kind < kindCount; ++kind) {
        for (int count = 0; count < 400; ++count) {
            const int offset = count % 13;
            const std::vector<char> bytes = madeBytes(SampleType(type), Kind(kind), count, offset, unsigned(count));
            const QByteArray found = complains(SampleType(type), bytes.data() + offset, count);
            QVERIFY2(found.isEmpty(),
                     QByteArray::number(count) + " of kind " + QByteArray::number(kind) + ": " + found);
        }
    }
}

void tst_Scan::longRunsAreScannedAlike()
{
    for (int type = 0; type < sampleTypeCount; ++type) {
        for (int kind = 0; kind < kindCount; ++kind) {
            for (const int count : {4095, 4096}) {
                const std::vector<char> bytes = madeBytes(SampleType(type), Kind(kind), count, 1, 7);
                const char *const values = bytes.data() + 1;
                const QByteArray narrow = complaintOfType<narrowRegisters>(SampleType(type), values, count);
                QVERIFY2(narrow.isEmpty(), narrow);
                if (!hasAvx2())
                    continue;
                const QByteArray wide = complaintOfType<wideRegisters>(SampleType(type), values, count);
                QVERIFY2(wide.isEmpty(), wide);
            }
        }
    }
}

QTEST_GUILESS_MAIN(tst_Scan)
#include "tst_Scan.moc"
