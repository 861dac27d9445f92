// SPDX-License-Identifier: MIT
#include "sources/NumberLines.h"
#include "tests/support/Bits.h"
#include "tests/support/RandomSeries.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

namespace {

/// The plain way, which defines the result.
QVector<double> plainNumberLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {-1.0};
    QVector<double> values;
    while (!file.atEnd())
        values.append(QString::fromUtf8(file.readLine()).toDouble());
    return values;
}

/// A device of a given size that gives something else.
class OddDevice : public QIODevice
{
public:
    OddDevice(qint64 size, const QByteArray &content, bool fails) : m_size(size), m_content(content), m_fails(fails) {}
    qint64 size() const override { return m_size; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 position = m_position;
        const qint64 count = qMin(qMax(m_content.size() - position, qint64(0)), maxSize);
        if (count == 0 && m_fails) {
            setErrorString(QStringLiteral("the disk is gone"));
            return -1;
        }
        std::memcpy(data, m_content.constData() + position, size_t(count));
        m_position += count;
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }
    bool seek(qint64 position) override
    {
        m_position = position;
        return QIODevice::seek(position);
    }

private:
    qint64 m_size;
    QByteArray m_content;
    bool m_fails;
    qint64 m_position = 0;
};

/// Text that is mostly numbers, and all that can be wrong with them.
class RandomText
{
public:
    explicit RandomText(quint64 seed) : m_random(seed) {}

    QByteArray next()
    {
        QByteArray text;
        const int style = m_random.whole(0, 5);
        const int lines = m_random.oneIn(40) ? m_random.whole(0, 5000) : m_random.whole(0, 40);
        for (int i = 0; i < lines; ++i)
            text += line(style) + lineEnd(style);
        if (!m_random.oneIn(3))
            text += line(style);
        return text;
    }

    RandomSeries &random() { return m_random; }

private:
    QByteArray pick(std::initializer_list<const char *> texts)
    {
        return texts.begin()[m_random.whole(0, int(texts.size()) - 1)];
    }

    QByteArray digits()
    {
        QByteArray text;
        const int longest = m_random.oneIn(10) ? 40 : 6;
        for (int i = m_random.whole(0, longest); i > 0; --i)
            text += char('0' + m_random.whole(0, 9));
        return text;
    }

    QByteArray decimal()
    {
        QByteArray text = pick({"", "", "", "-", "+"}) + digits();
        if (m_random.oneIn(2))
            text += '.' + digits();
        if (m_random.oneIn(4))
            text += pick({"e", "E"}) + pick({"", "-", "+"})
                + QByteArray::number(m_random.whole(0, m_random.oneIn(4) ? 400 : 20));
        return text;
    }

    QByteArray printed()
    {
        double value;
        const quint64 bits =
            quint64(m_random.whole(INT_MIN, INT_MAX)) << 32 ^ quint32(m_random.whole(INT_MIN, INT_MAX));
        std::memcpy(&value, &bits, sizeof value);
        return QByteArray::number(value, "eEfgG"[m_random.whole(0, 4)] == 'f' ? 'g' : 'e', m_random.whole(1, 20));
    }

    QByteArray oddity()
    {
        return pick({"inf",
                     "-inf",
                     "+inf",
                     "INF",
                     "infinity",
                     "nan",
                     "NaN",
                     "-nan",
                     "nan(1)",
                     "1e400",
                     "-1e400",
                     "1e-400",
                     "-1e-400",
                     "4.9e-324",
                     "2.4e-324",
                     "1.7976931348623157e308",
                     "1.7976931348623159e308",
                     "0x10",
                     "0x1p3",
                     "1p3",
                     "1,5",
                     "1,000",
                     "1 000",
                     "1_000",
                     "1e",
                     "1e+",
                     ".",
                     "-",
                     "+",
                     "-.",
                     "e5",
                     ".e5",
                     "5.e5",
                     "--1",
                     "+-1",
                     "1-",
                     "1f",
                     "1d",
                     "1L",
                     "-0",
                     "-0.0",
                     "00012",
                     "0e9",
                     "# comment",
                     "x,y",
                     "9007199254740993",
                     "9007199254740992.9999999999",
                     "123456789012345678901234567890",
                     "0.1000000000000000055511151231257827021181583404541015625",
                     "1e23",
                     "8.5e22",
                     "2.2250738585072011e-308",
                     "\xEF\xBB\xBF"
                     "1",
                     "\xEF\xBB\xBF",
                     "1\xC2\xA0",
                     "\xC2\xA0"
                     "2",
                     "\xD9\xA1",
                     "\xEF\xBC\x91",
                     "\xE2\x80",
                     "\xFF"
                     "1",
                     "1\xC2",
                     "\xE2\x88\x92"
                     "1",
                     "1 2",
                     "'1'",
                     "\"1\""});
    }

