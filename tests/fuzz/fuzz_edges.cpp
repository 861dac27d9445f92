// SPDX-License-Identifier: MIT

// The search for the bars in view against a scan over all edges, for any widths.

#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "geometry/BarEdges.h"

namespace {

SIndexRange scan(const QVector<double> &pairs, double start, double left, double right)
{
    const int count = pairs.size() / 2;
    double x = start;
    int k = 0;
    while (left > x && k < count)
        x += pairs.at(2 * k++);
    const int first = k > 0 ? k - 1 : 0;
    while (right > x && k < count)
        x += pairs.at(2 * k++);
    return {first, k};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Bytes bytes(data, size);
    QVector<double> pairs = bytes.series(2000);
    for (int doublings = bytes.below(4); doublings > 0; --doublings)
        pairs += pairs;
    const double start = bytes.number();
    double total = start;
    double largest = 0.0;
    int bars = 0;
    const BarEdges edges = BarEdges::of(pairs, start);
    for (; bars < pairs.size() / 2; ++bars) {
        if (!equal(edges.edge(bars), total))
            fail("edge", QByteArray::number(bars));
        total += pairs.at(2 * bars);
        const double value = pairs.at(2 * bars + 1);
        largest = value > largest ? value : largest;
    }
    if (bars != pairs.size() / 2 || edges.barCount() != bars || !equal(edges.total(), total))
        fail("total", QByteArray::number(edges.total()));
    if (!equal(edges.maximumIn(0, bars), largest))
        fail("maximum", QByteArray::number(edges.maximumIn(0, bars)));
    while (!bytes.atEnd()) {
        const double left = bytes.number() * (1 + bytes.below(100));
        const double right = bytes.number() * (1 + bytes.below(100));
        const SIndexRange found = edges.barsBetween(left, right);
        const SIndexRange expected = scan(pairs, start, left, right);
        if (found.first != expected.first || found.end != expected.end) {
            fail("range",
                 QByteArray::number(found.first) + " to " + QByteArray::number(found.end) + " instead of "
                     + QByteArray::number(expected.first) + " to " + QByteArray::number(expected.end));
        }
    }
    return 0;
}
