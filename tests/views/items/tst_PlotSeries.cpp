// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/views/items/PlotFixture.h"
#include "views/items/BarSeries.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

#include <qqml.h>

#include <memory>

/// What a series says of its values, and where it takes them from.
class tst_PlotSeries : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void tellsTheNearestValue();
    void tellsTheBarThatItIsIn();
    void tellsNoValueWithoutValues();
    void tellsExtremes();
    void tellsExtremesAtPlacesOfTheirOwn();
    void multipliesItsValues();
    void refusesFactorsThatAreNotAbove0();
    void takesPlacesAsAList();
    void countsWhatIsMisplaced();
    void takesWhatScriptsHave_data();
    void takesWhatScriptsHave();
    void refusesWhatIsNone_data();
    void refusesWhatIsNone();
};

void tst_PlotSeries::initTestCase()
{
    qmlRegisterType<LineSeries>("Plots", 1, 0, "LineSeries");
    qmlRegisterAnonymousType<PlotSeries>("Plots", 1);
}

void tst_PlotSeries::tellsTheNearestValue()
{
    PlotView view;
    StoredSeries<> line(view, {10.0, 11.0, 12.0, qQNaN()});
    line.series.setStart(100.0);
    line.series.setStep(0.5);
    QCOMPARE(line.series.valueAt(100.0), 10.0);
    QCOMPARE(line.series.valueAt(100.7), 11.0);
    QCOMPARE(line.series.valueAt(100.8), 12.0);
    QCOMPARE(line.series.valueAt(-1e9), 10.0);
    QVERIFY(std::isnan(line.series.valueAt(101.5))); // the gap
    QVERIFY(std::isnan(line.series.valueAt(qQNaN())));
}

void tst_PlotSeries::tellsTheBarThatItIsIn()
{
    PlotView view;
    StoredSeries<BarSeries> bars(view, {10.0, 11.0, 12.0});
    QCOMPARE(bars.series.valueAt(0.0), 10.0);
    QCOMPARE(bars.series.valueAt(0.99), 10.0);
    QCOMPARE(bars.series.valueAt(2.99), 12.0);
    QVERIFY(std::isnan(bars.series.valueAt(3.0)));
    QVERIFY(std::isnan(bars.series.valueAt(-0.01)));
}

void tst_PlotSeries::tellsNoValueWithoutValues()
{
    const LineSeries line;
    QVERIFY(std::isnan(line.valueAt(0.0)));
    QVERIFY(std::isnan(line.minimum()));
    QVERIFY(std::isnan(line.maximum()));
    QCOMPARE(line.extremeIn(0.0, 1.0), (QVariantMap{{QStringLiteral("count"), 0.0}}));
}

void tst_PlotSeries::tellsExtremes()
{
    PlotView view;
    StoredSeries<> line(view, {3.0, -7.0, qQNaN(), 9.0, -7.0, 5.0});
    line.series.setStart(10.0);
    const QVariantMap all{{QStringLiteral("count"), 5.0},
                          {QStringLiteral("minimum"), -7.0},
                          {QStringLiteral("maximum"), 9.0},
                          {QStringLiteral("minimumAt"), 11.0},
                          {QStringLiteral("maximumAt"), 13.0}};
    QCOMPARE(line.series.extremeIn(10.0, 15.0), all); // both ends are in it
    QCOMPARE(line.series.extremeIn(15.0, 10.0), all);
    QCOMPARE(line.series.extremeIn(-qInf(), qInf()), all);
    QCOMPARE(line.series.extremeIn(13.5, 15.0).value(QStringLiteral("count")).toDouble(), 2.0);
    QCOMPARE(line.series.extremeIn(12.0, 12.0), (QVariantMap{{QStringLiteral("count"), 0.0}}));
    QCOMPARE(line.series.extremeIn(qQNaN(), 12.0), (QVariantMap{{QStringLiteral("count"), 0.0}}));
}

void tst_PlotSeries::tellsExtremesAtPlacesOfTheirOwn()
{
    LineSeries line;
    line.setValues(QVariant::fromValue(QVector<double>{3.0, -7.0, 9.0}));
    line.setXValues(QVariant::fromValue(QVector<double>{1.0, 1.5, 8.0}));
    line.setXOffset(100.0);
    QCoreApplication::processEvents();
    const QVariantMap found = line.extremeIn(101.2, 108.0);
    QCOMPARE(found.value(QStringLiteral("minimumAt")).toDouble(), 101.5);
    QCOMPARE(found.value(QStringLiteral("maximumAt")).toDouble(), 108.0);
    QCOMPARE(line.valueAt(101.1), 3.0);
    QCOMPARE(line.valueAt(104.0), -7.0);
}

