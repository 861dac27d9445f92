// SPDX-License-Identifier: MIT
#include "views/reading/TextRows.h"

#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"

#include <QtTest>

#include <cmath>

class tst_TextRows : public QObject
{
    Q_OBJECT

private slots:
    void linesBecomeRows_data();
    void linesBecomeRows();
    void linesAreCounted_data();
    void linesAreCounted();
    void plainNumbersAreRoundedAsStrtodDoes_data();
    void plainNumbersAreRoundedAsStrtodDoes();
    void linesOfAnyLengthAreRead();
    void signsWithoutANumberAreNoNumbers();
    void aCommentMayBeginLikeANumber();
    void theSeparatorComesFirst();
    void commentsAreNoTextInFrontOfANumber();
    void aSectionEndsTheNumbers();
    void rowsDoNotDependOnWhereATextIsCut();
    void anyBytesAreTaken();
};

namespace {

STextLayout layoutOf(int columns, char separator, DecimalSign sign)
{
    STextLayout layout;
    layout.separator = separator;
    layout.decimalSign = sign;
    layout.commentPrefixes = {"#"};
    layout.columns.resize(columns);
    return layout;
}

TextRows convert(const QByteArray &text, const STextLayout &layout)
{
    const QByteArray padded = text + QByteArray(textMargin, '7');
    TextRows rows;
    convertText(padded.constData(), padded.constData() + text.size(), layout, rows);
    return rows;
}

/// "1 2|3 -": rows between bars, a dash for a gap.
QByteArray shown(const TextRows &rows, const STextLayout &layout)
{
    QByteArrayList lines;
    for (qint64 row = 0; row < rows.rows; ++row) {
        QByteArrayList values;
        for (int column = 0; column < int(layout.columns.size()); ++column) {
            if (!rows.column(column))
                continue;
            const double value = rows.column(column)[row];
            values << (std::isnan(value) ? QByteArray("-") : QByteArray::number(value, 'g', 17));
        }
        lines << values.join(' ');
    }
    return lines.join('|');
}

/// A number with a decimal point that every reader takes.
QByteArray randomNumber(RandomSeries &random)
{
    const auto digits = [&](int fewest) {
        QByteArray text;
        for (int i = random.whole(fewest, random.oneIn(6) ? 22 : 9); i > 0; --i)
            text += char('0' + random.whole(0, 9));
        return text;
    };
    QByteArray text = random.oneIn(3) ? "-" : random.oneIn(20) ? "+" : "";
    if (random.oneIn(4))
        text += digits(1);
    else
        text += random.oneIn(20) ? '.' + digits(1) : digits(1) + '.' + digits(1);
    if (random.oneIn(10))
        text += (random.oneIn(2) ? "e" : "E-") + QByteArray::number(random.whole(0, 40));
    return text;
}

/// Blanks around a field, mostly none.
QByteArray randomBlanks(RandomSeries &random)
{
    return QByteArray(random.oneIn(10) ? random.whole(1, 3) : 0, ' ');
}

} // namespace

void tst_TextRows::linesBecomeRows_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("columns");
    QTest::addColumn<char>("separator");
    QTest::addColumn<QByteArray>("expected");
    const auto add = [](const char *name, const char *text, int columns, char separator, const char *expected) {
        QTest::newRow(name) << QByteArray(text) << columns << separator << QByteArray(expected);
    };
    add("plain", "1\n-2.5\n+3e2\n", 1, ' ', "1|-2.5|300");
    add("blanks around", "  1 \n\t2\t\r\n", 1, ' ', "1|2");
    add("columns", "1;2\n 3 ; 4 \n", 2, ';', "1 2|3 4");
    add("tabs", "1\t2\n\t4\n5\t\n", 2, '\t', "1 2|- 4|5 -");
    add("between blanks", "1 2\n  3\t 4 \n", 2, ' ', "1 2|3 4");
    add("empty fields", "1;\n;2\n", 2, ';', "1 -|- 2");
    add("a separator on the next line", "1\n;2\n", 2, ';', "1 -|- 2");
    add("a separator at the end", "1;2;\n3;4;;\n", 2, ';', "1 2|3 4");
    add("too few fields", "1;2;3\n4\n5;6\n", 3, ';', "1 2 3|4 - -|5 6 -");
    add("too many fields", "1;2\n3;4;5\n6;7\n", 2, ';', "1 2|- -|6 7");
    add("quoted", "\"1\";\"2\"\n3;\"4\"\n", 2, ';', "1 2|3 4");
    add("comments", "1\n# 2\n3 # 4\n5\n", 1, ' ', "1|3|5");
    add("gaps", "nan\n1\n-\n2\nNA\n", 1, ' ', "-|1|-|2|-");
    add("nonsense in the middle", "1\nfoo\n2\n", 1, ' ', "1|-|2");
    add("a blank line in the middle", "1\n\n2\n", 1, ' ', "1|-|2");
    add("nonsense at the end", "1\n2\nfoo\n\n", 1, ' ', "1|2");
    add("too large", "1\n1e400\n2\n", 1, ' ', "1|inf|2");
    add("not cut short", "1.5.5\n2\n1,5\n2x\n3\n", 1, ' ', "-|2|-|-|3");
    add("a NUL", "1\n", 1, ' ', "1");
    add("a number too many", "1\n2 3\n4  5 \n6\n", 1, ' ', "1|-|-|6");
    add("a number behind the last field", "1;2\n3;4 5\n6;7 \n", 2, ';', "1 2|3 -|6 7");
    add("infinities", "inf\n-Infinity\n1\n", 1, ' ', "inf|-inf|1");
}

