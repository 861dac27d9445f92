// SPDX-License-Identifier: MIT
#include "common/Change.h"
#include "common/Compare.h"

#include <QtTest>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_Compare : public QObject
{
    Q_OBJECT

private slots:
    void doublesAreEqualWithinOnePartInAMillionMillion_data();
    void doublesAreEqualWithinOnePartInAMillionMillion();
    void rectanglesAreEqualInEveryComponent();
    void changeStoresOnlyWhatDiffers();
    void changeKeepsTheStoredValueWhenFuzzilyEqual();
    void changeComparesOtherTypesExactly();
};

void tst_Compare::doublesAreEqualWithinOnePartInAMillionMillion_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<bool>("equal");

    QTest::newRow("same") << 1.0 << 1.0 << true;
    QTest::newRow("just inside") << 1.0 << 1.0 + 0.9e-12 << true;
    QTest::newRow("just outside") << 1.0 << 1.0 + 1.1e-12 << false;
    QTest::newRow("relative to the size") << 1e20 << 1e20 + 1e6 << true;
    QTest::newRow("opposite signs") << 1e-300 << -1e-300 << false;
    QTest::newRow("zeros of both signs") << 0.0 << -0.0 << true;
    QTest::newRow("zero equals only a zero") << 0.0 << std::numeric_limits<double>::denorm_min() << false;
    QTest::newRow("infinity is itself") << infinity << infinity << true;
    QTest::newRow("opposite infinities") << infinity << -infinity << false;
    QTest::newRow("infinity and a number") << infinity << 1e308 << false;
    QTest::newRow("the same NaN") << notANumber << notANumber << true;
    QTest::newRow("NaN and a number") << notANumber << 1.0 << false;
}

void tst_Compare::doublesAreEqualWithinOnePartInAMillionMillion()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(bool, equal);
    QCOMPARE(fuzzyEqual(a, b), equal);
    QCOMPARE(fuzzyEqual(b, a), equal);
}

void tst_Compare::rectanglesAreEqualInEveryComponent()
{
    const QRectF rect(1.0, 2.0, 3.0, 4.0);
    constexpr double tiny = 1e-13;
    constexpr double small = 1e-11;
    QVERIFY(fuzzyEqual(rect, QRectF(1.0 + tiny, 2.0 - tiny, 3.0 + tiny, 4.0 - tiny)));
    QVERIFY(!fuzzyEqual(rect, QRectF(1.0 + small, 2.0, 3.0, 4.0)));
    QVERIFY(!fuzzyEqual(rect, QRectF(1.0, 2.0 + small, 3.0, 4.0)));
    QVERIFY(!fuzzyEqual(rect, QRectF(1.0, 2.0, 3.0 + small, 4.0)));
    QVERIFY(!fuzzyEqual(rect, QRectF(1.0, 2.0, 3.0, 4.0 + small)));
    QVERIFY(fuzzyEqual(QRectF(0.0, 0.0, infinity, notANumber), QRectF(0.0, 0.0, infinity, notANumber)));
}

void tst_Compare::changeStoresOnlyWhatDiffers()
{
    int stored = 3;
    QVERIFY(!change(stored, 3));
    QVERIFY(change(stored, 4));
    QCOMPARE(stored, 4);
    QString text = QStringLiteral("a");
    QVERIFY(!change(text, QStringLiteral("a")));
    QVERIFY(change(text, QStringLiteral("A")));
    QCOMPARE(text, QStringLiteral("A"));
}

void tst_Compare::changeKeepsTheStoredValueWhenFuzzilyEqual()
{
    double stored = 1.0;
    QVERIFY(!change(stored, 1.0 + 1e-13));
    QVERIFY(stored == 1.0);
    QRectF rect(0.0, 0.0, 1.0, 1.0);
    QVERIFY(!change(rect, QRectF(0.0, 0.0, 1.0 + 1e-13, 1.0)));
    QVERIFY(rect.width() == 1.0);
    QVERIFY(change(rect, QRectF(0.0, 0.0, 1.5, 1.0)));
    QVERIFY(rect.width() == 1.5);
}

void tst_Compare::changeComparesOtherTypesExactly()
{
    float stored = 1.0f;
    QVERIFY(change(stored, 1.0f + 1e-6f));
}

QTEST_APPLESS_MAIN(tst_Compare)
#include "tst_Compare.moc"