/// Whoever asks gets the products; the store stays as it is.
void tst_PlotSeries::multipliesItsValues()
{
    PlotView view;
    StoredSeries<BarSeries> bars(view, {3.0, 8.0, qQNaN(), 2.0});
    QTRY_COMPARE(view.axisY()->range().max, 8.4);
    const QSignalSpy spy(&bars.series, &PlotSeries::yFactorChanged);
    bars.series.setYFactor(2.5);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(bars.series.minimum(), 5.0);
    QCOMPARE(bars.series.maximum(), 20.0);
    QCOMPARE(bars.series.valueAt(1.0), 20.0);
    QVERIFY(std::isnan(bars.series.valueAt(2.0)));
    const QVariantMap extreme = bars.series.extremeIn(1.0, 3.5);
    QCOMPARE(extreme.value(QStringLiteral("minimum")).toDouble(), 5.0);
    QCOMPARE(extreme.value(QStringLiteral("minimumAt")).toDouble(), 3.0);
    QCOMPARE(extreme.value(QStringLiteral("maximum")).toDouble(), 20.0);
    QTRY_COMPARE(view.axisY()->range().max, 21.0);
    QCOMPARE(bars.store.maximum(), 8.0);
    view.zoomTo(0.0, 2.0);
    view.setRegionVisible(true);
    QVERIFY(view.numbers().contains(QStringLiteral("maximum\t20\n")));
    bars.series.setYFactor(0.1);
    QTRY_VERIFY(view.numbers().contains(QStringLiteral("maximum\t0.8\n")));
}

void tst_PlotSeries::refusesFactorsThatAreNotAbove0()
{
    LineSeries line;
    line.setYFactor(3.0);
    for (const double factor : {0.0, -2.0, qQNaN(), qInf()}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("yFactor: .* isn't (above 0|a finite)")));
        line.setYFactor(factor);
        QCOMPARE(line.yFactor(), 3.0);
    }
}

void tst_PlotSeries::takesPlacesAsAList()
{
    LineSeries line;
    QSignalSpy spy(&line, &PlotSeries::xValuesChanged);
    line.setValues(QVariantList{1.0, 2.0, 3.0});
    line.setXValues(QVariantList{5.0, 6.0, 60.0});
    QCoreApplication::processEvents();
    QCOMPARE(spy.size(), 1);
    QCOMPARE(line.xValues().toList().size(), 3);
    QCOMPARE(line.valueAt(59.0), 3.0);
    QCOMPARE(line.misplacedCount(), 0.0);
}

void tst_PlotSeries::countsWhatIsMisplaced()
{
    const LogCatcher log;
    LineSeries line;
    QSignalSpy spy(&line, &PlotSeries::countChanged);
    line.setValues(QVariant::fromValue(QVector<double>(6, 1.0)));
    line.setXValues(QVariant::fromValue(QVector<double>{1.0, 3.0, 2.0, qQNaN(), 3.0, 4.0}));
    QTRY_COMPARE(line.misplacedCount(), 2.0);
    QVERIFY(!spy.isEmpty());
    QCOMPARE(log.count(QStringLiteral("go back or aren't numbers")), 1);
    line.setXValues(QVariant::fromValue(QVector<double>{1.0, 2.0, 3.0, 4.0, 5.0, 6.0}));
    QTRY_COMPARE(line.misplacedCount(), 0.0);
}

void tst_PlotSeries::takesWhatScriptsHave_data()
{
    QTest::addColumn<QString>("values");
    QTest::newRow("a list") << QStringLiteral("[1.5, 2, -3]");
    QTest::newRow("a buffer") << QStringLiteral("new Float64Array([1.5, 2, -3]).buffer");
    QTest::newRow("computed") << QStringLiteral("[3, 4, -6].map(function(x) { return x / 2 })");
}

void tst_PlotSeries::takesWhatScriptsHave()
{
    QFETCH(QString, values);
    const LogCatcher log;
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import Plots 1.0\nLineSeries { values: " + values.toUtf8() + " }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    const auto *line = qobject_cast<LineSeries *>(object.get());
    QCoreApplication::processEvents();
    QCOMPARE(line->count(), 3.0);
    QVERIFY(line->valueAt(0.0) == 1.5);
    QCOMPARE(line->maximum(), 2.0);
    QCOMPARE(log.messages(), QStringList());
}

void tst_PlotSeries::refusesWhatIsNone_data()
{
    QTest::addColumn<QString>("values");
    QTest::addColumn<QString>("words");
    QTest::newRow("a typed array") << QStringLiteral("new Float64Array([1, 2])")
                                   << QStringLiteral("of a typed array, hand over its buffer");
    QTest::newRow("text") << QStringLiteral("\"abc\"") << QStringLiteral("a number or a list of numbers was expected");
    QTest::newRow("a list with text") << QStringLiteral("[1, \"two\"]")
                                      << QStringLiteral("entry 1 of the list is not a number");
    QTest::newRow("a buffer of bytes") << QStringLiteral("new Uint8Array([1, 2, 3]).buffer")
                                       << QStringLiteral("3 bytes are not a whole number of doubles");
}

void tst_PlotSeries::refusesWhatIsNone()
{
    QFETCH(QString, values);
    QFETCH(QString, words);
    const LogCatcher log;
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import Plots 1.0\nLineSeries { values: " + values.toUtf8() + " }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QCOMPARE(qobject_cast<LineSeries *>(object.get())->count(), 0.0);
    QVERIFY2(log.count(words) == 1, qPrintable(log.messages().join('\n')));
}

QTEST_MAIN(tst_PlotSeries)
#include "tst_PlotSeries.moc"
