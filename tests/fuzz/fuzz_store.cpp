// SPDX-License-Identifier: MIT

// A series of any type against plain values: appended in any portions, dropped on the left, seen by snapshots of any
// age, or over external memory.

#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "tests/views/store/PlainSeries.h"
#include "views/store/SeriesData.h"

#include <memory>
#include <vector>

namespace {

constexpr qint64 mostValues = 600'000; // more than two chunks
constexpr qint64 mostScanned = 5000;

/// What a series of this type keeps of a number; false if nothing.
template <class T>
bool keeps(double number, double &kept)
{
    if constexpr (std::is_floating_point_v<T>) {
        kept = double(T(number));
        return true;
    } else {
        kept = std::floor(number + 0.5);
        return kept >= double(std::numeric_limits<T>::min()) && kept <= double(std::numeric_limits<T>::max());
    }
}

bool keepsAll(SampleType type, const QVector<double> &numbers, PlainSeries &kept)
{
    return withSampleType(type, [&](auto zero) {
        for (const double number : numbers) {
            double value = 0.0;
            if (!keeps<decltype(zero)>(number, value))
                return false;
            kept.append(value);
        }
        return true;
    });
}

/// A series and what is in it.
struct SSubject
{
    explicit SSubject(SampleType valueType) : type(valueType), data(SeriesData::create(type)) {}

    SampleType type;
    std::shared_ptr<SeriesData> data;
    PlainSeries plain;
    std::vector<SeriesSnapshot> snapshots; ///< of `data`, some of them old
};

void check(bool isRight, const char *what)
{
    if (!isRight)
        fail(what, {});
}

void appendNumbers(SSubject &subject, Bytes &bytes)
{
    const QVector<double> numbers = bytes.series(3000);
    PlainSeries kept;
    const bool isTaken = keepsAll(subject.type, numbers, kept);
    check(subject.data->append(numbers.constData(), numbers.size()) == isTaken, "taken or not");
    for (qint64 i = 0; isTaken && i < kept.size(); ++i)
        subject.plain.append(kept.at(i));
}

/// Many values at once, written in place.
void appendRun(SSubject &subject, Bytes &bytes)
{
    qint64 count = std::min(qint64(bytes.raw<quint32>() % 300'000), mostValues - subject.plain.size());
    const int factor = bytes.below(100);
    const int period = 1 + bytes.byte() % 120;
    while (count > 0) {
        const SRoom room = subject.data->room();
        const qint64 portion = std::min(count, room.count);
        check(portion > 0, "room");
        withSampleType(subject.type, [&](auto zero) {
            for (qint64 i = 0; i < portion; ++i) {
                const auto value = decltype(zero)((subject.plain.size() * factor) % period);
                std::memcpy(room.begin + i * qint64(sizeof value), &value, sizeof value);
                subject.plain.append(double(value));
            }
        });
        subject.data->publish(portion);
        count -= portion;
    }
}

bool isModerate(const SExtremes &extremes)
{
    return extremes.isEmpty() || (extremes.lowest > -1e100 && extremes.highest < 1e100);
}

void compareRange(const SeriesSnapshot &snapshot, const PlainSeries &plain, Bytes &bytes)
{
    const qint64 from = snapshot.begin() + qint64(bytes.raw<quint32>() % (quint64(snapshot.count()) + 1));
    const qint64 length = bytes.byte() < 250 ? qint64(bytes.raw<quint16>() % mostScanned) : mostValues;
    const qint64 to = from + length;
    const QByteArray complaint = isModerate(snapshot.extremesIn(from, to))
        ? plain.complaint(snapshot, from, to)
        : plain.extremesComplaint(snapshot, from, to);
    if (!complaint.isEmpty())
        fail("range", complaint);
}

void compareLowerBound(const SeriesSnapshot &snapshot, const PlainSeries &plain, Bytes &bytes)
{
    const double x = bytes.number();
    const qint64 from = snapshot.end() - std::min(snapshot.count(), qint64(bytes.raw<quint16>()));
    qint64 expected = from;
    while (expected < snapshot.end() && !(std::isfinite(plain.at(expected)) && plain.at(expected) >= x))
        ++expected;
    check(snapshot.lowerBound(x, from) == expected, "lower bound");
}

void dropSome(SSubject &subject, Bytes &bytes)
{
    const qint64 index = qint64(bytes.raw<quint32>() % mostValues);
    const qint64 before = subject.data->begin();
    subject.data->dropBefore(index);
    const qint64 whole = std::min(index, subject.plain.size()) >> 18 << 18;
    check(subject.data->begin() == std::max(before, whole), "beginning");
}

/// The same values in memory that isn't copied, aligned or not.
void showExternal(SSubject &subject, Bytes &bytes)
{
    const int shift = bytes.below(9);
    const qint64 count = std::min(subject.plain.size(), qint64(bytes.raw<quint32>() % 400'000));
    const auto memory = std::make_shared<std::vector<char>>(size_t(count * sizeOf(subject.type) + shift));
    withSampleType(subject.type, [&](auto zero) {
        for (qint64 i = 0; i < count; ++i) {
            const auto value = decltype(zero)(subject.plain.at(i));
            std::memcpy(memory->data() + shift + i * qint64(sizeof value), &value, sizeof value);
        }
    });
    subject.data = SeriesData::createOver(subject.type, memory->data() + shift, count, memory);
    subject.data->buildNow();
    subject.snapshots.clear();
    PlainSeries rest;
    for (qint64 i = 0; i < count; ++i)
        rest.append(subject.plain.at(i));
    subject.plain = rest;
}

void doSomething(SSubject &subject, Bytes &bytes)
{
    switch (bytes.below(8)) {
    case 0:
        if (!subject.data->isExternal() && subject.plain.size() < mostValues)
            appendNumbers(subject, bytes);
        break;
    case 1:
        if (!subject.data->isExternal())
            appendRun(subject, bytes);
        break;
    case 2:
        if (!subject.data->isExternal())
            dropSome(subject, bytes);
        break;
    case 3:
        subject.snapshots.push_back(subject.data->snapshot());
        break;
    case 4:
        if (!subject.snapshots.empty())
            subject.snapshots.erase(subject.snapshots.begin() + bytes.below(256) % qint64(subject.snapshots.size()));
        break;
    case 5:
        compareLowerBound(subject.data->snapshot(), subject.plain, bytes);
        break;
    case 6:
        if (bytes.byte() < 16)
            showExternal(subject, bytes);
        break;
    default:
        compareRange(subject.data->snapshot(), subject.plain, bytes);
        if (!subject.snapshots.empty())
            compareRange(subject.snapshots[bytes.byte() % subject.snapshots.size()], subject.plain, bytes);
    }
    check(subject.data->end() == subject.plain.size(), "count");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Bytes bytes(data, size);
    SSubject subject(SampleType(bytes.below(sampleTypeCount)));
    while (!bytes.atEnd())
        doSomething(subject, bytes);
    for (const SeriesSnapshot &snapshot : subject.snapshots)
        compareRange(snapshot, subject.plain, bytes);
    return 0;
}
