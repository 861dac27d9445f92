// SPDX-License-Identifier: MIT
#include "views/items/AxisLabels.h"

#include "views/items/Ticks.h"

#include <QtTest>

#include <limits>

namespace {

QStringList labels(double from, double to)
{
    const AxisMapping mapping{from, to, false, 0.0, 500.0};
    const STicks ticks = linearTicks(mapping, {100.0});
    const AxisLabels texts(mapping, ticks.step);
    QStringList made;
    for (const double tick : ticks.major)
        made.append(texts.text(tick));
    return made;
}

} // namespace

class tst_AxisLabels : public QObject
{
    Q_OBJECT

private slots:
    void theStepSaysHowManyDigits();
    void oneGroupOfLabelsHasOnePrefix();
    void smallValuesHaveAPrefix();
    void manyDigitsWithAPrefixAreWrittenOut();
    void aNarrowRangeIsWrittenFromABase();
    void theBaseStaysInAPan();
    void labelsOfOneAxisDiffer();
    void anUnevenIntervalGetsItsDigits();
    void logLabelsHaveTheirOwnPrefix();
    void shortNumbers();
    void formatsOfPrintf();
    void otherFormatsAreRefused_data();
    void otherFormatsAreRefused();
};

void tst_AxisLabels::theStepSaysHowManyDigits()
{
    QCOMPARE(labels(0.0, 1.0), (QStringList{"0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
    QCOMPARE(labels(0.0, 5000.0), (QStringList{"0", "1000", "2000", "3000", "4000", "5000"}));
    QCOMPARE(labels(-0.05, 0.0), (QStringList{"-0.05", "-0.04", "-0.03", "-0.02", "-0.01", "0"}));
}

void tst_AxisLabels::oneGroupOfLabelsHasOnePrefix()
{
    QCOMPARE(labels(0.0, 2.5e6), (QStringList{"0", "0.5M", "1.0M", "1.5M", "2.0M", "2.5M"}));
    QCOMPARE(labels(-100e3, 400e3), (QStringList{"-100k", "0", "100k", "200k", "300k", "400k"}));
    QCOMPARE(labels(0.0, 5e9).last(), QStringLiteral("5G"));
    QCOMPARE(labels(0.0, 5e12).last(), QStringLiteral("5e12"));
}

void tst_AxisLabels::smallValuesHaveAPrefix()
{
    QCOMPARE(labels(0.0, 5e-3).last(), QStringLiteral("5m"));
    QCOMPARE(labels(0.0, 5e-6).last(), QStringLiteral("5u"));
    QCOMPARE(labels(0.0, 5e-9).last(), QStringLiteral("5n"));
    QCOMPARE(labels(0.0, 5e-11).last(), QStringLiteral("50p"));
    QCOMPARE(labels(0.0, 5e-14).last(), QStringLiteral("50e-15"));
}

void tst_AxisLabels::manyDigitsWithAPrefixAreWrittenOut()
{
    QCOMPARE(labels(12345.0, 12347.5).first(), QStringLiteral("12345.0"));
    QCOMPARE(labels(1234000.0, 1234500.0).first(), QStringLiteral("1234.0k"));
}

void tst_AxisLabels::aNarrowRangeIsWrittenFromABase()
{
    const AxisMapping mapping{1e6 + 0.1, 1e6 + 0.6, false, 0.0, 500.0};
    const AxisLabels texts(mapping, 0.1);
    QVERIFY(texts.hasBase());
    QCOMPARE(texts.baseText(), QStringLiteral("1000000"));
    QCOMPARE(texts.text(1e6 + 0.3), QStringLiteral("+0.3"));
    const AxisMapping below{-1e6 - 0.6, -1e6 - 0.1, false, 0.0, 500.0};
    QCOMPARE(AxisLabels(below, 0.1).baseText(), QStringLiteral("-1000010"));
    QCOMPARE(AxisLabels(below, 0.1).text(-1e6 - 0.3), QStringLiteral("+9.7"));
    QVERIFY(!AxisLabels({1000.0, 1001.0, false, 0.0, 500.0}, 0.2).hasBase());
}

void tst_AxisLabels::theBaseStaysInAPan()
{
    QString base;
    for (double pan = 0.0; pan < 40.0; pan += 0.25) {
        const double from = 1e9 + pan;
        const AxisLabels texts({from, from + 0.5, false, 0.0, 500.0}, 0.1);
        const QString now = texts.baseText();
        QVERIFY(now == QStringLiteral("%1").arg(1000000000 + int(pan / 10.0) * 10));
    }
}

void tst_AxisLabels::labelsOfOneAxisDiffer()
{
    for (double from : {0.0, 1.0, 999.0, 12345.6, 1e6, 1e9, -3e5, 1e-5, 1e12}) {
        for (double span = 1e-6; span < 1e10; span *= 3.3) {
            const QStringList texts = labels(from, from + span);
            QVERIFY2(texts.size() == QSet<QString>(texts.begin(), texts.end()).size(),
                     qPrintable(QStringLiteral("%1 + %2: ").arg(from).arg(span) + texts.join(' ')));
            for (const QString &text : texts)
                QVERIFY2(text.size() <= 13, qPrintable(text));
        }
    }
}

void tst_AxisLabels::anUnevenIntervalGetsItsDigits()
{
    const AxisLabels texts({0.0, 1.0, false, 0.0, 500.0}, 0.125);
    QCOMPARE(texts.text(0.375), QStringLiteral("0.375"));
    QCOMPARE(AxisLabels({0.0, 9.0, false, 0.0, 500.0}, 2.5).text(7.5), QStringLiteral("7.5"));
}

void tst_AxisLabels::logLabelsHaveTheirOwnPrefix()
{
    const AxisLabels texts({0.001, 1e6, true, 0.0, 500.0}, 0.0);
    QCOMPARE(texts.text(0.001), QStringLiteral("1m"));
    QCOMPARE(texts.text(0.1), QStringLiteral("0.1"));
    QCOMPARE(texts.text(1000.0), QStringLiteral("1000"));
    QCOMPARE(texts.text(1e5), QStringLiteral("100k"));
    QCOMPARE(texts.text(1e6), QStringLiteral("1M"));
}

void tst_AxisLabels::shortNumbers()
{
    QCOMPARE(shortNumber(0.0), QStringLiteral("0"));
    QCOMPARE(shortNumber(1.0 / 3.0), QStringLiteral("0.3333333"));
    QCOMPARE(shortNumber(-1234.5), QStringLiteral("-1234.5"));
    QCOMPARE(shortNumber(123456789.0), QStringLiteral("123.4568M"));
    QCOMPARE(shortNumber(999999.99999), QStringLiteral("1M"));
    QCOMPARE(shortNumber(2e-7), QStringLiteral("200n"));
    QCOMPARE(shortNumber(1e300), QStringLiteral("1e300"));
    QCOMPARE(shortNumber(-1.7976931348623157e308), QStringLiteral("-179.7693e306"));
    QCOMPARE(shortNumber(1.25e-310), QStringLiteral("125e-312"));
    QCOMPARE(shortNumber(-5e-324), QStringLiteral("-4.940656e-324"));
    QCOMPARE(shortNumber(std::numeric_limits<double>::quiet_NaN()), QStringLiteral("–"));
    QCOMPARE(shortNumber(-std::numeric_limits<double>::infinity()), QStringLiteral("-∞"));
}

void tst_AxisLabels::formatsOfPrintf()
{
    QCOMPARE(formattedNumber(3.14159, QStringLiteral("%.2f")), QStringLiteral("3.14"));
    QCOMPARE(formattedNumber(41.7, QStringLiteral("%d counts")), QStringLiteral("42 counts"));
    QCOMPARE(formattedNumber(1e300, QStringLiteral("%d")), QStringLiteral("9200000000000000000"));
    QCOMPARE(formattedNumber(0.25, QStringLiteral("%.0f %%")), QStringLiteral("0 %"));
    QCOMPARE(formattedNumber(12000.0, QStringLiteral("%8.1e")), QStringLiteral(" 1.2e+04"));
    QVERIFY(formattedNumber(std::numeric_limits<double>::quiet_NaN(), QStringLiteral("%d")).isEmpty());
}

void tst_AxisLabels::otherFormatsAreRefused_data()
{
    QTest::addColumn<QString>("format");
    for (const char *const format :
         {"", "counts", "%s", "%n", "%.2f%.2f", "%*d", "%999f", "%.999f", "%lld", "100%", "%p"})
        QTest::newRow(format) << QString::fromLatin1(format);
}

void tst_AxisLabels::otherFormatsAreRefused()
{
    QFETCH(QString, format);
    QVERIFY(!isNumberFormat(format));
    QVERIFY(formattedNumber(1.0, format).isEmpty());
}

QTEST_APPLESS_MAIN(tst_AxisLabels)
#include "tst_AxisLabels.moc"