    QByteArray blanks()
    {
        QByteArray text;
        for (int i = m_random.oneIn(4) ? m_random.whole(0, 5) : 0; i > 0; --i)
            text += m_random.oneIn(6) ? pick({"\v", "\f", "\xC2\xA0", "\xC2\x85"}) : pick({" ", " ", "\t"});
        return text;
    }

    QByteArray bytes()
    {
        QByteArray text;
        for (int i = m_random.whole(0, 12); i > 0; --i)
            text += m_random.oneIn(3) ? char(m_random.whole(0, 255)) : "0123456789.eE+- \t\r\n"[m_random.whole(0, 18)];
        return text;
    }

    QByteArray line(int style)
    {
        QByteArray text;
        switch (style) {
        case 0:
            return QByteArray::number(m_random.whole(0, 100'000)); // nothing but counts
        case 1:
            return printed();
        case 2:
            text = blanks() + (m_random.oneIn(3) ? oddity() : decimal()) + blanks();
            break;
        case 3:
            text = blanks() + decimal() + blanks();
            break;
        case 4:
            text = m_random.oneIn(2) ? bytes() : decimal();
            break;
        default:
            text = m_random.oneIn(3) ? oddity() : printed();
        }
        if (m_random.oneIn(60))
            text.insert(m_random.whole(0, text.size()), "\r");
        if (m_random.oneIn(60))
            text.insert(m_random.whole(0, text.size()), '\0');
        if (m_random.oneIn(200))
            text.insert(m_random.whole(0, text.size()),
                        QByteArray(m_random.whole(16'370, 16'400), " 0\r"[m_random.whole(0, 2)]));
        return text;
    }

    QByteArray lineEnd(int style)
    {
        if (style < 2)
            return style ? "\n" : "\r\n";
        return pick({"\n", "\n", "\n", "\r\n", "\r\r\n", " \r\n", "\r \n"});
    }

    RandomSeries m_random;
};

} // namespace

class tst_NumberLines : public QObject
{
    Q_OBJECT

private slots:
    void everyLineIsOneValue_data();
    void everyLineIsOneValue();
    void aCarriageReturnInsideALineMeansWhatItMeansToQt();
    void randomTextsGiveTheBitsOfThePlainWay();
    void numbersAcrossTheEndOfABlockAreWhole();
    void aLongTextIsTheSameInAnyNumberOfParts();
    void roomIsMadeWhileOthersWrite();
    void aLineOfTwoHundredMegabytes();
    void aLineThatIsTooLongFails();
    void moreLinesThanTheLimitFail();
    void asManyLinesAsTheLimitDoNot();
    void aReadErrorFails();
    void aDeviceThatEndsEarlyGivesWhatItHas();
    void aDeviceWithoutASizeIsEmpty();

private:
    void compareWithPlain(const QByteArray &text, const QVector<SReadingParts> &parts = {{}});

