// SPDX-License-Identifier: MIT
#include "views/reading/TextNumber.h"

#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <clocale>
#include <cmath>
#include <cstdlib>

Q_DECLARE_METATYPE(DecimalSign)
Q_DECLARE_METATYPE(FieldKind)

class tst_TextNumber : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAreOfTheirKind_data();
    void fieldsAreOfTheirKind();
    void aMillionRandomTextsAreRoundedAsStrtodDoes_data();
    void aMillionRandomTextsAreRoundedAsStrtodDoes();
    void printedDoublesComeBack();
    void longNumbersAreNotCutShort();
    void theLocaleHasNoSay();
    void noByteOutsideIsRead();
};

namespace {

FieldKind kindOf(const QByteArray &text, DecimalSign sign, double &value)
{
    return numberIn(text.constData(), text.constData() + text.size(), sign, value);
}

/// A text that is, mostly, a number with a decimal point.
QByteArray randomText(RandomSeries &random)
{
    static constexpr const char *signs[] = {"", "", "", "-", "+"};
    QByteArray text = signs[random.whole(0, 4)];
    const auto addDigits = [&] {
        for (int i = random.whole(0, random.oneIn(3) ? 25 : 8); i > 0; --i)
            text += char('0' + random.whole(0, 9));
    };
    addDigits();
    if (random.oneIn(2)) {
        text += '.';
        addDigits();
    }
    if (random.oneIn(3))
        text += (random.oneIn(2) ? "e" : "E") + QByteArray(random.oneIn(3) ? "+" : "")
            + QByteArray::number(random.whole(random.oneIn(4) ? -350 : -25, random.oneIn(4) ? 350 : 25));
    if (random.oneIn(50))
        text.insert(random.whole(0, text.size()), char(random.whole(33, 126)));
    return text;
}

/// Whether the text is one that strtod() and this reader both take to its end, judged by another way of reading.
bool isPlain(const QByteArray &text)
{
    static const QRegularExpression number(QStringLiteral("\\A[+-]?([0-9]+[.]?[0-9]*|[.][0-9]+)([eE][+-]?[0-9]+)?\\z"));
    return number.match(QString::fromLatin1(text)).hasMatch();
}

} // namespace

void tst_TextNumber::fieldsAreOfTheirKind_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<DecimalSign>("sign");
    QTest::addColumn<FieldKind>("kind");
    QTest::addColumn<double>("value");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const auto add = [](const char *text, DecimalSign sign, FieldKind kind, double value) {
        QTest::addRow("%s by %d", text, int(sign)) << QByteArray(text) << sign << kind << value;
    };
    const auto point = DecimalSign::Point;
    const auto comma = DecimalSign::Comma;
    const auto either = DecimalSign::Either;
    add("", point, FieldKind::Empty, nan);
    for (const char *text : {"nan", "NaN", "-nan", "NA", "n/a", "null", "None", "-", "--"})
        add(text, point, FieldKind::Gap, nan);
    add("inf", point, FieldKind::Gap, infinity);
    add("-Infinity", point, FieldKind::Gap, -infinity);
    add("+1.5", point, FieldKind::Number, 1.5);
    add("5.", point, FieldKind::Number, 5.0);
    add(".5", point, FieldKind::Number, 0.5);
    add("-1.5e-3", point, FieldKind::Number, -1.5e-3);
    add("1e400", point, FieldKind::Number, infinity);
    add("-1e400", point, FieldKind::Number, -infinity);
    add("1e-400", point, FieldKind::Number, 0.0);
    add("4.9e-324", point, FieldKind::Number, 4.9e-324);
    add("1,5", comma, FieldKind::Number, 1.5);
    add("1,5", either, FieldKind::Number, 1.5);
    add("1.5", either, FieldKind::Number, 1.5);
    add("-,5", comma, FieldKind::Number, -0.5);
    add("1,2345678901234567e3", comma, FieldKind::Number, 1234.5678901234567);
    for (const char *text : {"1,5", "1,234.5", "1.5.2", "1 5", "0x10", "1e", "e5", ".", "+", "+-1", "1.5x", "x", "1d5",
                             "nanometre", "infinite", "1_000", "\xC2\xA0", "1.5\xC2\xB5"})
        add(text, point, FieldKind::Other, nan);
    for (const char *text : {"1.5", "5,", ",", "1.234,5", "1,5,2"})
        add(text, comma, FieldKind::Other, nan);
    for (const char *text : {"1.234,5", "1,234.5", "5,", "1,2,3"})
        add(text, either, FieldKind::Other, nan);
}

void tst_TextNumber::fieldsAreOfTheirKind()
{
    QFETCH(QByteArray, text);
    QFETCH(DecimalSign, sign);
    QFETCH(FieldKind, kind);
    QFETCH(double, value);
    double read = 77.0;
    QCOMPARE(kindOf(text, sign, read), kind);
    QVERIFY(std::isnan(value) ? std::isnan(read) : bitsOf(read) == bitsOf(value));
}

