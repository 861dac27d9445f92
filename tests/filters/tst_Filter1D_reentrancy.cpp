// SPDX-License-Identifier: MIT
#include "filters/Filter1D.h"
#include "filters/FixedDecimatorU64.h"
#include "filters/MinimalWidth2D.h"
#include "filters/MovingAvarangeU64.h"
#include "tests/support/Bits.h"
#include "tests/support/RecordingPlotter.h"

#include <QRegularExpression>
#include <QtTest>

#include <memory>

// Handlers that change or destroy what is just being published. Run under the address sanitizer these tests say whether
// anything is touched after its end.

namespace {

/// A root with three children and two plotters, all on the heap.
struct STree
{
    STree()
    {
        for (auto &child : children)
            root->addFilter(child.get());
        for (auto &plotter : plotters)
            root->addPlotter(plotter.get());
    }

    std::unique_ptr<Filter1D> root = std::make_unique<Filter1D>();
    std::unique_ptr<Filter1D> children[3] = {std::make_unique<Filter1D>(), std::make_unique<Filter1D>(),
                                             std::make_unique<Filter1D>()};
    std::unique_ptr<RecordingPlotter> plotters[2] = {std::make_unique<RecordingPlotter>(),
                                                     std::make_unique<RecordingPlotter>()};
};

const QVector<double> first{1.0, 2.0};
const QVector<double> second{3.0, 4.0, 5.0};

} // namespace

class tst_Filter1D_reentrancy : public QObject
{
    Q_OBJECT

private slots:
    void aDestroyedChildIsForgotten();
    void aDestroyedPlotterIsForgotten();
    void aDestroyedParentIsForgotten();

    void aChildMayDestroyItself();
    void aChildMayDestroyTheNextOne();
    void aChildMayDestroyAnEarlierOne();
    void aChildMayDestroyItsParent();
    void aChildMayDestroyAPlotter();
    void aPlotterMayDestroyItself();
    void aPlotterMayDestroyTheNode();
    void aNodeMayDestroyItselfWhenItHasPublished();
    void aNewChildMayDestroyItsParent();
    void aNewPlotterMayDestroyTheNode();
    void areasSurviveTheSame();

    void aRemovedSiblingIsNotFed();
    void aChildThatIsAddedMeanwhileIsFedOnce();
    void aNewerSeriesReplacesTheOneBeingPublished();
    void aNewerAreaReplacesTheOneBeingSpread();
    void theSeriesPassedInMayBeTheNodesOwn();

    void aCycleOfPassThroughsEnds();
    void aCycleThatAlwaysPublishesIsCutOff();
    void aNodeThatIsItsOwnChildIsCutOff();
    void aHandlerThatAlwaysChangesTheDataIsCutOff();
    void aNodePublishesAgainAfterACutOff();

    void filtersMayDieWhileTheyFilterAgain();
};

void tst_Filter1D_reentrancy::aDestroyedChildIsForgotten()
{
    STree tree;
    tree.children[1].reset();
    tree.root->setData(first);
    tree.root->setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    COMPARE_BITS(tree.children[2]->data(), first);
    QCOMPARE(tree.children[2]->area(), QRectF(0.0, 0.0, 1.0, 1.0));
}

void tst_Filter1D_reentrancy::aDestroyedPlotterIsForgotten()
{
    STree tree;
    tree.plotters[0].reset();
    tree.root->setData(first);
    COMPARE_BITS(tree.plotters[1]->series.last(), first);
    QCOMPARE(tree.root->plotters(), QVector<IPlotter1D *>{tree.plotters[1].get()});
}

void tst_Filter1D_reentrancy::aDestroyedParentIsForgotten()
{
    auto parent = std::make_unique<Filter1D>();
    FixedDecimatorU64 child;
    parent->addFilter(&child);
    parent.reset();
    child.setNumPoint(7); // filters its parent's series again, if there is one
    QCOMPARE(child.data().size(), 7);
}

