// SPDX-License-Identifier: MIT
#include "HeldReading.h"
#include "Reading.h"

#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

class tst_SeriesReader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void textsAreReadAsTheyShould_data();
    void textsAreReadAsTheyShould();
    void whatCannotBeReadIsSaid_data();
    void whatCannotBeReadIsSaid();
    void propertiesReplaceGuesses_data();
    void propertiesReplaceGuesses();
    void columnsAreChosen_data();
    void columnsAreChosen();
    void whatMayBeXIsSaidUntilItIsChosen();
    void theLayoutIsKnown();
    void timesBecomeX();
    void storesAreUsedAgain();
    void longFilesAreReadInOrder_data();
    void longFilesAreReadInOrder();
    void nothingIsReadUnasked();
    void severalPropertiesReadOnce();
    void theFirstValuesComeSoon();
    void propertiesStartWithTheirDefaults();

private:
    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    QTemporaryDir m_folder;
};

void tst_SeriesReader::textsAreReadAsTheyShould_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("expected"); // columns between bars
    QTest::addColumn<int>("badLines");
    QTest::addColumn<int>("firstBadLine");
    QTest::addColumn<QString>("detected"); // a part of it
    const auto add = [](const char *name, const QByteArray &text, const char *expected, const char *detected = "",
                        int badLines = 0, int firstBadLine = 0) {
        QTest::newRow(name) << text << QByteArray(expected) << badLines << firstBadLine << QString::fromUtf8(detected);
    };
    add("numbers", "1\n2\n3\n", "1 2 3", "1 column");
    add("one number", "42", "42");
    add("one number and its end", "42\n", "42");
    add("no end of the last line", "1\n2.5", "1 2.5");
    add("negative numbers", "-1\n+2\n-0.5\n", "-1 2 -0.5");
    add("exponents", "1e3\n-2.5E-3\n1.e+2\n", "1000 -0.0025000000000000001 100");
    add("blanks in front", "   1\n\t2\n 3\n", "1 2 3");
    add("blanks behind", "1  \n2\t\n3 \r\n", "1 2 3");
    add("CRLF", "1\r\n2\r\n", "1 2");
    add("carriage returns alone", "1;2\r3;4\r", "1 3|2 4");
    add("semicolons with decimal commas", "1,5;2,5\n3;4,25\n", "1.5 3|2.5 4.25", "semicolons; decimal comma");
    add("semicolons with points", "1.5;2\n3;4\n", "1.5 3|2 4", "2 columns between semicolons");
    add("tabs", "1\t2\n3\t4\n", "1 3|2 4", "tabs");
    add("tabs with decimal commas", "1,5\t2\n3\t4,5\n", "1.5 3|2 4.5", "decimal comma");
    add("tabs with an empty field", "1\t\t3\n4\t5\t6\n", "1 4|- 5|3 6");
    add("commas", "1.5,2\n3,4.5\n", "1.5 3|2 4.5", "commas");
    add("decimal commas alone", "1,5\n2,75\n", "1.5 2.75", "taken as decimal");
    add("pairs that count up", "1,5\n2,7\n3,9\n", "1 2 3|5 7 9", "taken as separator");
    add("zeros, then decimal commas", QByteArray("0\n").repeated(200000) + "1,5\n", "", "taken as decimal");
    add("blanks", "1 2\n 3   4\n", "1 3|2 4", "blanks");
    add("bars", "1|2\n3|4\n", "1 3|2 4");
    add("a separator at the end", "1;2;\n3;4;\n", "1 3|2 4");
    add("quoted commas", "\"a, b\",1.5\n\"c, d\",2.5\n", "1.5 2.5", "column 1 is text");
    add("quoted numbers", "\"1,5\";\"2,5\"\n\"3,5\";\"4,5\"\n", "1.5 3.5|2.5 4.5");
    add("names", "t;U\n1;2\n3;4\n", "1 3|2 4", "1 line before the numbers");
    add("names and units", "t [s];U [V]\n1;2\n3;4\n", "1 3|2 4", "names in the head");
    add("a head of numbers", "3 1024\n1.5\n2.5\n3.5\n", "1.5 2.5 3.5", "1 line before the numbers");
    add("a head of prose", "Measured in 2026 by X\nwith 3 of them\n\n1 2\n3 4\n5 6\n", "1 3 5|2 4 6", "3 lines before");
    add("comments in front", "# a\n% b\n// c\n1\n2\n", "1 2", "3 lines before");
    add("a comment in the middle", "1\n# x\n2\n3\n", "1 2 3", "1 line of comments");
    add("comments behind numbers", "1 # a\n2 # b\n3 # c\n4\n", "1 2 3 4");
    add("nonsense in the middle", "1\n2\n3\nfoo\n5\n", "1 2 3 - 5", "the first one line 4", 1, 4);
    add("nonsense twice", "1\n2\n3\nfoo\nbar\n5\nx\n6\n", "1 2 3 - - 5 - 6", "3 lines not understood", 3, 4);
    add("a blank line in the middle", "1\n2\n3\n\n5\n", "1 2 3 - 5", "", 1, 4);
    add("blank lines between all", "1\n\n2\n\n3\n\n4\n", "1 2 3 4", "left out");
    add("blank lines at the end", "1\n2\n\n\n", "1 2");
    add("text behind the numbers", "1\n2\n3\nend of\nmeasurement\n", "1 2 3", "2 lines after the numbers");
    add("missing columns", "1,2,3\n4,5\n6,7,8\n9,10,11\n", "1 4 6 9|2 5 7 10|3 - 8 11", "", 1, 2);
    add("too many columns in a line", "1;2\n3;4\n5;6;7\n8;9\n", "1 3 - 8|2 4 - 9", "", 1, 3);
    add("nan", "1\nnan\nNaN\n-nan\n2\n", "1 - - - 2");
    add("words for nothing", "1;NA\nnull;2\n-;3\n", "1 - -|- 2 3");
    add("infinities", "1\ninf\n-Infinity\n2\n", "1 - - 2");
    add("1e400", "1\n2\n1e400\n3\n", "1 2 - 3", "the first one line 3", 1, 3);
    add("1e-400", "1\n1e-400\n", "1 0");
    add("more digits than a double has", "0.12345678901234567890\n123456789012345678901234567890\n",
        "0.12345678901234568 1.2345678901234568e+29");
    add("German thousands in a column", "1,5;1.234,5\n2,5;999,5\n3,5;7,5\n", "1.5 2.5 3.5|- 999.5 7.5", "", 1, 1);
    add("thousands in quotes", "1;\"1,234\"\n2;\"999.5\"\n3;\"1.5\"\n", "1 2 3|- 999.5 1.5", "", 1, 1);
    add("hexadecimal is not cut short", "1\n2\n3\n0x10\n4\n", "1 2 3 - 4", "", 1, 4);
    add("two points are not cut short", "1.5\n2.5\n3.5\n1.2.3\n4\n", "1.5 2.5 3.5 - 4", "", 1, 4);
    add("a byte order mark",
        "\xEF\xBB\xBF"
        "1;2\n3;4\n",
        "1 3|2 4");
    add("UTF-16",
        QByteArray("\xFF\xFE"
                   "1\0,\0"
                   "5\0\n\0"
                   "2\0\n\0",
                   12),
        "1.5 2", "UTF-16");
    add("UTF-16, most significant byte first",
        QByteArray("\xFE\xFF"
                   "\0"
                   "1\0\n\0"
                   "2\0\n",
                   10),
        "1 2", "UTF-16");
    add("UTF-16 without a mark",
        QByteArray("1\0.\0"
                   "5\0\n\0"
                   "2\0\n\0",
                   12),
        "1.5 2", "UTF-16");
    add("Latin-1 names",
        "Gr\xF6\xDF"
        "e;y\n1;2\n3;4\n",
        "1 3|2 4");
    add("NUL far behind", QByteArray("1\n").repeated(200000) + QByteArray("\0\n2\n", 4), "",
        "the first one line 200001", 1, 200001);
    add("sections", "$SPEC_ID:\nx\n$MEAS_TIM:\n10 10\n$DATA:\n0 3\n  1\n  2\n  3\n  4\n$ROI:\n0\n$ENER_FIT:\n0.1 0.3\n",
        "1 2 3 4", "6 lines before the numbers; 4 lines after");
    add("a text column", "A;1\nB;2\nC;3\n", "1 2 3", "column 1 is text");
    add("a wide table", QByteArray("1 ").repeated(200) + "\n" + QByteArray("2 ").repeated(200) + "\n", "",
        "200 columns");
}