void tst_TextNumber::aMillionRandomTextsAreRoundedAsStrtodDoes_data()
{
    QTest::addColumn<char>("point");
    QTest::newRow("decimal point") << '.';
    QTest::newRow("decimal comma") << ',';
}

void tst_TextNumber::aMillionRandomTextsAreRoundedAsStrtodDoes()
{
    QFETCH(char, point);
    const DecimalSign sign = point == '.' ? DecimalSign::Point : DecimalSign::Comma;
    RandomSeries random(point == '.' ? 1 : 2);
    int numbers = 0;
    int taken = 0;
    for (int round = 0; round < 1'000'000; ++round) {
        const QByteArray plain = randomText(random);
        if (plain.contains(','))
            continue;
        const double expected = std::strtod(plain.constData(), nullptr);
        QByteArray text = plain;
        text.replace('.', point);
        const bool isNumber = isPlain(plain) && (point == '.' || !plain.endsWith('.'));
        double value = 77.0;
        const bool isRead = kindOf(text, sign, value) == FieldKind::Number;
        if (isRead != isNumber || (isRead && bitsOf(value) != bitsOf(expected)))
            QFAIL(text.constData());
        numbers += int(isNumber);

        const QByteArray line = text + '\n' + QByteArray(decimalMargin, '7');
        const char *behind = takeNumber(line.constData(), line.constData() + text.size(), point, value);
        if (behind == line.constData() + text.size()) {
            ++taken;
            if (!isNumber || bitsOf(value) != bitsOf(expected))
                QFAIL(text.constData());
        }
    }
    QVERIFY(numbers > 800'000);
    QVERIFY(taken > 700'000); // nearly all take the short way
}

void tst_TextNumber::printedDoublesComeBack()
{
    RandomSeries random(3);
    for (int round = 0; round < 200'000; ++round) {
        const double expected = std::ldexp(random.real(-1.0, 1.0), random.whole(-1074, 1023));
        if (expected == 0.0)
            continue; // Qt prints no sign
        QByteArray text = QByteArray::number(expected, random.oneIn(2) ? 'g' : 'e', 17);
        double value = 77.0;
        QCOMPARE(kindOf(text, DecimalSign::Point, value), FieldKind::Number);
        QCOMPARE(bitsOf(value), bitsOf(expected));
        text = text.replace('.', ',') + '\n' + QByteArray(decimalMargin, '7');
        QVERIFY(takeNumber(text.constData(), text.constData() + text.indexOf('\n'), ',', value));
        QCOMPARE(bitsOf(value), bitsOf(expected));
    }
}

void tst_TextNumber::longNumbersAreNotCutShort()
{
    // Half a bit above a double: the last digit decides.
    const QByteArray digits = "9007199254740993." + QByteArray(5000, '0');
    for (const char point : {'.', ','}) {
        for (const char *last : {"0", "1"}) {
            QByteArray text = QByteArray(digits + last).replace('.', point);
            double value = 0.0;
            const DecimalSign sign = point == '.' ? DecimalSign::Point : DecimalSign::Comma;
            QCOMPARE(kindOf(text, sign, value), FieldKind::Number);
            QCOMPARE(value, std::strtod((digits + last).constData(), nullptr));
            text += '\n' + QByteArray(decimalMargin, '7');
            double taken = 0.0;
            if (takeNumber(text.constData(), text.constData() + text.indexOf('\n'), point, taken))
                QCOMPARE(taken, value);
        }
    }
}

void tst_TextNumber::theLocaleHasNoSay()
{
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        qInfo("no German locale here: only the program's own one is tried");
    double value = 0.0;
    QCOMPARE(kindOf("1.5", DecimalSign::Point, value), FieldKind::Number);
    QCOMPARE(value, 1.5);
    QCOMPARE(kindOf("1.5e400", DecimalSign::Point, value), FieldKind::Number);
    QVERIFY(std::isinf(value));
    QCOMPARE(kindOf("1,5", DecimalSign::Point, value), FieldKind::Other);
    std::setlocale(LC_ALL, "C");
}

void tst_TextNumber::noByteOutsideIsRead()
{
    // A sanitizer sees what is read outside of these.
    for (const char *text : {"1", "12345678", "1.5", "1e5", "-", "1e", "1,", "nan", "+"}) {
        const std::vector<char> bytes(text, text + qstrlen(text));
        double value;
        numberIn(bytes.data(), bytes.data() + bytes.size(), DecimalSign::Either, value);
    }
}

QTEST_GUILESS_MAIN(tst_TextNumber)
#include "tst_TextNumber.moc"