void tst_Filter1D_reentrancy::aChildMayDestroyItself()
{
    STree tree;
    connect(tree.children[1].get(), &Filter1D::dataChanged, this, [&] { tree.children[1].reset(); });
    tree.root->setData(first);
    QVERIFY(!tree.children[1]);
    COMPARE_BITS(tree.children[2]->data(), first);
    COMPARE_BITS(tree.plotters[1]->series.last(), first);
}

void tst_Filter1D_reentrancy::aChildMayDestroyTheNextOne()
{
    STree tree;
    connect(tree.children[0].get(), &Filter1D::dataChanged, this, [&] { tree.children[1].reset(); });
    tree.root->setData(first);
    COMPARE_BITS(tree.children[2]->data(), first);
}

void tst_Filter1D_reentrancy::aChildMayDestroyAnEarlierOne()
{
    STree tree;
    connect(tree.children[1].get(), &Filter1D::dataChanged, this, [&] { tree.children[0].reset(); });
    tree.root->setData(first);
    COMPARE_BITS(tree.children[2]->data(), first);
}

void tst_Filter1D_reentrancy::aChildMayDestroyItsParent()
{
    STree tree;
    connect(tree.children[1].get(), &Filter1D::dataChanged, this, [&] { tree.root.reset(); });
    tree.root->setData(first);
    QVERIFY(!tree.root);
    COMPARE_BITS(tree.children[0]->data(), first);
    QVERIFY(tree.children[2]->data().isEmpty());
    QCOMPARE(tree.plotters[0]->series.size(), 1); // of the time it was added
}

void tst_Filter1D_reentrancy::aChildMayDestroyAPlotter()
{
    STree tree;
    connect(tree.children[1].get(), &Filter1D::dataChanged, this, [&] { tree.plotters[0].reset(); });
    tree.root->setData(first);
    COMPARE_BITS(tree.plotters[1]->series.last(), first);
}

void tst_Filter1D_reentrancy::aPlotterMayDestroyItself()
{
    STree tree;
    tree.plotters[0]->onData = [&] { tree.plotters[0].reset(); };
    tree.root->setData(first);
    QVERIFY(!tree.plotters[0]);
    COMPARE_BITS(tree.plotters[1]->series.last(), first);
}

void tst_Filter1D_reentrancy::aPlotterMayDestroyTheNode()
{
    STree tree;
    tree.plotters[0]->onData = [&] { tree.root.reset(); };
    tree.root->setData(first);
    QVERIFY(!tree.root);
    QCOMPARE(tree.plotters[1]->series.size(), 1);
}

void tst_Filter1D_reentrancy::aNodeMayDestroyItselfWhenItHasPublished()
{
    STree tree;
    connect(tree.root.get(), &Filter1D::dataChanged, this, [&] { tree.root.reset(); });
    tree.root->setData(first);
    QVERIFY(!tree.root);
    COMPARE_BITS(tree.plotters[1]->series.last(), first);
}

void tst_Filter1D_reentrancy::aNewChildMayDestroyItsParent()
{
    for (const auto changed : {&Filter1D::dataIDChanged, &Filter1D::areaChanged, &Filter1D::dataChanged}) {
        auto root = std::make_unique<Filter1D>();
        root->setData(first);
        root->setArea(QRectF(0.0, 0.0, 1.0, 1.0));
        Filter1D child;
        connect(&child, changed, this, [&] { root.reset(); });
        root->addFilter(&child);
        QVERIFY(!root);

        root = std::make_unique<Filter1D>();
        root->setData(first);
        root->setArea(QRectF(0.0, 0.0, 1.0, 1.0));
        auto mortal = std::make_unique<Filter1D>();
        connect(mortal.get(), changed, this, [&] { mortal.reset(); });
        root->addFilter(mortal.get());
        QVERIFY(!mortal);
        root->setData(second);
    }
}

