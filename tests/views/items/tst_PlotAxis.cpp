// SPDX-License-Identifier: MIT
#include "views/items/AxisLook.h"
#include "views/items/LogValueAxis.h"
#include "views/items/ValueAxis.h"

#include <QMetaProperty>
#include <QtTest>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
const QRegularExpression anyWarning(QStringLiteral(".*"));

} // namespace

class tst_PlotAxis : public QObject
{
    Q_OBJECT

private slots:
    void everyPropertyTellsOfItsChange();
    void anEndThatWasSetIsHome();
    void aSetEndNoLongerFollows();
    void anUndefinedEndFollowsAgain();
    void anEndThatPassesTheOtherPushesIt();
    void badEndsChangeNothing();
    void logEndsAreAboveZero();
    void oneSignalForBothEnds();
    void limitsHoldTheRange();
    void aSwitchOfTheScaleMendsTheRange();
    void aTimeAxisComesFromItsProperties();
    void whatLiesBeyondAllDatesIsSaid();
    void headingsAndValues();
    void valuesAreAsPreciseAsAPixel();
    void hostileValues();
};

void tst_PlotAxis::everyPropertyTellsOfItsChange()
{
    ValueAxis axis;
    const QHash<QByteArray, QVariant> others{
        {"min", -4.0},           {"max", 9.0},          {"autoRange", false},   {"titleText", "t"},
        {"unit", "u"},           {"tickInterval", 2.5}, {"subTickCount", 3},    {"labelFormat", "%.1f"},
        {"timeFormat", "hh:mm"}, {"startTime", 1e9},    {"gridVisible", false}, {"labelsVisible", false},
        {"lowerLimit", -100.0},  {"upperLimit", 100.0}, {"logScale", true}};
    const QMetaObject *meta = axis.metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        QVERIFY2(property.hasNotifySignal(), property.name());
        QVERIFY2(others.contains(property.name()), property.name());
        QSignalSpy spy(&axis, QByteArray("2" + property.notifySignal().methodSignature()).constData());
        QVERIFY(property.write(&axis, others[property.name()]));
        QVERIFY2(spy.size() == 1, property.name());
        QCOMPARE(property.read(&axis), others[property.name()]);
        property.write(&axis, others[property.name()]);
        QVERIFY2(spy.size() == 1, property.name());
    }
}

void tst_PlotAxis::anEndThatWasSetIsHome()
{
    ValueAxis axis;
    axis.setMin(0.0);
    axis.setRange(5.0, 6.0);
    QCOMPARE(axis.range(), (SAxisRange{5.0, 6.0}));
    QCOMPARE(axis.home({-3.0, 40.0}), (SAxisRange{0.0, 40.0}));
    axis.setMax(10.0);
    axis.setRange(2.0, 3.0);
    QCOMPARE(axis.home({-3.0, 40.0}), (SAxisRange{0.0, 10.0})); // where it was set, not where the zoom stood
    axis.setMax(-1.0);
    QVERIFY(axis.home({}).min < axis.home({}).max);
}

void tst_PlotAxis::aSetEndNoLongerFollows()
{
    ValueAxis axis;
    QVERIFY(axis.followsMin() && axis.followsMax());
    QSignalSpy rules(&axis, &PlotAxis::rulesChanged);
    axis.setMin(2.0);
    QVERIFY(!axis.followsMin() && axis.followsMax());
    QCOMPARE(rules.size(), 1);
    axis.setAutoRange(false);
    QVERIFY(!axis.followsMax());
}

void tst_PlotAxis::anUndefinedEndFollowsAgain()
{
    ValueAxis axis;
    axis.setMin(2.0);
    const QMetaObject *meta = axis.metaObject();
    QVERIFY(meta->property(meta->indexOfProperty("min")).reset(&axis));
    QVERIFY(axis.followsMin());
}