void tst_SeriesReader::textsAreReadAsTheyShould()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, expected);
    QFETCH(QString, detected);
    writeFile(path("text"), text);
    SeriesReader reader;
    reader.setSource(path("text"));
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.errorString(), QString());
    if (!expected.isEmpty())
        QCOMPARE(shownStores(reader).replace("inf", "-").replace("--", "-"), expected);
    QVERIFY2(reader.detected().contains(detected), qPrintable(reader.detected()));
    QTEST(int(reader.badLines()), "badLines");
    QTEST(int(reader.firstBadLine()), "firstBadLine");
    QCOMPARE(reader.progress(), 1.0);
}

void tst_SeriesReader::whatCannotBeReadIsSaid_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("source"); // empty: a file of the bytes
    QTest::addColumn<QString>("part");
    const auto addBytes = [](const char *name, const QByteArray &bytes, const char *part) {
        QTest::newRow(name) << bytes << QString() << QString::fromUtf8(part);
    };
    const auto addSource = [](const char *name, const QString &source, const char *part) {
        QTest::newRow(name) << QByteArray() << source << QString::fromUtf8(part);
    };
    addBytes("empty", "", "is empty");
    addBytes("blank lines", "\n\n\n", "no line with a number");
    addBytes("prose", "hello\nworld\n", "the first one reads “hello”");
    addBytes("thousands", "1,234.5\n999.25\n1,234,567.5\n", "thousands");
    addBytes("too many columns", QByteArray("1 ").repeated(1001) + "\n", "1001 numbers");
    addBytes("a line without an end", QByteArray("7").repeated(3 << 20), "has a line of more than 1048576 bytes");
    addBytes("a long line behind others", "1\n2\n3\n" + QByteArray("7").repeated(3 << 20), "line of more than");
    addBytes("binary", QByteArray("\1\2\0\3\4\0\0\0\5", 9), "set format to Raw");
    addBytes("zeros behind text", "abc\n" + QByteArray(100, '\0'), "set format to Raw");
    addBytes("gzip", QByteArray("\x1F\x8B\x08\0", 4), "gunzip");
    addBytes("a spreadsheet", "PK\x03\x04", "Save the sheet as CSV");
    addBytes("HDF5", "\x89HDF\r\n", "HDF5");
    addBytes("a picture", "\x89PNG\r\n", "picture");
    addSource("nothing there", QStringLiteral("/nowhere/at/all"), "doesn't exist");
    addSource("a folder", QDir::tempPath(), "is a folder");
    addSource("a resource that isn't there", QStringLiteral("qrc:/nothing"), "program's resources");
    addSource("the web", QStringLiteral("https://example.com/a.csv"), "Fetch it first");
    addSource("the null device", QStringLiteral("/dev/null"), "is empty");
}

