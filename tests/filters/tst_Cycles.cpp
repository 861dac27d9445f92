// SPDX-License-Identifier: MIT

// Nodes that feed themselves come to an end.

#include "filters/Filter1D.h"
#include "tests/support/LogCatcher.h"

#include <QTest>

namespace {

/// Never content: every delivery makes something new of it, and publishes it twice, as a decimator does whose level
/// moves.
class Restless : public Filter1D
{
public:
    using Filter1D::Filter1D;
    ~Restless() override { withdraw(); }

    int deliveries = 0;

protected:
    bool _filter_func(const QVector<double> &) override
    {
        m_data = {double(++deliveries)};
        _request_data_update();
        return true;
    }
};

} // namespace

class tst_Cycles : public QObject
{
    Q_OBJECT

private slots:
    void aCycleEndsAndSaysSoOncePerNode();
    void aCycleThatDeliversTwiceEndsBeforeItsWorkExplodes();
    void whoPublishesManyTimesWithoutACycleIsNotHeldBack();
};

void tst_Cycles::aCycleEndsAndSaysSoOncePerNode()
{
    const LogCatcher log;
    Restless a;
    Restless b;
    a.addFilter(&b);
    b.addFilter(&a);
    for (int i = 0; i < 100; ++i)
        a.setData({double(i)});
    QVERIFY(log.count("the tree of nodes has a cycle") >= 1);
    QVERIFY(log.count("the tree of nodes has a cycle") <= 2);
}

void tst_Cycles::aCycleThatDeliversTwiceEndsBeforeItsWorkExplodes()
{
    const LogCatcher log;
    Restless nodes[3];
    for (int i = 0; i < 3; ++i)
        nodes[i].addFilter(&nodes[(i + 1) % 3]);
    nodes[0].deliveries = 0;
    nodes[0].setData({1.0});
    QVERIFY(nodes[0].deliveries > 1);
    QVERIFY2(nodes[0].deliveries < 10000, qPrintable(QString::number(nodes[0].deliveries)));
}

void tst_Cycles::whoPublishesManyTimesWithoutACycleIsNotHeldBack()
{
    const LogCatcher log;
    Filter1D source;
    Filter1D target;
    int received = 0;
    connect(&target, &Filter1D::dataChanged, [&] { ++received; });
    connect(&source, &Filter1D::dataChanged, [&] {
        for (int i = 1; i <= 5000; ++i)
            target.setData({double(i)});
    });
    source.setData({1.0});
    QCOMPARE(received, 5000);
    QCOMPARE(log.messages(), QStringList());
}

QTEST_GUILESS_MAIN(tst_Cycles)
#include "tst_Cycles.moc"
