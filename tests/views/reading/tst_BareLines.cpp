// SPDX-License-Identifier: MIT
#include "views/reading/BareLines.h"

#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"
#include "views/reading/TextRows.h"

#include <QtTest>

#include <cstdlib>

#include <sys/mman.h>

class tst_BareLines : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void settledLinesAreTaken_data();
    void settledLinesAreTaken();
    void longNumbersAreLeft();
    void noOtherByteIsTakenForADigit_data();
    void noOtherByteIsTakenForADigit();
    void linesOfAnyShapeAreReadAsWithACloserLook();
    void whatIsDecimalMayChange();
    void shapesWithoutEndAreLeft();
    void noByteBehindTheMarginIsRead();
};

namespace {

STextLayout layoutOf(int columns, char separator, char point)
{
    STextLayout layout;
    layout.separator = separator;
    layout.decimalSign = point == ',' ? DecimalSign::Comma : DecimalSign::Point;
    layout.columns.resize(columns);
    return layout;
}

struct SConverted
{
    QVector<double> values; ///< row by row
    qint64 badLines = 0;
};

SConverted converted(const QByteArray &text, const STextLayout &layout)
{
    const QByteArray padded = text + QByteArray(textMargin, '7');
    TextRows rows;
    convertText(padded.constData(), padded.constData() + text.size(), layout, rows);
    SConverted all;
    all.badLines = rows.badLines + rows.openLines;
    for (qint64 row = 0; row < rows.rows; ++row) {
        for (int column = 0; column < int(layout.columns.size()); ++column)
            all.values << rows.column(column)[row];
    }
    return all;
}

/// The same, line by line: a comment that begins like a number forbids every faster way.
SConverted convertedWithCare(const QByteArray &text, STextLayout layout)
{
    layout.commentPrefixes = {"-\1\2\3\4\5\6\7"};
    return converted(text, layout);
}

void compareWithCare(const QByteArray &text, const STextLayout &layout)
{
    const SConverted fast = converted(text, layout);
    const SConverted careful = convertedWithCare(text, layout);
    COMPARE_BITS(fast.values, careful.values);
    QCOMPARE(fast.badLines, careful.badLines);
}

/// What is left of a text, in bytes.
qint64 left(const QByteArray &text, int columns, char separator, char point)
{
    const QByteArray padded = text + QByteArray(textMargin, '7');
    const int lines = text.count('\n');
    std::vector<std::vector<double>> values(size_t(columns), std::vector<double>(size_t(lines + BareLines::spareRows)));
    std::vector<double *> places;
    for (std::vector<double> &column : values)
        places.push_back(column.data());
    BareLines bare;
    bare.prepareFor(separator, places);
    qint64 row = 0;
    const char *const end = padded.constData() + text.size();
    return end - bare.take(padded.constData(), end, point, row);
}

} // namespace

void tst_BareLines::initTestCase()
{
    if (!BareLines::areSupported())
        QSKIP("This processor, or compiler, hasn't the instructions.");
}

void tst_BareLines::settledLinesAreTaken_data()
{
    QTest::addColumn<QByteArray>("line"); // "9" stands for any digit
    QTest::addColumn<int>("columns");
    QTest::addColumn<char>("separator");
    QTest::addColumn<char>("point");
    const auto add = [](const char *line, int columns, char separator, char point) {
        QTest::newRow(line) << QByteArray(line) + '\n' << columns << separator << point;
    };
    add("999,999;999,999;999,999", 3, ';', ',');
    add("9", 1, ' ', '.');
    add("-999.999", 1, ' ', '.');
    add("99\r", 1, ' ', '.');
    add("9;9", 2, ';', '.');
    add("999;-9.9\r", 2, ';', '.');
    add("+9.9\t99\t-.9", 3, '\t', '.');
    add("9|9|9|9", 4, '|', '.');
    add("9,9,9,9,9", 5, ',', '.');
    add("9.99,9.99,9.99,9.99,9.99,9.99,9.99,9.99,9.99,9.99,9.99", 11, ',', '.');
    add("999999999999999;-9,99999999999999", 2, ';', ',');
    add("99999999.9999999;9", 2, ';', '.');
    add("-999,9999;-999,9999;-99;99999999", 4, ';', ','); // two numbers within 16 bytes
    add("-9999,9999;-999,9999;-99;99999999", 4, ';', ',');
    add("9.9999999;9.9999999", 2, ';', '.');
    add("9;99999999;     99999999;9", 4, ';', '.');
    add(" 9.9; 9.9 ;9 ", 3, ';', '.');
    add("   99.99  -9.9     9", 3, ' ', '.');
    add("   99.99999     -99.9    9999.9999   9.9   ", 4, ' ', '.');
    add("9 9\t9", 3, ' ', '.');
}

void tst_BareLines::settledLinesAreTaken()
{
    QFETCH(QByteArray, line);
    QFETCH(int, columns);
    QFETCH(char, separator);
    QFETCH(char, point);
    RandomSeries random(1);
    QByteArray text;
    QVector<double> expected;
    for (int i = 0; i < 500; ++i) {
        QByteArray written = line;
        for (char &c : written)
            c = c == '9' ? char('0' + random.whole(0, 9)) : c;
        text += written;
        for (const char divider : {'\t', ' ', '|', ';', ','})
            written = divider == point ? written : written.replace(divider, '\n');
        for (const QByteArray &field : written.replace(point, '.').split('\n')) {
            if (!field.trimmed().isEmpty())
                expected << std::strtod(field.trimmed().constData(), nullptr);
        }
    }
    QVERIFY(left(text, columns, separator, point) < 32 + line.size());
    const SConverted rows = converted(text, layoutOf(columns, separator, point));
    COMPARE_BITS(rows.values, expected);
    QCOMPARE(rows.badLines, qint64(0));
}