void tst_SeriesReader::whatCannotBeReadIsSaid()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, source);
    QFETCH(QString, part);
    if (source.isEmpty()) {
        writeFile(path("bytes"), bytes);
        source = path("bytes");
    }
    SeriesReader reader;
    reader.setSource(source);
    QTRY_COMPARE(reader.status(), SeriesReader::Error);
    QVERIFY2(reader.errorString().contains(part), qPrintable(reader.errorString()));
    QVERIFY(reader.errorString().contains(QFileInfo(source).fileName()));
}

void tst_SeriesReader::propertiesReplaceGuesses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("separator") << QByteArray("1,5\n2,75\n") << QByteArray("separator") << QVariant(",")
                               << QByteArray("1 2|5 75");
    QTest::newRow("decimalPoint") << QByteArray("1,5\n2,6\n3,7\n") << QByteArray("decimalPoint") << QVariant(",")
                                  << QByteArray("1.5 2.6000000000000001 3.7000000000000002");
    QTest::newRow("commentPrefix") << QByteArray("!1\n2\n!3\n4\n") << QByteArray("commentPrefix") << QVariant("!")
                                   << QByteArray("2 4");
    QTest::newRow("skipLines") << QByteArray("1\n2\n3\n4\n") << QByteArray("skipLines") << QVariant(2)
                               << QByteArray("3 4");
    QTest::newRow("format") << QByteArray("12345678") << QByteArray("format") << QVariant(int(SeriesReader::Raw))
                            << QByteArray("6.8213200792033e-38");
}

void tst_SeriesReader::propertiesReplaceGuesses()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, expected);
    writeFile(path("guess"), text);
    SeriesReader reader;
    QVERIFY(reader.setProperty(property, value));
    reader.setSource(path("guess"));
    QTRY_VERIFY(hasEnded(reader));
    if (property == "format") // eight bytes are one double
        QCOMPARE(reader.store()->count(), 1.0);
    else
        QCOMPARE(shownStores(reader), expected);
}