void tst_TextRows::linesBecomeRows()
{
    QFETCH(QByteArray, text);
    QFETCH(int, columns);
    QFETCH(char, separator);
    const STextLayout layout = layoutOf(columns, separator, DecimalSign::Point);
    QTEST(shown(convert(text, layout), layout), "expected");
}

void tst_TextRows::linesAreCounted_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected"); // lines, bad ones, first bad one, open ones, of those with text, comments
    const auto add = [](const char *text, const char *expected) {
        QTest::newRow(text) << QByteArray(text) << QByteArray(expected);
    };
    add("1;2\n", "1 0 -1 0 0 0");
    add("1;2\nfoo\n3;4\n", "3 1 1 0 0 0");
    add("1;2\n\n3;4\n", "3 1 1 0 0 0");
    add("1;2\n3\n", "2 1 1 0 0 0");
    add("1;2;3\n3;4\n", "2 1 0 0 0 0");
    add("1;x\n3;4\n", "2 1 0 0 0 0");
    add("1;nan\n;\n3;4\n", "3 0 -1 0 0 0");
    add("1;1e999\n3;4\n", "2 1 0 0 0 0");
    add("1;2\nfoo\n\nbar\n", "4 0 -1 3 2 0");
    add("foo\nbar\n", "2 0 -1 2 2 0");
    add("# x\n1;2\n#\n", "3 0 -1 0 0 2");
}

void tst_TextRows::linesAreCounted()
{
    QFETCH(QByteArray, text);
    const TextRows rows = convert(text, layoutOf(2, ';', DecimalSign::Point));
    const QByteArrayList counts{QByteArray::number(rows.lines),         QByteArray::number(rows.badLines),
                                QByteArray::number(rows.firstBadLine),  QByteArray::number(rows.openLines),
                                QByteArray::number(rows.openTextLines), QByteArray::number(rows.comments)};
    QTEST(counts.join(' '), "expected");
}

void tst_TextRows::plainNumbersAreRoundedAsStrtodDoes_data()
{
    QTest::addColumn<char>("separator");
    QTest::addColumn<char>("point");
    QTest::addColumn<int>("columns");
    QTest::newRow("semicolons and commas") << ';' << ',' << 3;
    QTest::newRow("semicolons") << ';' << '.' << 3;
    QTest::newRow("commas") << ',' << '.' << 2;
    QTest::newRow("tabs and commas") << '\t' << ',' << 4;
    QTest::newRow("blanks") << ' ' << '.' << 3;
    QTest::newRow("one column") << ' ' << '.' << 1;
    QTest::newRow("one column, commas") << ' ' << ',' << 1;
    QTest::newRow("many columns") << ';' << ',' << 900; // a line is longer than what is looked through at once
}

