// SPDX-License-Identifier: MIT
#include "filters/MovingAvarangeU64.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/RandomSeries.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

/// As it is defined. What is rounded is kept in variables, so that no compiler joins two operations into one.
QVector<double> plainAverage(const QVector<double> &in, int depth)
{
    const int size = in.size() + 2 * (depth - 1);
    QVector<double> out(size, 0.0);
    volatile double sum = depth * in.at(0);
    for (int i = 0; i < size; ++i) {
        int a = i - depth;
        if (a < 0)
            a = 0;
        if (a > in.size() - 1)
            a = in.size() - 1;
        int b = i + 1;
        if (b > in.size() - 1)
            b = in.size() - 1;
        sum = sum - in.at(a);
        sum = sum + in.at(b);
        out[i] = sum / depth;
    }
    return out;
}

QVector<double> average(const QVector<double> &in, int depth)
{
    MovingAvarangeU64 node;
    node.setDepth(depth);
    node.setData(in);
    return node.data();
}

} // namespace

class tst_MovingAvarangeU64 : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void oneValueIsRepeated();
    void theRequiredArithmetic();
    void itIsTheMeanOfTheWindowAtTheBeginning();
    void randomSeriesAreExact();
    void longSeriesAreExact();
    void everySeriesIsPublished();
    void anEmptySeriesPublishesNothing();
    void aNewDepthAppliesFromTheNextSeriesOn();
    void aDepthBelowOneIsOne();
    void aDepthThatIsTooLargeFailsThatOneCall();
    void theLargestDepthWorks();
};

void tst_MovingAvarangeU64::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = MovingAvarangeU64::staticMetaObject;
    QCOMPARE(meta.className(), "MovingAvarangeU64");
    QCOMPARE(ownProperties(meta), QStringList{QStringLiteral("depth int write depthChanged")});
    QCOMPARE(ownSignals(meta), QStringList{QStringLiteral("depthChanged()")});
}

void tst_MovingAvarangeU64::oneValueIsRepeated()
{
    MovingAvarangeU64 node;
    QCOMPARE(node.depth(), 16);
    node.setData({4.0});
    COMPARE_BITS(node.data(), QVector<double>(31, 4.0));
}

void tst_MovingAvarangeU64::theRequiredArithmetic()
{
    COMPARE_BITS(average({0.0, 0.0, 16.0}, 2), (QVector<double>{0.0, 8.0, 16.0, 24.0, 24.0}));
    COMPARE_BITS(average({1.0, 2.0, 3.0, 4.0}, 1), (QVector<double>{2.0, 4.0, 6.0, 7.0}));
}

void tst_MovingAvarangeU64::itIsTheMeanOfTheWindowAtTheBeginning()
{
    RandomSeries random(1);
    for (int round = 0; round < 300; ++round) {
        QVector<double> in; // whole numbers and depths of two: no rounding
        for (int i = random.whole(1, 40); i > 0; --i)
            in.append(random.whole(-100, 100));
        const int depth = 1 << random.whole(0, 5);
        const auto at = [&](int i) { return in.at(std::min(std::max(i, 0), in.size() - 1)); };
        const QVector<double> out = average(in, depth);
        for (int i = 0; i < out.size(); ++i) {
            double sum = i < depth ? 0.0 : -in.at(0);
            for (int k = i < depth ? i + 2 - depth : i + 1 - depth; k <= i + 1; ++k)
                sum += at(k);
            QCOMPARE(out.at(i), sum / depth);
        }
    }
}

void tst_MovingAvarangeU64::randomSeriesAreExact()
{
    RandomSeries random(2);
    for (int round = 0; round < 5000; ++round) {
        const QVector<double> in = random.series(random.size() + 1);
        const int depth = random.oneIn(3) ? random.whole(1, 6000) : random.whole(1, 40);
        COMPARE_BITS(average(in, depth), plainAverage(in, depth));
    }
}

void tst_MovingAvarangeU64::longSeriesAreExact()
{
    RandomSeries random(3);
    for (int round = 0; round < 20; ++round) {
        const QVector<double> in = random.series(random.whole(150'000, 250'000));
        const int depth = random.whole(1, 300'000);
        COMPARE_BITS(average(in, depth), plainAverage(in, depth));
    }
}

void tst_MovingAvarangeU64::everySeriesIsPublished()
{
    MovingAvarangeU64 node;
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    const QVector<double> series{1.0, 2.0};
    node.setData(series);
    const QVector<double> published = node.data();
    node.setData(series);
    QCOMPARE(changes.size(), 2);
    node.setData({5.0});
    COMPARE_BITS(published, plainAverage(series, 16)); // what was published is left alone
}

void tst_MovingAvarangeU64::anEmptySeriesPublishesNothing()
{
    MovingAvarangeU64 node;
    node.setData({4.0});
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData({});
    QCOMPARE(changes.size(), 0);
    QCOMPARE(node.data().size(), 31);
}

void tst_MovingAvarangeU64::aNewDepthAppliesFromTheNextSeriesOn()
{
    Filter1D parent;
    parent.setData({4.0});
    MovingAvarangeU64 node;
    parent.addFilter(&node);
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    QSignalSpy depthChanges(&node, &MovingAvarangeU64::depthChanged);
    node.setDepth(2);
    node.setDepth(2);
    QCOMPARE(depthChanges.size(), 1);
    QCOMPARE(changes.size(), 0);
    QCOMPARE(node.data().size(), 31);
    parent.setData({5.0});
    QCOMPARE(node.data().size(), 3);
}

void tst_MovingAvarangeU64::aDepthBelowOneIsOne()
{
    MovingAvarangeU64 node;
    QSignalSpy changes(&node, &MovingAvarangeU64::depthChanged);
    for (const int depth : {0, -1, std::numeric_limits<int>::min()}) {
        node.setDepth(depth);
        QCOMPARE(node.depth(), 1);
    }
    QCOMPARE(changes.size(), 1);
    node.setData({1.0, 2.0});
    QCOMPARE(node.data().size(), 2);
}

void tst_MovingAvarangeU64::aDepthThatIsTooLargeFailsThatOneCall()
{
    MovingAvarangeU64 node;
    node.setDepth(2);
    node.setData({1.0});
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    for (const int depth : {std::numeric_limits<int>::max(), MovingAvarangeU64::maximumDepth + 1}) {
        node.setDepth(depth);
        QCOMPARE(node.depth(), depth);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("MovingAvarangeU64.*depth")));
        node.setData({2.0});
    }
    QCOMPARE(changes.size(), 0);
    COMPARE_BITS(node.data(), QVector<double>(3, 1.0));
    node.setDepth(2);
    node.setData({2.0});
    COMPARE_BITS(node.data(), QVector<double>(3, 2.0));
}

void tst_MovingAvarangeU64::theLargestDepthWorks()
{
    MovingAvarangeU64 node;
    node.setDepth(MovingAvarangeU64::maximumDepth);
    node.setData({2.0});
    QCOMPARE(node.data().size(), 2 * MovingAvarangeU64::maximumDepth - 1);
    QCOMPARE(node.data().last(), 2.0);
}

QTEST_GUILESS_MAIN(tst_MovingAvarangeU64)
#include "tst_MovingAvarangeU64.moc"