void tst_SeriesReader::columnsAreChosen_data()
{
    QTest::addColumn<QVariant>("column");
    QTest::addColumn<QVariant>("xColumn");
    QTest::addColumn<int>("chosen"); // -1: an error
    QTest::addColumn<int>("x");
    QTest::newRow("none") << QVariant() << QVariant() << 0 << -1;
    QTest::newRow("by number") << QVariant(3) << QVariant() << 1 << -1;
    QTest::newRow("by number as text") << QVariant("3") << QVariant() << 1 << -1;
    QTest::newRow("by name") << QVariant("c") << QVariant() << 1 << -1;
    QTest::newRow("x") << QVariant() << QVariant(1) << 1 << 0;
    QTest::newRow("x by name") << QVariant("a") << QVariant("c") << 0 << 1;
    QTest::newRow("not there") << QVariant(5) << QVariant() << -1 << -1;
    QTest::newRow("a column of text") << QVariant(2) << QVariant() << -1 << -1;
    QTest::newRow("no such name") << QVariant("z") << QVariant() << -1 << -1;
    QTest::newRow("no such x") << QVariant() << QVariant("z") << -1 << -1;
    QTest::newRow("a half") << QVariant(1.5) << QVariant() << -1 << -1;
}

void tst_SeriesReader::whatMayBeXIsSaidUntilItIsChosen()
{
    QByteArray text("energy;counts\n");
    for (int i = 0; i < 20; ++i)
        text += QByteArray::number(0.5 * i) + ';' + QByteArray::number(i % 7) + '\n';
    writeFile(path("energy"), text);
    SeriesReader reader;
    reader.setSource(path("energy"));
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.xStore(), nullptr); // a guess that isn't acted on
    QVERIFY2(reader.detected().contains(QStringLiteral("column 1 ascends")), qPrintable(reader.detected()));
    reader.setXColumn(1);
    QTRY_VERIFY(reader.xStore() && hasEnded(reader));
    QVERIFY2(!reader.detected().contains(QStringLiteral("ascends")), qPrintable(reader.detected()));
    QCOMPARE(reader.store()->maximum(), 6.0);
}

void tst_SeriesReader::columnsAreChosen()
{
    QFETCH(QVariant, column);
    QFETCH(QVariant, xColumn);
    QFETCH(int, chosen);
    QFETCH(int, x);
    writeFile(path("columns"), "a;b;c\n1;x;2\n3;y;4\n5;z;6\n");
    SeriesReader reader;
    reader.setColumn(column);
    reader.setXColumn(xColumn);
    reader.setSource(path("columns"));
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.status(), chosen < 0 ? SeriesReader::Error : SeriesReader::Ready);
    if (chosen < 0)
        return;
    QCOMPARE(reader.stores().size(), 2);
    QCOMPARE(reader.columnNames(), (QStringList{"a", "c"}));
    QCOMPARE(reader.store(), reader.stores().at(chosen));
    QCOMPARE(reader.xStore(), x < 0 ? nullptr : reader.stores().at(x));
}

void tst_SeriesReader::theLayoutIsKnown()
{
    writeFile(path("layout"), "run 5\nt;U\n1;2,5\n2;3,5\n");
    SeriesReader reader;
    QCOMPARE(reader.layout(), QVariantMap());
    reader.setSource(path("layout"));
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.layout(), (QVariantMap{{"separator", ";"}, {"decimalPoint", ","}, {"headLines", qint64(2)}}));
    reader.setSkipLines(3);
    reader.setDecimalPoint(QStringLiteral("."));
    QTRY_COMPARE(reader.layout().value("headLines").toInt(), 3);
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.layout().value("decimalPoint").toString(), QStringLiteral("."));
    writeFile(path("layout"), QByteArray(8, '\1'));
    reader.setFormat(SeriesReader::Raw);
    QTRY_COMPARE(reader.layout(), QVariantMap());
}

void tst_SeriesReader::timesBecomeX()
{
    writeFile(path("times"),
              "time,U [V]\n2026-01-31T09:30:15.25Z,1\n2026-01-31T09:30:16Z,2\nfoo,3\n2026-01-31T10:30:15Z,4\n");
    SeriesReader reader;
    reader.setSource(path("times"));
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(shownStore(reader.xStore()), QByteArray("0.25 1 - 3600"));
    QCOMPARE(reader.xStore()->startTime(), 1769851815.0);
    QCOMPARE(shownStore(reader.store()), QByteArray("1 2 3 4"));
    QCOMPARE(reader.columnUnits(), (QStringList{"", "V"}));
    QCOMPARE(reader.badLines(), 1.0);

    writeFile(path("epoch"), "1700000000.123456789 1\n1700000000.123456790 2\n");
    reader.setSource(path("epoch"));
    QTRY_COMPARE(shownStores(reader), QByteArray("0.123456789 0.12345679|1 2"));
    QCOMPARE(reader.xStore()->startTime(), 1700000000.0);
}