void tst_Filter1D_reentrancy::aNewPlotterMayDestroyTheNode()
{
    for (const bool byArea : {true, false}) {
        auto root = std::make_unique<Filter1D>();
        RecordingPlotter plotter;
        (byArea ? plotter.onArea : plotter.onData) = [&] { root.reset(); };
        root->addPlotter(&plotter);
        QVERIFY(!root);

        Filter1D node;
        auto mortal = std::make_unique<RecordingPlotter>();
        (byArea ? mortal->onArea : mortal->onData) = [&] { mortal.reset(); };
        node.addPlotter(mortal.get());
        QVERIFY(!mortal);
        node.setData(first);
    }
}

void tst_Filter1D_reentrancy::areasSurviveTheSame()
{
    const QRectF area(0.0, 0.0, 1.0, 1.0);
    {
        STree tree;
        connect(tree.children[0].get(), &Filter1D::areaChanged, this, [&] {
            tree.children[1].reset();
            tree.children[0].reset();
            tree.plotters[0].reset();
        });
        tree.root->setArea(area);
        QCOMPARE(tree.children[2]->area(), area);
        QCOMPARE(tree.plotters[1]->areas.last(), area);
    }
    {
        STree tree;
        connect(tree.children[1].get(), &Filter1D::areaChanged, this, [&] { tree.root.reset(); });
        tree.root->setArea(area);
        QVERIFY(tree.children[2]->area().isNull());
    }
    {
        STree tree;
        tree.plotters[0]->onArea = [&] { tree.root.reset(); };
        tree.root->setArea(area);
        QCOMPARE(tree.plotters[1]->areas.size(), 1);
    }
    {
        STree tree; // the area passed in belongs to a child that dies of it
        tree.children[0]->setArea(area);
        connect(tree.children[1].get(), &Filter1D::areaChanged, this, [&] { tree.children[0].reset(); });
        tree.root->setArea(tree.children[0]->area());
        QCOMPARE(tree.children[2]->area(), area);
    }
}

void tst_Filter1D_reentrancy::aRemovedSiblingIsNotFed()
{
    STree tree;
    connect(tree.children[0].get(), &Filter1D::dataChanged, this, [&] {
        tree.root->removeFilter(tree.children[1].get());
        tree.root->removePlotter(tree.plotters[0].get());
    });
    tree.root->setData(first);
    QVERIFY(tree.children[1]->data().isEmpty());
    COMPARE_BITS(tree.children[2]->data(), first);
    QCOMPARE(tree.plotters[0]->series.size(), 1);
    COMPARE_BITS(tree.plotters[1]->series.last(), first);
}

void tst_Filter1D_reentrancy::aChildThatIsAddedMeanwhileIsFedOnce()
{
    STree tree;
    Filter1D late;
    RecordingPlotter plotter;
    late.addPlotter(&plotter);
    connect(tree.children[0].get(), &Filter1D::dataChanged, this, [&] { tree.root->addFilter(&late); });
    tree.root->setData(first);
    COMPARE_BITS(late.data(), first);
    QCOMPARE(plotter.series.size(), 2); // empty when added, then once
}

void tst_Filter1D_reentrancy::aNewerSeriesReplacesTheOneBeingPublished()
{
    STree tree;
    int signalled = 0;
    connect(tree.root.get(), &Filter1D::dataChanged, this, [&] { ++signalled; });
    connect(tree.children[1].get(), &Filter1D::dataChanged, this, [&] { tree.root->setData(second); });
    tree.root->setData(first);
    for (const auto &child : tree.children)
        COMPARE_BITS(child->data(), second);
    for (const auto &plotter : tree.plotters) {
        COMPARE_BITS(plotter->series.last(), second);
        QVERIFY(!plotter->series.contains(first));
    }
    QCOMPARE(signalled, 2);
}