void tst_BareLines::longNumbersAreLeft()
{
    for (const QByteArray &line : {QByteArray("1234567890123456\n"), QByteArray("1.234567890123456\n"),
                                   QByteArray("0000000000000000\n"), QByteArray("1e5\n"), QByteArray("5.\n")}) {
        const QByteArray text = line.repeated(50);
        QCOMPARE(left(text, 1, ' ', '.'), qint64(text.size()));
        compareWithCare(text, layoutOf(1, ' ', '.'));
    }
}

void tst_BareLines::noOtherByteIsTakenForADigit_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("columns");
    QTest::addColumn<char>("separator");
    QTest::newRow("one column") << QByteArray("-12.5\n") << 1 << ' ';
    QTest::newRow("three columns") << QByteArray("12.5;-3;40.25\n") << 3 << ';';
    QTest::newRow("five columns") << QByteArray("1,22,-3.3,4,5\r\n") << 5 << ',';
    QTest::newRow("blanks") << QByteArray(" 1.5  -2 +33\n") << 3 << ' ';
    QTest::newRow("a long line") << QByteArray("1.2345678;2.3456789;-3.456789;4.5678901\n") << 4 << ';';
}

void tst_BareLines::noOtherByteIsTakenForADigit()
{
    QFETCH(QByteArray, line);
    QFETCH(int, columns);
    QFETCH(char, separator);
    const STextLayout layout = layoutOf(columns, separator, '.');
    for (int place = 0; place < line.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            QByteArray other = line;
            other[place] = char(byte);
            compareWithCare(line + line + other + line.repeated(20), layout);
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void tst_BareLines::linesOfAnyShapeAreReadAsWithACloserLook()
{
    RandomSeries random(2);
    static constexpr const char *parts[] = {"1",
                                            "-23",
                                            "+4.5",
                                            ".6",
                                            "7.",
                                            "-",
                                            "0,8",
                                            "",
                                            " ",
                                            "\t",
                                            "\r",
                                            "9e1",
                                            "1234567890123456",
                                            "-0.00000000000001",
                                            "x",
                                            "\"1\"",
                                            "1 2",
                                            "--3"};
    for (int round = 0; round < 4000; ++round) {
        const char separator = ";, \t"[random.whole(0, 3)];
        const int columns = random.whole(1, 7);
        const int likely = random.whole(0, 9);
        QByteArray text;
        for (int line = random.whole(1, 40); line > 0; --line) {
            for (int column = random.oneIn(30) ? columns + 1 : columns; column > 0; --column) {
                text += parts[random.oneIn(25) ? random.whole(0, int(std::size(parts)) - 1) : likely % 3];
                text += column > 1 || random.oneIn(50) ? QByteArray(1, separator) : QByteArray();
            }
            text += random.oneIn(20) ? "\r\n" : "\n";
        }
        compareWithCare(text, layoutOf(columns, separator, random.oneIn(2) ? '.' : ','));
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_BareLines::whatIsDecimalMayChange()
{
    STextLayout layout = layoutOf(2, ';', '.');
    layout.decimalSign = DecimalSign::Either;
    const QByteArray text = QByteArray("1.5;2.5\n").repeated(30) + QByteArray("1,5;2,5\n").repeated(30)
        + QByteArray("3.5;4.5\n").repeated(30);
    compareWithCare(text, layout);
}

void tst_BareLines::shapesWithoutEndAreLeft()
{
    // Learning a shape costs more than reading a line of it with less speed.
    RandomSeries random(3);
    QByteArray text;
    for (int line = 0; line < 20'000; ++line) {
        for (int column = 0; column < 4; ++column)
            text += QByteArray::number(random.whole(0, 1) - 0.5).left(random.whole(0, 1) * 4)
                + QByteArray(random.whole(1, 5), '7') + ";\n"[column == 3];
    }
    QVERIFY(left(text, 4, ';', '.') > text.size() / 2);
    compareWithCare(text, layoutOf(4, ';', '.'));
}

void tst_BareLines::noByteBehindTheMarginIsRead()
{
    constexpr int page = 4096; // behind the margin is one that can't be read
    void *const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    QVERIFY(pages != MAP_FAILED && mprotect(static_cast<char *>(pages) + page, page, PROT_NONE) == 0);
    char *const end = static_cast<char *>(pages) + page - textMargin;
    for (int columns = 1; columns <= 6; ++columns) {
        for (int size = 1; size < 200; ++size) {
            QByteArray text = QByteArray("1.5;-22;3;4;55.25;6;").repeated(10).left(size);
            for (int i = 0, fields = 0; i < size; ++i) {
                if (text.at(i) == ';' && ++fields % columns == 0)
                    text[i] = '\n';
            }
            text[size - 1] = '\n';
            std::copy(text.begin(), text.end(), end - size);
            TextRows rows;
            convertText(end - size, end, layoutOf(columns, ';', '.'), rows);
            QCOMPARE(rows.lines, qint64(text.count('\n')));
        }
    }
    munmap(pages, 2 * page);
}

QTEST_GUILESS_MAIN(tst_BareLines)
#include "tst_BareLines.moc"