void tst_PlotAxis::anEndThatPassesTheOtherPushesIt()
{
    ValueAxis axis;
    axis.setMin(10.0); // the max of 1 gives way
    QCOMPARE(axis.range(), (SAxisRange{10.0, 11.0}));
    axis.setMax(-5.0);
    QCOMPARE(axis.range(), (SAxisRange{-6.0, -5.0}));
    axis.setMin(-5.0);
    QVERIFY(axis.min() < axis.max());
    LogValueAxis log;
    log.setMin(1000.0);
    QCOMPARE(log.min(), 1000.0);
    QVERIFY(qFuzzyCompare(log.max(), 10000.0));
}

void tst_PlotAxis::badEndsChangeNothing()
{
    ValueAxis axis;
    axis.setRange(1.0, 2.0);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("min can't be nan")));
    axis.setMin(notANumber);
    axis.setMax(notANumber); // said once
    axis.setRange(notANumber, notANumber);
    QCOMPARE(axis.range(), (SAxisRange{1.0, 2.0}));
    QVERIFY(axis.followsMin() && axis.followsMax());
    axis.setMax(infinite);
    QCOMPARE(axis.max(), farthestEnd);
    axis.setMin(-infinite);
    QCOMPARE(axis.min(), -farthestEnd);
    QVERIFY(axis.mapping(0.0, 100.0).isValid());
}

void tst_PlotAxis::logEndsAreAboveZero()
{
    LogValueAxis axis;
    QVERIFY(axis.isLog());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("min can't be 0 on a log scale")));
    axis.setMin(0.0);
    axis.setMin(-7.0);
    QCOMPARE(axis.range(), (SAxisRange{1.0, 10.0}));
    axis.setRange(-1.0, 100.0);
    QCOMPARE(axis.range(), (SAxisRange{1.0, 100.0}));
}

void tst_PlotAxis::oneSignalForBothEnds()
{
    ValueAxis axis;
    QSignalSpy ranges(&axis, &PlotAxis::rangeChanged);
    axis.setRange(3.0, 4.0);
    QCOMPARE(ranges.size(), 1);
    axis.setRange(3.0, 4.0);
    QCOMPARE(ranges.size(), 1);
    axis.setRange(3.0, 4.0000000000000009); // a digit counts
    QCOMPARE(ranges.size(), 2);
}

void tst_PlotAxis::limitsHoldTheRange()
{
    ValueAxis axis;
    axis.setRange(-10.0, 10.0);
    axis.setLowerLimit(0.0);
    QCOMPARE(axis.range(), (SAxisRange{0.0, 20.0}));
    axis.setUpperLimit(15.0);
    QCOMPARE(axis.range(), (SAxisRange{0.0, 15.0}));
    axis.setRange(14.0, 19.0);
    QCOMPARE(axis.range(), (SAxisRange{10.0, 15.0}));
    axis.setUpperLimit(notANumber);
    axis.setRange(14.0, 19.0);
    QCOMPARE(axis.range(), (SAxisRange{14.0, 19.0}));
}

void tst_PlotAxis::aSwitchOfTheScaleMendsTheRange()
{
    ValueAxis axis;
    axis.setRange(-5.0, 1000.0);
    QSignalSpy ranges(&axis, &PlotAxis::rangeChanged);
    axis.setLog(true);
    QCOMPARE(ranges.size(), 1);
    QCOMPARE(axis.range(), (SAxisRange{1.0, 1000.0}));
    QVERIFY(axis.mapping(0.0, 100.0).isValid());
    axis.setLog(false);
    axis.setRange(-5.0, -1.0);
    axis.setLog(true);
    QVERIFY(axis.mapping(0.0, 100.0).isValid());
}

void tst_PlotAxis::aTimeAxisComesFromItsProperties()
{
    ValueAxis axis;
    QVERIFY(!axis.isTime());
    axis.setStoreStartTime(100.0);
    QVERIFY(axis.isTime());
    QCOMPARE(axis.effectiveStartTime(), 100.0);
    axis.setStartTime(200.0);
    QCOMPARE(axis.effectiveStartTime(), 200.0);
    axis.setStartTime(notANumber);
    axis.setStoreStartTime(notANumber);
    QVERIFY(!axis.isTime());
    axis.setTimeFormat(QStringLiteral("hh:mm"));
    QVERIFY(axis.isTime());
    QCOMPARE(axis.effectiveStartTime(), 0.0);
    axis.setLog(true);
    QVERIFY(!axis.isTime());
}