void tst_TextRows::plainNumbersAreRoundedAsStrtodDoes()
{
    QFETCH(char, separator);
    QFETCH(char, point);
    QFETCH(int, columns);
    RandomSeries random{quint64(columns)};
    const STextLayout layout = layoutOf(columns, separator, point == ',' ? DecimalSign::Comma : DecimalSign::Point);
    const int lines = std::max(20, 60'000 / columns);
    QByteArray text;
    QVector<QVector<double>> expected{columns};
    for (int line = 0; line < lines; ++line) {
        for (int column = 0; column < columns; ++column) {
            QByteArray number = randomNumber(random);
            expected[column] << std::strtod(number.constData(), nullptr);
            text += randomBlanks(random) + number.replace('.', point) + randomBlanks(random);
            if (column + 1 < columns)
                text += separator;
        }
        text += random.oneIn(5) ? "\r\n" : "\n";
    }
    const TextRows rows = convert(text, layout);
    QCOMPARE(rows.rows, qint64(lines));
    QCOMPARE(rows.badLines, qint64(0));
    for (int column = 0; column < columns; ++column) {
        const double *const values = rows.column(column);
        COMPARE_BITS(QVector<double>(values, values + lines), expected.at(column));
    }
}

void tst_TextRows::linesOfAnyLengthAreRead()
{
    // Lines end around the ends of what is looked through at once.
    const STextLayout layout = layoutOf(2, ';', DecimalSign::Point);
    for (int blanks = 8150; blanks < 8250; ++blanks) {
        const QByteArray text = "1;2\n3;" + QByteArray(blanks, ' ') + "-4.5\n6;7\n";
        QCOMPARE(shown(convert(text, layout), layout), QByteArray("1 2|3 -4.5|6 7"));
    }
}

void tst_TextRows::signsWithoutANumberAreNoNumbers()
{
    const STextLayout layout = layoutOf(2, ';', DecimalSign::Comma);
    const QByteArray text = "1;2\n--3;4\n5;-\n1,-2;3\n4-5;6\n-;-7\n-8,5;-9\n5,;6\n,5;-0\n";
    QCOMPARE(shown(convert(text, layout), layout), QByteArray("1 2|- 4|5 -|- 3|- 6|- -7|-8.5 -9|- 6|0.5 0"));
}

void tst_TextRows::aCommentMayBeginLikeANumber()
{
    for (const QByteArray &prefix : {QByteArray("-"), QByteArray("99"), QByteArray(".")}) {
        STextLayout layout = layoutOf(1, ' ', DecimalSign::Point);
        layout.commentPrefixes = {prefix};
        const TextRows rows = convert("1\n" + prefix + "5\n2\n", layout);
        QCOMPARE(shown(rows, layout), QByteArray("1|2"));
        QCOMPARE(rows.comments, qint64(1));
    }
}

void tst_TextRows::theSeparatorComesFirst()
{
    const STextLayout layout = layoutOf(2, ',', DecimalSign::Comma); // somebody set both
    QCOMPARE(shown(convert("1,2\n3,4,5\n6,7\n", layout), layout), QByteArray("1 2|- -|6 7"));
    const STextLayout plus = layoutOf(2, '+', DecimalSign::Point);
    QCOMPARE(shown(convert("1+2\n3++4\n6+7\n", plus), plus), QByteArray("1 2|- -|6 7"));
    const STextLayout five = layoutOf(1, '5', DecimalSign::Point);
    QCOMPARE(shown(convert("15\n254\n6\n", five), five), QByteArray("1|-|6"));
}

void tst_TextRows::commentsAreNoTextInFrontOfANumber()
{
    STextLayout layout = layoutOf(2, ',', DecimalSign::Point);
    layout.columns[0].kind = STextColumn::Kind::Text;
    const TextRows rows = convert("a,1\n#b,2\n # c,3\nd,4\n\r#e,5\nf,6\n", layout);
    QCOMPARE(shown(rows, layout), QByteArray("1|4|6"));
    QCOMPARE(rows.comments, qint64(3));
}

void tst_TextRows::aSectionEndsTheNumbers()
{
    STextLayout layout = layoutOf(1, ' ', DecimalSign::Point);
    layout.hasSections = true;
    const TextRows rows = convert("1\n2\n$ROI:\n0\n7\n", layout);
    QCOMPARE(shown(rows, layout), QByteArray("1|2"));
    QVERIFY(rows.ended);
    QCOMPARE(rows.openLines, qint64(3));
    QCOMPARE(rows.lines, qint64(5));
    layout.hasSections = false;
    QCOMPARE(shown(convert("1\n2\n$ROI:\n0\n7\n", layout), layout), QByteArray("1|2|-|0|7"));
}

void tst_TextRows::rowsDoNotDependOnWhereATextIsCut()
{
    RandomSeries random(5);
    static constexpr const char *fields[] = {"1",     "-2.5", "1,5", "", "nan", "x", "1e5", "0.1234567890123456789",
                                             "\"7\"", " 8 "};
    for (int round = 0; round < 300; ++round) {
        const STextLayout layout = layoutOf(2, ';', DecimalSign::Either);
        QByteArray text;
        for (int i = random.whole(1, 30); i > 0; --i)
            text += QByteArray(fields[random.whole(0, 9)]) + ';' + fields[random.whole(0, 9)]
                + (random.oneIn(4) ? "\r\n" : "\n");
        text += "1;2\n"; // closes what is open
        const QByteArray whole = shown(convert(text, layout), layout);
        const int cut = text.indexOf('\n', random.whole(0, text.size() - 2)) + 1;
        const TextRows front = convert(text.left(cut), layout);
        QByteArrayList parts{shown(front, layout)};
        for (qint64 i = 0; i < front.openLines; ++i)
            parts << "- -";
        if (cut < text.size())
            parts << shown(convert(text.mid(cut), layout), layout);
        parts.removeAll({});
        QCOMPARE(parts.join('|'), whole);
    }
}

void tst_TextRows::anyBytesAreTaken()
{
    RandomSeries random(6);
    static constexpr char likely[] = "0123456789.,;eE+-\"\n\r\t #nan$:";
    for (int round = 0; round < 3000; ++round) {
        QByteArray text;
        for (int i = random.whole(0, 60); i > 0; --i)
            text += random.oneIn(8) ? char(random.whole(0, 255)) : likely[random.whole(0, int(sizeof likely) - 2)];
        text += '\n';
        for (const char separator : {';', ',', '\t', ' '}) {
            const TextRows rows = convert(text, layoutOf(random.whole(1, 4), separator, DecimalSign::Either));
            QVERIFY(rows.rows + rows.openLines + rows.comments <= rows.lines);
            QCOMPARE(rows.lines, qint64(text.count('\n')));
        }
    }
}

QTEST_GUILESS_MAIN(tst_TextRows)
#include "tst_TextRows.moc"
