// SPDX-License-Identifier: MIT
#include "sources/DecimalNumber.h"
#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

class tst_DecimalNumber : public QObject
{
    Q_OBJECT

private slots:
    void shortNumbersTakeTheShortWay_data();
    void shortNumbersTakeTheShortWay();
    void numbersThatMayBeRoundedTwiceDoNot_data();
    void numbersThatMayBeRoundedTwiceDoNot();
    void whatIsNoNumberIsNotTaken_data();
    void whatIsNoNumberIsNotTaken();
    void everyByteEndsTheDigits();
    void randomNumbersAreWhatQtMakesOfThem();
};

namespace {

/// The text with a line end and what may be looked at behind it.
QByteArray padded(const QByteArray &text)
{
    return text + '\n' + QByteArray(decimalMargin, '7');
}

void addRows(std::initializer_list<const char *> texts)
{
    for (const char *text : texts)
        QTest::newRow(text) << QByteArray(text);
}

} // namespace

void tst_DecimalNumber::shortNumbersTakeTheShortWay_data()
{
    QTest::addColumn<QByteArray>("text");
    addRows({"0", "-0", "7", "-7", "12345678", "123456789", "1234567890123456", "000000000000000012"});
    addRows({"0.5", ".5", "5.", "-.5", "-0.0", "0.1", "123.456", "-123.456", "0.000001", "12345678.87654321"});
    addRows({"1e22", "1e-22", "1E+5", "1e0000022", "0e0", "1.5e-3", "1.5e20", "3.14e-10", "0.25e24", "100e-22"});
    addRows({"9007199254740992", "0.9007199254740992", "-900719.9254740992e-10"});
}

void tst_DecimalNumber::shortNumbersTakeTheShortWay()
{
    QFETCH(QByteArray, text);
    const QByteArray line = padded(text);
    double value = 77.0;
    const char *const behind = takeShortDecimal(line.constData(), value);
    QVERIFY(behind);
    QCOMPARE(int(behind - line.constData()), text.size());
    QCOMPARE(bitsOf(value), bitsOf(text.toDouble()));
}

void tst_DecimalNumber::numbersThatMayBeRoundedTwiceDoNot_data()
{
    QTest::addColumn<QByteArray>("text");
    addRows({"9007199254740993", "0.9007199254740993", "9007199254740992.9999999999", "4503599627370497.5"});
    addRows({"1e23", "8.5e24", "1e-23", "0.1e-22", "1e400", "1e-400", "4.9e-324", "2.2250738585072011e-308"});
    addRows(
        {"18446744073709551617", "123456789012345678901234567890", "100000000000000000000", "0.0000000000000000001"});
    addRows({"1e00000022", "1e12345678", "1.7976931348623157e308"});
}

void tst_DecimalNumber::numbersThatMayBeRoundedTwiceDoNot()
{
    QFETCH(QByteArray, text);
    const QByteArray line = padded(text);
    double value = 77.0;
    QVERIFY(!takeShortDecimal(line.constData(), value));
    const char *const behind = takeDecimal(line.constData(), line.constData() + text.size(), value);
    if (behind) { // otherwise the plain way decides
        QCOMPARE(int(behind - line.constData()), text.size());
        QCOMPARE(bitsOf(value), bitsOf(QString::fromLatin1(text).toDouble()));
    }
}

void tst_DecimalNumber::whatIsNoNumberIsNotTaken_data()
{
    QTest::addColumn<QByteArray>("text");
    addRows(
        {"", "-", ".", "-.", "+1", "--1", "-+1", "e5", ".e5", "inf", "-inf", "nan", "infinity", "x", " 1", "\xC2\xA0"});
}

void tst_DecimalNumber::whatIsNoNumberIsNotTaken()
{
    QFETCH(QByteArray, text);
    const QByteArray line = padded(text);
    double value = 77.0;
    QVERIFY(!takeDecimal(line.constData(), line.constData() + text.size(), value));
}

void tst_DecimalNumber::everyByteEndsTheDigits()
{
    for (int other = 0; other < 256; ++other) {
        if (other >= '0' && other <= '9')
            continue;
        for (int count = 0; count < 8; ++count) {
            for (int next = 0; next < 256; ++next) { // what follows must not matter
                const QByteArray text =
                    QByteArray("12345678").left(count) + char(other) + char(next) + QByteArray(8, char(next));
                const SDigits digits = upToEightDigits(text.constData());
                QCOMPARE(digits.count, count);
                QCOMPARE(digits.value, QByteArray("12345678").left(count).toULongLong());
            }
        }
    }
    QCOMPARE(upToEightDigits("987654321").count, 8);
    QCOMPARE(upToEightDigits("987654321").value, quint64(98765432));
}

void tst_DecimalNumber::randomNumbersAreWhatQtMakesOfThem()
{
    RandomSeries random(1);
    int taken = 0;
    constexpr int rounds = 300'000;
    for (int round = 0; round < rounds; ++round) {
        QByteArray text = random.oneIn(4) ? "-" : "";
        for (int i = random.whole(0, random.oneIn(4) ? 19 : 8); i > 0; --i)
            text += char('0' + random.whole(0, 9));
        if (random.oneIn(2))
            text += '.';
        for (int i = random.whole(0, random.oneIn(4) ? 19 : 8); i > 0; --i)
            text += char('0' + random.whole(0, 9));
        if (random.oneIn(3))
            text += "e" + QByteArray::number(random.whole(-25, 25));
        const QByteArray line = padded(text);
        double value = 0.0;
        if (!takeShortDecimal(line.constData(), value))
            continue;
        ++taken;
        if (bitsOf(value) != bitsOf(QString::fromLatin1(text).toDouble()))
            QFAIL(text.constData());
    }
    QVERIFY(taken > rounds / 2);
}

QTEST_GUILESS_MAIN(tst_DecimalNumber)
#include "tst_DecimalNumber.moc"
