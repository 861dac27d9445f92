// SPDX-License-Identifier: MIT
#include "common/Extent.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <algorithm>
#include <limits>
#include <vector>

class tst_Extent : public QObject
{
    Q_OBJECT

private slots:
    void isThatOfEveryValue();
};

void tst_Extent::isThatOfEveryValue()
{
    RandomSeries random(1);
    for (int count = 1; count < 70; ++count) {
        std::vector<double> values;
        for (int i = 0; i < count; ++i)
            values.push_back(random.oneIn(30) ? std::numeric_limits<double>::infinity() : random.real(-1.0, 1.0));
        for (int turn = 0; turn < 3; ++turn) {
            const SExtent extent = extentOf(values.data(), count);
            const auto found = std::minmax_element(values.begin(), values.end());
            QCOMPARE(extent.lowest, *found.first);
            QCOMPARE(extent.highest, *found.second);
            std::reverse(values.begin(), values.end());
        }
    }
}

QTEST_APPLESS_MAIN(tst_Extent)
#include "tst_Extent.moc"