void tst_SeriesReader::storesAreUsedAgain()
{
    writeFile(path("first"), "1;2\n3;4\n");
    writeFile(path("second"), "5\n6\n");
    SeriesReader reader;
    reader.setSource(path("first"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 3|2 4"));
    const QPointer<SeriesStore> first = reader.store();
    const QPointer<QObject> other = reader.stores().at(1);
    reader.setSource(path("second"));
    QTRY_COMPARE(shownStores(reader), QByteArray("5 6"));
    QCOMPARE(reader.store(), first.data());
    QTRY_VERIFY(!other);
    writeFile(path("second"), "7\n");
    QCOMPARE(shownStores(reader), QByteArray("5 6"));
    reader.reload();
    QTRY_COMPARE(shownStores(reader), QByteArray("7"));
    reader.setSource({});
    QTRY_COMPARE(reader.status(), SeriesReader::Null);
}

void tst_SeriesReader::longFilesAreReadInOrder_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("lines");
    QTest::newRow("one column") << 1 << 500'000;
    QTest::newRow("three columns") << 3 << 200'000;
}

void tst_SeriesReader::longFilesAreReadInOrder()
{
    QFETCH(int, columns);
    QFETCH(int, lines);
    QByteArray text;
    for (int i = 0; i < lines; ++i) {
        for (int column = 0; column < columns; ++column)
            text += (column > 0 ? ";" : "") + QByteArray::number(i + column * 0.5, 'g', 17);
        text += i % 1000 == 999 ? "x\n" : "\n";
    }
    writeFile(path("long"), text);
    SeriesReader reader;
    reader.setSource(path("long"));
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.badLines(), double(lines / 1000 - int(columns == 1))); // a last one alone is behind the numbers
    for (int column = 0; column < columns; ++column) {
        const SeriesSnapshot snapshot = snapshotOf(reader.stores().at(column));
        for (int i = 0; i < lines - 1; ++i) {
            const bool isGap = i % 1000 == 999 && column == columns - 1;
            const double value = snapshot.valueAt(i);
            if (isGap ? !std::isnan(value) : value != i + column * 0.5)
                QFAIL(qPrintable(QStringLiteral("line %1: %2").arg(i + 1).arg(value)));
        }
    }
}

void tst_SeriesReader::nothingIsReadUnasked()
{
    SeriesReader reader;
    QCOMPARE(reader.status(), SeriesReader::Null);
    reader.classBegin();
    writeFile(path("unasked"), "1\n");
    reader.setSource(path("unasked"));
    QCoreApplication::processEvents();
    QCOMPARE(reader.status(), SeriesReader::Null);
    reader.componentComplete();
    QTRY_COMPARE(reader.status(), SeriesReader::Ready);
}

void tst_SeriesReader::severalPropertiesReadOnce()
{
    writeFile(path("once"), "1,5\n2,5\n");
    SeriesReader reader;
    QSignalSpy stores(&reader, &SeriesReader::storesChanged);
    reader.setSource(path("once"));
    reader.setSeparator(QStringLiteral(","));
    reader.setSkipLines(1);
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(shownStores(reader), QByteArray("2|5"));
    QCOMPARE(stores.count(), 1);
}

void tst_SeriesReader::theFirstValuesComeSoon()
{
    writeFile(path("soon"), QByteArray("1.25;2.5\n").repeated(4'000'000));
    HeldReading reading(path("soon"), FileFormat::Text);
    const auto values = [&] { return reading.state().series.first().data->end(); };
    while (values() == 0)
        reading.step();
    QCOMPARE(int(reading.state().status), int(SReadingState::Status::Loading));
    QVERIFY2(values() < 400'000, qPrintable(QString::number(values())));
    QVERIFY(reading.state().progress > 0.0 && reading.state().progress < 0.1);
    reading.goOn();
    QTRY_VERIFY(reading.state().ended);
    QCOMPARE(values(), qint64(4'000'000));
    QFile::remove(path("soon"));
}

void tst_SeriesReader::propertiesStartWithTheirDefaults()
{
    const SeriesReader reader;
    QCOMPARE(reader.format(), SeriesReader::Auto);
    QCOMPARE(reader.column(), QVariant());
    QCOMPARE(reader.separator(), QString());
    QCOMPARE(reader.sampleType(), SeriesStore::Float64);
    QCOMPARE(reader.byteOrder(), SeriesReader::LittleEndian);
    QVERIFY(reader.isRunning());
    QVERIFY(!reader.follow());
    QVERIFY(!reader.store());
    QVERIFY(!reader.xStore());
    QCOMPARE(reader.progress(), 0.0);
}

QTEST_GUILESS_MAIN(tst_SeriesReader)
#include "tst_SeriesReader.moc"