    QTemporaryDir m_folder;
};

void tst_NumberLines::compareWithPlain(const QByteArray &text, const QVector<SReadingParts> &parts)
{
    const QString path = m_folder.filePath(QStringLiteral("numbers"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
    file.close();
    const QVector<double> expected = plainNumberLines(path);
    for (const SReadingParts &each : parts) {
        QVERIFY(file.open(QIODevice::ReadOnly));
        const SNumberLines lines = readNumberLines(file, longestSeries, each);
        file.close();
        QVERIFY(lines.error.isEmpty());
        if (sameBits(lines.values, expected))
            continue;
        const QByteArray how = QByteArray::number(each.blockSize) + " bytes, " + QByteArray::number(each.threads);
        QFAIL((how + " threads: " + difference(lines.values, expected) + " in "
               + text.left(2000).toPercentEncoding("\n "))
                  .constData());
    }
}

void tst_NumberLines::everyLineIsOneValue_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVector<double>>("values");
    const double infinity = std::numeric_limits<double>::infinity();

    QTest::newRow("nothing") << QByteArray() << QVector<double>{};
    QTest::newRow("one line end") << QByteArray("\n") << QVector<double>{0.0};
    QTest::newRow("no line end") << QByteArray("5") << QVector<double>{5.0};
    QTest::newRow("five lines") << QByteArray("1\n2.5\nabc\n\n4") << QVector<double>{1.0, 2.5, 0.0, 0.0, 4.0};
    QTest::newRow("a line end at the end") << QByteArray("1\n2\n") << QVector<double>{1.0, 2.0};
    QTest::newRow("carriage returns") << QByteArray("1\r\n2\r\n3\r\r\n") << QVector<double>{1.0, 2.0, 3.0};
    QTest::newRow("blanks") << QByteArray(" 1\n2 \n\t3\t\n\v4\f\n") << QVector<double>{1.0, 2.0, 3.0, 4.0};
    QTest::newRow("decimal comma") << QByteArray("1,5\n") << QVector<double>{0.0};
    QTest::newRow("several fields") << QByteArray("1 2\n3;4\n") << QVector<double>{0.0, 0.0};
    QTest::newRow("byte order mark") << QByteArray(
        "\xEF\xBB\xBF"
        "1\n\xEF\xBB\xBF"
        "2\n") << QVector<double>{1.0, 2.0};
    QTest::newRow("NUL ends the number") << QByteArray("12\0 34\n\0\n", 9) << QVector<double>{12.0, 0.0};
    QTest::newRow("infinities") << QByteArray("inf\n-inf\n") << QVector<double>{infinity, -infinity};
    QTest::newRow("too large") << QByteArray("1e400\n-1e400\n") << QVector<double>{infinity, -infinity};
    QTest::newRow("hexadecimal") << QByteArray("0x10\n") << QVector<double>{0.0};
    QTest::newRow("signs") << QByteArray("+1\n-1\n-0\n") << QVector<double>{1.0, -1.0, -0.0};
    QTest::newRow("points") << QByteArray(".5\n5.\n.\n") << QVector<double>{0.5, 5.0, 0.0};
}

void tst_NumberLines::everyLineIsOneValue()
{
    QFETCH(QByteArray, text);
    QFETCH(QVector<double>, values);
    QBuffer buffer(&text);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    const SNumberLines lines = readNumberLines(buffer);
    QVERIFY(lines.error.isEmpty());
    COMPARE_BITS(lines.values, values);
    QVector<SReadingParts> parts{{}};
    for (int blockSize = 1; blockSize < 12; ++blockSize)
        parts << SReadingParts{blockSize, 1} << SReadingParts{blockSize, 3};
    compareWithPlain(text, parts);
}

void tst_NumberLines::aCarriageReturnInsideALineMeansWhatItMeansToQt()
{
    compareWithPlain("1\r2\n3\r4\n\r5\n6\r");
    for (int padding = 16'370; padding < 16'390; ++padding)
        compareWithPlain(QByteArray(padding, '\n') + "1\r2\n3\r4\r\n\r5\n6\r");
    for (int padding = 16'370; padding < 16'390; ++padding)
        compareWithPlain(QByteArray(padding, ' ') + "1\r2\n3\r4\r\n\r5\n6\r");
    compareWithPlain(QByteArray("1\n").repeated(700'000) + "1\r2\n3\n"); // after several blocks
}

void tst_NumberLines::randomTextsGiveTheBitsOfThePlainWay()
{
    RandomText texts(1);
    for (int round = 0; round < 2500; ++round) {
        RandomSeries &random = texts.random();
        const int blockSize = random.oneIn(2) ? random.whole(1, 40) : random.whole(100, 20'000);
        compareWithPlain(texts.next(), {{}, {blockSize, 1}, {blockSize, random.whole(2, 4)}});
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_NumberLines::numbersAcrossTheEndOfABlockAreWhole()
{
    const int block = SReadingParts().blockSize;
    compareWithPlain(QByteArray("12345.678\r\n").repeated(200'000)); // no line ends where a block does
    for (const char *line : {"12345.678\n", "12345.678\r\n", "  -1e5  \r\n",
                             "abc\xC2\xA0"
                             "1\n"}) {
        for (int before = 1; before < 14; ++before)
            compareWithPlain(QByteArray(block - before - 1, '0') + '\n' + QByteArray(line).repeated(3));
    }
}

void tst_NumberLines::aLongTextIsTheSameInAnyNumberOfParts()
{
    RandomText texts(2);
    QByteArray text;
    while (text.size() < 3'000'000) {
        const QByteArray next = texts.next();
        if (!next.contains('\r'))
            text += next + '\n';
    }
    compareWithPlain(text, {{}, {1 << 18, 2}, {1000, 1}, {1000, 2}, {1000, 7}, {77, 3}, {1 << 22, 2}});
    compareWithPlain(text + "1\r2\n" + text.left(1'000'000), {{}, {1000, 1}, {1000, 7}});
}

void tst_NumberLines::roomIsMadeWhileOthersWrite()
{
    // Long lines in front promise few values, and there come ever more of them.
    QByteArray text;
    for (int length = 20'000; length > 0; length = length * 9 / 10)
        text += (QByteArray(length, ' ') + "1.5\n").repeated(100'000 / (length + 4) + 1);
    text += QByteArray("2\n").repeated(300'000);
    compareWithPlain(text, {{}, {500, 1}, {500, 2}, {500, 4}, {30'000, 4}});
}

void tst_NumberLines::aLineOfTwoHundredMegabytes()
{
    constexpr int length = 200'000'000;
    compareWithPlain("1\n" + QByteArray(length, ' ') + "7\n2");
}

void tst_NumberLines::aLineThatIsTooLongFails()
{
    class Endless : public OddDevice
    {
    public:
        Endless() : OddDevice(1LL << 40, {}, false) {}

    protected:
        qint64 readData(char *data, qint64 maxSize) override
        {
            std::memset(data, '0', size_t(maxSize));
            return maxSize;
        }
    } device;
    QVERIFY(device.open(QIODevice::ReadOnly));
    const SNumberLines lines = readNumberLines(device);
    QVERIFY2(lines.error.contains(QStringLiteral("line of more than")), qPrintable(lines.error));
    QVERIFY(lines.values.isEmpty());
}

void tst_NumberLines::moreLinesThanTheLimitFail()
{
    for (const char *line : {"1\n", "x\n", "1\r1\n"}) {
        QByteArray text = QByteArray(line).repeated(5001);
        QBuffer buffer(&text);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const SNumberLines lines = readNumberLines(buffer, 5000, {100, 3});
        QVERIFY2(lines.error.contains(QStringLiteral("5000 lines")), qPrintable(lines.error));
        QVERIFY(lines.values.isEmpty());
    }
}

void tst_NumberLines::asManyLinesAsTheLimitDoNot()
{
    for (const int limit : {1, 4095, 4096, 4097, 5000}) {
        QByteArray text = QByteArray("1\n").repeated(limit);
        QBuffer buffer(&text);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const SNumberLines lines = readNumberLines(buffer, limit, {100, 3});
        QVERIFY(lines.error.isEmpty());
        COMPARE_BITS(lines.values, QVector<double>(limit, 1.0));
    }
}

void tst_NumberLines::aReadErrorFails()
{
    for (const char *text : {"", "1\n2\n3", "1\r2\n3"}) {
        OddDevice device(100, text, true);
        QVERIFY(device.open(QIODevice::ReadOnly));
        const SNumberLines lines = readNumberLines(device);
        QCOMPARE(lines.error, QStringLiteral("the disk is gone"));
        QVERIFY(lines.values.isEmpty());
    }
}

void tst_NumberLines::aDeviceThatEndsEarlyGivesWhatItHas()
{
    for (const char *text : {"1\n2\n3", "1\n2\n3\n",
                             " 1\n2\n\xC2\xA0"
                             "3\n"}) {
        OddDevice device(1'000'000, text, false);
        QVERIFY(device.open(QIODevice::ReadOnly));
        const SNumberLines lines = readNumberLines(device);
        QVERIFY(lines.error.isEmpty());
        COMPARE_BITS(lines.values, (QVector<double>{1.0, 2.0, 3.0}));
    }
    OddDevice device(1'000'000, "1\r2\n3\n", false);
    QVERIFY(device.open(QIODevice::ReadOnly));
    QCOMPARE(readNumberLines(device).values.size(), 2);
}

void tst_NumberLines::aDeviceWithoutASizeIsEmpty()
{
    OddDevice device(0, "1\n2\n", false); // as some file systems give what they make up while it is read
    QVERIFY(device.open(QIODevice::ReadOnly));
    const SNumberLines lines = readNumberLines(device);
    QVERIFY(lines.error.isEmpty());
    QVERIFY(lines.values.isEmpty());
}

QTEST_GUILESS_MAIN(tst_NumberLines)
#include "tst_NumberLines.moc"