void tst_Filter1D_reentrancy::aNewerAreaReplacesTheOneBeingSpread()
{
    STree tree;
    const QRectF newer(0.0, 0.0, 2.0, 2.0);
    connect(tree.children[1].get(), &Filter1D::areaChanged, this, [&] { tree.root->setArea(newer); });
    tree.root->setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    QCOMPARE(tree.root->area(), newer);
    for (const auto &child : tree.children)
        QCOMPARE(child->area(), newer);
    for (const auto &plotter : tree.plotters)
        QCOMPARE(plotter->areas.last(), newer);
}

void tst_Filter1D_reentrancy::theSeriesPassedInMayBeTheNodesOwn()
{
    MovingAvarangeU64 average;
    average.setDepth(1);
    average.setData({1.0, 2.0, 3.0, 4.0});
    average.setData(average.data()); // [2, 4, 6, 7] averaged again
    COMPARE_BITS(average.data(), (QVector<double>{4.0, 8.0, 11.0, 12.0}));

    MinimalWidth2D merger;
    merger.setData({2.0, 1.0, 3.0, 4.0});
    merger.setData(merger.data());
    COMPARE_BITS(merger.data(), (QVector<double>{2.0, 1.0, 3.0, 4.0}));
}

void tst_Filter1D_reentrancy::aCycleOfPassThroughsEnds()
{
    Filter1D a, b;
    a.addFilter(&b);
    b.addFilter(&a);
    a.setData(first);
    a.setArea(QRectF(0.0, 0.0, 1.0, 1.0));
    COMPARE_BITS(b.data(), first);
    QCOMPARE(b.area(), a.area());
}

void tst_Filter1D_reentrancy::aCycleThatAlwaysPublishesIsCutOff()
{
    Filter1D a;
    MovingAvarangeU64 b;
    b.setDepth(2);
    a.addFilter(&b);
    b.addFilter(&a);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cycle")));
    a.setData(first);
    QVERIFY(a.data().size() > first.size());
}

void tst_Filter1D_reentrancy::aNodeThatIsItsOwnChildIsCutOff()
{
    MovingAvarangeU64 node;
    node.setData({1.0});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cycle")));
    node.addFilter(&node);
}

void tst_Filter1D_reentrancy::aHandlerThatAlwaysChangesTheDataIsCutOff()
{
    Filter1D node;
    connect(&node, &Filter1D::dataChanged, this, [&] { node.setData({node.data().first() + 1.0}); });
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("handler")));
    node.setData({1.0});
    QVERIFY(node.data().first() > 2.0);
}

void tst_Filter1D_reentrancy::aNodePublishesAgainAfterACutOff()
{
    Filter1D node;
    RecordingPlotter plotter;
    node.addPlotter(&plotter);
    const auto connection =
        connect(&node, &Filter1D::dataChanged, this, [&] { node.setData({node.data().first() + 1.0}); });
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("handler")));
    node.setData({1.0});
    disconnect(connection);
    QSignalSpy changes(&node, &Filter1D::dataChanged);
    node.setData(second);
    QCOMPARE(changes.size(), 1);
    COMPARE_BITS(plotter.series.last(), second);
}

void tst_Filter1D_reentrancy::filtersMayDieWhileTheyFilterAgain()
{
    Filter1D root;
    root.setData({1.0, 2.0, 3.0, 4.0});
    root.setArea(QRectF(0.0, 0.0, 1.0, 1.0));

    auto fixed = std::make_unique<FixedDecimatorU64>();
    root.addFilter(fixed.get());
    connect(fixed.get(), &Filter1D::dataChanged, this, [&] { fixed.reset(); });
    fixed->setNumPoint(2);
    QVERIFY(!fixed);

    auto merger = std::make_unique<MinimalWidth2D>();
    root.addFilter(merger.get());
    connect(merger.get(), &Filter1D::dataChanged, this, [&] { merger.reset(); });
    merger->setMergeWidth(5.0);
    QVERIFY(!merger);
}

QTEST_GUILESS_MAIN(tst_Filter1D_reentrancy)
#include "tst_Filter1D_reentrancy.moc"
