// SPDX-License-Identifier: MIT
#include "views/reading/TextLayout.h"

#include <QtTest>

#include <functional>

class tst_TextLayout : public QObject
{
    Q_OBJECT

private slots:
    void textsAreUnderstood_data();
    void textsAreUnderstood();
    void namesAndUnitsAreFound_data();
    void namesAndUnitsAreFound();
    void timesAreFound_data();
    void timesAreFound();
    void whatMayBeXIsSaid_data();
    void whatMayBeXIsSaid();
    void guessesCanBeReplaced();
    void whatIsNotUnderstoodIsSaid_data();
    void whatIsNotUnderstoodIsSaid();
    void doubtsAreSaid();
};

namespace {

SDetection detect(const QByteArray &text, const STextHints &hints = {})
{
    return detectLayout(text.constData(), text.constData() + text.size(), hints);
}

char signOf(const STextLayout &layout)
{
    switch (layout.decimalSign) {
    case DecimalSign::Point:
        return '.';
    case DecimalSign::Comma:
        return ',';
    case DecimalSign::Either:
        break;
    }
    return '?';
}

/// "number of columns, separator, decimal sign, lines before the numbers"
QByteArray summary(const STextLayout &layout)
{
    return QByteArray::number(layout.columns.size()) + ' ' + (layout.separator == '\t' ? 'T' : layout.separator) + ' '
        + signOf(layout) + ' ' + QByteArray::number(layout.headLines);
}

} // namespace

void tst_TextLayout::textsAreUnderstood_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected"); // a blank stands for blanks, T for a tab, ? for no decimal sign seen
    const auto add = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QByteArray(expected);
    };
    add("whole numbers", "1\n2\n3\n", "1   ? 0");
    add("one number", "42\n", "1   ? 0");
    add("points", "1.5\n2\n", "1   . 0");
    add("commas alone", "1,5\n2,75\n0,5\n", "1   , 0");
    add("commas in some lines", "0\n1,5\n2\n", "1   , 0");
    add("pairs that count up", "1,5\n2,7\n3,9\n", "2 , ? 0");
    add("pairs with a sign", "1,-5\n4,7\n", "2 , ? 0");
    add("pairs with a blank", "1, 5\n4, 7\n", "2 , ? 0");
    add("leading zeros are a fraction", "1,05\n2,07\n3,09\n", "1   , 0");
    add("commas and points", "1,5.5\n2,7.5\n", "2 , . 0");
    add("three columns", "1,2,3\n4,5,6\n", "3 , ? 0");
    add("semicolons with decimal commas", "1,5;2,5\n3;4\n", "2 ; , 0");
    add("semicolons with points", "1.5;2.5\n", "2 ; . 0");
    add("tabs", "1.5\t2.5\n3\t4\n", "2 T . 0");
    add("tabs with decimal commas", "1,5\t2,5\n3\t4\n", "2 T , 0");
    add("blanks", "  1.5   2.5\n 3  4\n", "2   . 0");
    add("blanks with decimal commas", "1,5 2,5\n3,0 4,0\n", "2   , 0");
    add("bars", "1|2|3\n4|5|6\n", "3 | ? 0");
    add("a separator at the end", "1;2;\n3;4;\n", "2 ; ? 0");
    add("quoted commas", "\"a, b\",1.5\n\"c, d\",2.5\n", "2 , . 0");
    add("quoted numbers", "\"1,5\",\"2\"\n\"2,5\",\"3\"\n", "2 , , 0");
    add("text and numbers", "ab;1,5\ncd;2,5\n", "2 ; , 0");
    add("empty fields", "1;;3\n4;5;\n7;8;9\n", "3 ; ? 0");
    add("missing columns", "1,2,3\n4,5\n6,7,8\n9,10,11\n", "3 , ? 0");
    add("a head", "time;volt\n1;2\n3;4\n", "2 ; ? 1");
    add("a head of prose", "Made by X in 2026, gain 2\n\n1 2\n3 4\n5 6\n", "2   ? 2");
    add("a head of numbers", "3 1024\n1.5\n2.5\n3.5\n", "1   . 1");
    add("comments in front", "# a\n% b\n// c\n1\n2\n", "1   ? 3");
    add("a comment in the middle", "1\n# x\n2\n3\n", "1   ? 0");
    add("blank lines in front", "\n\n1\n2\n", "1   ? 2");
    add("no end of the last line", "1;2\n3;4", "2 ; ? 0");
    add("CRLF", "a;b\r\n1;2\r\n", "2 ; ? 1");
    add("gaps", "1;nan\n;2\nNA;3\n", "2 ; ? 0");
    add("sections", "$SPEC_ID:\nx\n$MEAS_TIM:\n10 10\n$DATA:\n0 3\n 1\n 2\n 3\n 4\n$ROI:\n0\n", "1   ? 6");
}

