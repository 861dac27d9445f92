// SPDX-License-Identifier: MIT
#include "common/Link.h"

#include <QVector>
#include <QtTest>

#include <memory>

namespace {

struct STarget
{
    Anchor &anchor() { return m_anchor; }
    int number = 0;
    Anchor m_anchor;
};

using Targets = LinkList<STarget, QVector<STarget *>>;

} // namespace

class tst_Link : public QObject
{
    Q_OBJECT

private slots:
    void aLinkBecomesNullWithItsTarget();
    void aLinkMayGoBeforeItsTarget();
    void aLinkPointsToTheLastTargetSet();
    void aTargetMayBeLinkedManyTimes();
    void aListDropsADestroyedTarget();
    void aListTakesNoNullAndNoDuplicate();
    void aListRemovesWhatIsThere();
    void aListReplacesItsTargets();
    void anAssignedListMayRepeatATarget();
    void aClearedListIsForgottenByItsTargets();
    void aListMayGoBeforeItsTargets();
    void sortingIsStable();
    void aCutAnchorMayBeLinkedAgain();
};

void tst_Link::aLinkBecomesNullWithItsTarget()
{
    Link<STarget> link;
    QVERIFY(!link);
    {
        STarget target;
        link.set(&target);
        QCOMPARE(link.get(), &target);
        QVERIFY(link);
    }
    QVERIFY(!link);
}

void tst_Link::aLinkMayGoBeforeItsTarget()
{
    STarget target;
    {
        Link<STarget> link;
        link.set(&target);
    }
    target.m_anchor.cut(); // touches nothing that is gone
    Link<STarget> link;
    link.set(&target);
    QCOMPARE(link.get(), &target);
}

void tst_Link::aLinkPointsToTheLastTargetSet()
{
    Link<STarget> link;
    STarget kept;
    {
        STarget replaced;
        link.set(&replaced);
        link.set(&kept);
    }
    QCOMPARE(link.get(), &kept);
    link.set(&kept);
    QCOMPARE(link.get(), &kept);
    link.set(nullptr);
    QVERIFY(!link);
}

void tst_Link::aTargetMayBeLinkedManyTimes()
{
    Link<STarget> links[3];
    Targets list;
    {
        STarget target;
        for (auto &link : links)
            link.set(&target);
        list.append(&target);
        links[1].set(nullptr);
    }
    for (const auto &link : links)
        QVERIFY(!link);
    QVERIFY(list.items().isEmpty());
}

void tst_Link::aListDropsADestroyedTarget()
{
    Targets list;
    STarget first;
    auto second = std::make_unique<STarget>();
    STarget third;
    list.append(&first);
    list.append(second.get());
    list.append(&third);
    const QVector<STarget *> before = list.items();
    second.reset();
    QCOMPARE(list.items(), (QVector<STarget *>{&first, &third}));
    QCOMPARE(before.size(), 3);
}

void tst_Link::aListTakesNoNullAndNoDuplicate()
{
    Targets list;
    STarget target;
    QVERIFY(!list.append(nullptr));
    QVERIFY(list.append(&target));
    QVERIFY(!list.append(&target));
    QCOMPARE(list.items(), QVector<STarget *>{&target});
    QVERIFY(list.contains(&target));
}

void tst_Link::aListRemovesWhatIsThere()
{
    Targets list;
    STarget target;
    QVERIFY(!list.remove(&target));
    QVERIFY(!list.remove(nullptr));
    list.append(&target);
    QVERIFY(list.remove(&target));
    QVERIFY(list.items().isEmpty());
    QVERIFY(!list.contains(&target));
}

void tst_Link::aListReplacesItsTargets()
{
    Targets list;
    STarget first, second, third;
    list.append(&first);
    list.append(&second);
    list.assign({&third, nullptr, &second});
    QCOMPARE(list.items(), (QVector<STarget *>{&third, &second}));
}

void tst_Link::anAssignedListMayRepeatATarget()
{
    Targets list;
    STarget once;
    {
        STarget twice;
        list.assign({&twice, &once, &twice});
        QCOMPARE(list.items(), (QVector<STarget *>{&twice, &once, &twice}));
        QVERIFY(list.remove(&twice));
        QCOMPARE(list.items(), (QVector<STarget *>{&once, &twice})); // still tied
    }
    QCOMPARE(list.items(), QVector<STarget *>{&once});
    {
        STarget twice;
        list.assign({&twice, &once, &twice});
    }
    QCOMPARE(list.items(), QVector<STarget *>{&once});
}

void tst_Link::aClearedListIsForgottenByItsTargets()
{
    Targets list;
    {
        STarget target;
        list.append(&target);
        list.clear();
        list.append(&target);
        list.remove(&target);
    }
    QVERIFY(list.items().isEmpty());
}

void tst_Link::aListMayGoBeforeItsTargets()
{
    STarget target;
    {
        Targets list;
        list.append(&target);
    }
    target.m_anchor.cut();
    Targets other;
    QVERIFY(other.append(&target));
}

void tst_Link::sortingIsStable()
{
    Targets list;
    STarget targets[4];
    const int numbers[] = {2, 1, 2, 1};
    for (int i = 0; i < 4; ++i) {
        targets[i].number = numbers[i];
        list.append(&targets[i]);
    }
    list.sort([](const STarget *a, const STarget *b) { return a->number < b->number; });
    QCOMPARE(list.items(), (QVector<STarget *>{&targets[1], &targets[3], &targets[0], &targets[2]}));
}

void tst_Link::aCutAnchorMayBeLinkedAgain()
{
    STarget target;
    Link<STarget> link;
    link.set(&target);
    target.m_anchor.cut();
    QVERIFY(!link);
    link.set(&target);
    QCOMPARE(link.get(), &target);
}

QTEST_APPLESS_MAIN(tst_Link)
#include "tst_Link.moc"
