// SPDX-License-Identifier: MIT

// The search for the bars in view against a scan over all edges, for any widths.

#include "fuzz/Bytes.h"
#include "fuzz/Check.h"
#include "plotters/BarEdges.h"

namespace {

SBarRange scan(const QVector<double> &pairs, double left, double right)
{
    const int count = pairs.size() / 2;
    double x = 0.0;
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
    double total = 0.0;
    int bars = 0;
    const BarEdges edges = BarEdges::of(pairs, [&](double right, double value) {
        total += pairs.at(2 * bars);
        if (!equal(right, total) || !equal(value, pairs.at(2 * bars + 1)))
            fail("edge", QByteArray::number(bars));
        ++bars;
    });
    if (bars != pairs.size() / 2 || edges.barCount() != bars || !equal(edges.total(), total))
        fail("total", QByteArray::number(edges.total()));
    while (!bytes.atEnd()) {
        const double left = bytes.number() * (1 + bytes.below(100));
        const double right = bytes.number() * (1 + bytes.below(100));
        const SBarRange found = edges.barsBetween(left, right);
        const SBarRange expected = scan(pairs, left, right);
        if (found.first != expected.first || found.end != expected.end) {
            fail("range", QByteArray::number(found.first) + " to " + QByteArray::number(found.end) + " instead of "
                     + QByteArray::number(expected.first) + " to " + QByteArray::number(expected.end));
        }
    }
    return 0;
}