void tst_TextLayout::textsAreUnderstood()
{
    QFETCH(QByteArray, text);
    const SDetection detection = detect(text);
    QVERIFY2(detection.layout, qPrintable(detection.obstacle));
    QTEST(summary(*detection.layout), "expected");
    int lines = 0;
    int at = 0;
    for (; lines < detection.layout->headLines; ++lines)
        at = text.indexOf('\n', at) + 1;
    QCOMPARE(detection.layout->headSize, qint64(at));
}

void tst_TextLayout::namesAndUnitsAreFound_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto add = [](const char *name, const char *text, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << QString::fromUtf8(expected);
    };
    add("names", "time;volt\n1;2\n3;4\n", "time||volt|");
    add("square brackets", "t [s];U [mV]\n1;2\n3;4\n", "t|s|U|mV");
    add("round brackets", "t (s),U (mV)\n1,2.5\n3,4.5\n", "t|s|U|mV");
    add("after a slash", "t / s;U / mV\n1;2\n3;4\n", "t|s|U|mV");
    add("between blanks", "t [s] U [mV]\n1 2\n3 4\n", "t|s|U|mV");
    add("a line of units", "t;U\n[s];[mV]\n1;2\n3;4\n", "t|s|U|mV");
    add("in comments", "# t U\n# [s] [mV]\n1 2\n3 4\n", "t|s|U|mV");
    add("quoted", "\"a;b\";\"say \"\"c\"\"\"\n1;2\n3;4\n", "a;b||say \"c\"|");
    add("quoted numbers as names", "\"2019\",\"2020\",\"2021\"\n1,2,3\n3,4,5\n", "2019||2020||2021|");
    add("of the only column", "live counts [1/s]\n1\n2\n", "live counts|1/s");
    add("Umlaute", "L\xC3\xA4nge;H\xC3\xB6he\n1;2\n3;4\n", "L\xC3\xA4nge||H\xC3\xB6he|");
    add("too few", "t\n1;2\n3;4\n", "||||"); // none
    add("a sentence is no name", "This file was made by a program that likes to tell long stories of itself\n1\n2\n",
        "|");
    add("a shorter one", "Taken on Monday by Ann\n1\n2\n", "|");
    add("the last of two lines of prose", "Spectrum of a pot\nTaken by Ann\n1\n2\n", "|");
    add("the last of two comments", "# Spectrum of a pot\n# Taken by Ann\n1\n2\n", "|");
    add("a name under prose", "Spectrum of a pot\ncounts [1/s]\n1\n2\n", "counts|1/s");
    add("a name under a comment", "# Spectrum of a pot\nlive counts\n1\n2\n", "live counts|");
    add("a setting isn't a name", "Detector: HPGe\n1\n2\n", "|");
    add("nor are two words of one", "Detector: HPGe\n1 2\n3 4\n", "|||");
    add("none", "1;2\n3;4\n", "|||");
}

void tst_TextLayout::namesAndUnitsAreFound()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    const SDetection detection = detect(text);
    QVERIFY2(detection.layout, qPrintable(detection.obstacle));
    QStringList found;
    for (const STextColumn &column : detection.layout->columns)
        found << column.name << column.unit;
    if (expected == QLatin1String("||||"))
        expected = QStringLiteral("|||");
    QCOMPARE(found.join(QLatin1Char('|')), expected);
}