/// Most often it's milliseconds that were taken for seconds.
void tst_PlotAxis::whatLiesBeyondAllDatesIsSaid()
{
    const SLabelSpace space{7.0, 14.0};
    const QRegularExpression words(QStringLiteral("is outside the range of dates, so the axis shows seconds"));
    ValueAxis axis;
    axis.setStartTime(0.0);
    axis.setRange(1.7e9, 1.8e9);
    QVERIFY(!axis.isBeyondDates());
    QTest::ignoreMessage(QtWarningMsg, words);
    axis.setRange(1.7e12, 1.8e12);
    QVERIFY(axis.isBeyondDates());
    SAxisLook look = axisLook(axis, axis.mapping(0.0, 1000.0), 80.0, space);
    QCOMPARE(look.base, QStringLiteral("s, outside the range of dates"));
    axis.setRange(1.7e9, 1.8e9);
    look = axisLook(axis, axis.mapping(0.0, 1000.0), 80.0, space);
    QVERIFY2(look.base.isEmpty(), qPrintable(look.base));

    ValueAxis other;
    QTest::ignoreMessage(QtWarningMsg, words);
    other.setStartTime(1.7e12);
    ValueAxis plain;
    plain.setRange(1.7e12, 1.8e12);
    QVERIFY(!plain.isBeyondDates());
    look = axisLook(plain, plain.mapping(0.0, 1000.0), 80.0, space);
    QVERIFY(look.base.isEmpty());
}

void tst_PlotAxis::headingsAndValues()
{
    ValueAxis axis;
    QCOMPARE(axis.heading(), QString());
    axis.setUnit(QStringLiteral("keV"));
    QCOMPARE(axis.heading(), QStringLiteral("keV"));
    axis.setTitleText(QStringLiteral("energy"));
    QCOMPARE(axis.heading(), QStringLiteral("energy (keV)"));
    QCOMPARE(axis.valueText(12.5, 0.1), QStringLiteral("12.5\u00a0keV"));
    axis.setLabelFormat(QStringLiteral("%.3f"));
    QCOMPARE(axis.valueText(12.5, 0.1), QStringLiteral("12.500\u00a0keV"));
    axis.setStartTime(0.0);
    QCOMPARE(axis.heading(), QStringLiteral("energy"));
    QCOMPARE(axis.valueText(61.0, 1.0), QStringLiteral("1970-01-01 00:01:01"));
}

void tst_PlotAxis::valuesAreAsPreciseAsAPixel()
{
    ValueAxis axis;
    QCOMPARE(axis.valueText(123.456789, 1.0), QStringLiteral("123.5"));
    QCOMPARE(axis.valueText(1e9 + 0.25, 0.01), QStringLiteral("1.00000000025G"));
    QCOMPARE(axis.valueText(0.0, 0.0), QStringLiteral("0"));
    QCOMPARE(axis.valueText(notANumber, 1.0), QStringLiteral("–"));
}

void tst_PlotAxis::hostileValues()
{
    ValueAxis linear;
    LogValueAxis log;
    const double values[] = {0.0,      -0.0,      1e-310,     -1e-310, 1e308, -1e308,
                             infinite, -infinite, notANumber, 1.0,     -1.0,  3e9};
    for (PlotAxis *axis : {static_cast<PlotAxis *>(&linear), static_cast<PlotAxis *>(&log)}) {
        QTest::ignoreMessage(QtWarningMsg, anyWarning); // a bad end is said once
        for (const double a : values) {
            for (const double b : values) {
                axis->setLowerLimit(b);
                axis->setMin(a);
                axis->setMax(b);
                axis->setUpperLimit(a);
                axis->setRange(a, b);
                axis->setTickInterval(a);
                axis->setStartTime(b);
                axis->setLog(!axis->isLog());
                axis->setLog(!axis->isLog());
                QVERIFY(axis->mapping(0.0, 800.0).isValid());
                QVERIFY(!axis->valueText(a, b).isEmpty());
            }
        }
    }
}

QTEST_GUILESS_MAIN(tst_PlotAxis)
#include "tst_PlotAxis.moc"