void tst_TextLayout::timesAreFound_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("timeColumn");
    QTest::addColumn<qint64>("origin"); // of column 1
    const auto add = [](const char *name, const char *text, int timeColumn, qint64 origin) {
        QTest::newRow(name) << QByteArray(text) << timeColumn << origin;
    };
    add("ISO with T", "2026-01-31T09:30:15;1\n2026-01-31T09:30:16;2\n", 0, 1'769'851'815);
    add("ISO between blanks", "2026-01-31 09:30:15 1\n2026-01-31 09:30:16 2\n", 0, 1'769'851'815);
    add("ISO with a fraction", "2026-01-31 09:30:15.75,1\n2026-01-31 09:30:16.25,2\n", 0, 1'769'851'815);
    add("dates", "day,rain\n2026-01-30,1\n2026-01-31,2\n", 0, 1'769'731'200);
    add("seconds since 1970", "1700000000.5;1\n1700000001.5;2\n", 0, 1'700'000'000);
    add("milliseconds since 1970", "1700000000500 1\n1700000001500 2\n", 0, 1'700'000'000);
    add("going back", "2026-01-31T09:30:16;1\n2026-01-31T09:30:15;2\n", -1, 1'769'851'816);
    add("numbers going back", "1700000001;1\n1700000000;2\n", -1, 0);
    add("alone", "1700000000\n1700000001\n", -1, 0);
    add("other numbers", "1;2\n2;3\n", -1, 0);
    add("not the first column", "1;2026-01-31T09:30:15\n2;2026-01-31T09:30:16\n", -1, 0);
}

void tst_TextLayout::timesAreFound()
{
    QFETCH(QByteArray, text);
    const SDetection detection = detect(text);
    QVERIFY2(detection.layout, qPrintable(detection.obstacle));
    QTEST(detection.layout->timeColumn, "timeColumn");
    QTEST(detection.layout->columns.first().origin, "origin");
}

void tst_TextLayout::whatMayBeXIsSaid_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("mayBeX");
    const auto table = [](int lines, const std::function<QByteArray(int)> &lineOf) {
        QByteArray text("energy;counts\n");
        for (int i = 0; i < lines; ++i)
            text += lineOf(i) + '\n';
        return text;
    };
    const auto number = [](double value) { return QByteArray::number(value); };
    QTest::newRow("evenly") << table(20, [&](int i) { return number(0.5 * i) + ';' + number(i % 7); }) << true;
    QTest::newRow("unevenly") << table(20, [&](int i) { return number(i * i) + ';' + number(i % 7); }) << true;
    QTest::newRow("few lines") << table(9, [&](int i) { return number(i) + ';' + number(i % 7); }) << false;
    QTest::newRow("both") << table(20, [&](int i) { return number(i) + ';' + number(2 * i); }) << false;
    QTest::newRow("equal ones") << table(20, [&](int i) { return number(i / 2) + ';' + number(i % 7); }) << false;
    QTest::newRow("with a gap") << table(20, [&](int i) { return (i == 5 ? "nan" : number(i)) + ';' + number(i % 7); })
                                << false;
    QTest::newRow("alone") << table(20, [&](int i) { return number(i); }) << false;
    QTest::newRow("beside text") << table(20, [&](int i) { return number(i) + ";x"; }) << false;
    QTest::newRow("times") << table(20, [&](int i) { return number(1.7e9 + i) + ';' + number(i % 7); }) << false;
}

void tst_TextLayout::whatMayBeXIsSaid()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, mayBeX);
    const SDetection detection = detect(text);
    QVERIFY2(detection.layout, qPrintable(detection.obstacle));
    QCOMPARE(detection.layout->firstMayBeX, mayBeX);
    QCOMPARE(describe(*detection.layout).contains(QStringLiteral("column 1 ascends: set xColumn to 1 if it is x")),
             mayBeX);
}

void tst_TextLayout::guessesCanBeReplaced()
{
    STextHints hints;
    hints.separator = ',';
    QCOMPARE(summary(*detect("1,5\n2,75\n", hints).layout), QByteArray("2 , ? 0"));
    hints = {};
    hints.decimalSign = DecimalSign::Comma;
    QCOMPARE(summary(*detect("1,5\n2,7\n3,9\n", hints).layout), QByteArray("1   , 0"));
    hints = {};
    hints.commentPrefix = "!";
    QCOMPARE(summary(*detect("! 1\n! 2\n3\n", hints).layout), QByteArray("1   ? 2"));
    hints = {};
    hints.skipLines = 3;
    QCOMPARE(summary(*detect("1\n2\n3\n4;5\n", hints).layout), QByteArray("2 ; ? 3"));
}

void tst_TextLayout::whatIsNotUnderstoodIsSaid_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("part");
    const auto add = [](const char *name, const QByteArray &text, const char *part) {
        QTest::newRow(name) << text << QString::fromLatin1(part);
    };
    add("prose", "hello\nworld\n", "hello");
    add("blank lines", "\n\n", "no line with a number");
    add("thousands", "1,234.5\n999.25\n1,234,567.5\n", "thousands");
    add("German thousands", "1.234,5;2.345,5\n3.456,5;4.567,5\n", "1.234,5");
    add("too many columns", QByteArray("1 ").repeated(1001) + "\n", "1001");
}

void tst_TextLayout::whatIsNotUnderstoodIsSaid()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, part);
    const SDetection detection = detect(text);
    QVERIFY(!detection.layout);
    QVERIFY2(detection.obstacle.contains(part), qPrintable(detection.obstacle));
}

void tst_TextLayout::doubtsAreSaid()
{
    QVERIFY(describe(*detect("1,5\n2,75\n").layout).contains(QLatin1String("taken as decimal")));
    QVERIFY(describe(*detect("1,5\n2,7\n3,9\n").layout).contains(QLatin1String("taken as separator")));
    QVERIFY(describe(*detect("1.5;2,5\n1.5;2.5\n").layout).contains(QLatin1String("not read")));
    QVERIFY(describe(*detect("a;1\nb;2\n").layout).contains(QLatin1String("column 1 is text")));
    QCOMPARE(describe(*detect("h\n1,5;2\n3;4\n").layout),
             QStringLiteral("2 columns between semicolons; decimal comma; 1 line before the numbers"));
}

QTEST_GUILESS_MAIN(tst_TextLayout)
#include "tst_TextLayout.moc"
