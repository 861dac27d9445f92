// SPDX-License-Identifier: MIT
#include "HeldReading.h"
#include "Reading.h"

#include "views/reading/TextFeeder.h"
#include "views/reading/TextPump.h"
#include "views/reading/TextSink.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

/// Sources that somebody else is still writing, and readings that are stopped.
class tst_LiveSources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void cleanup() { QFile::remove(path("live")); }

    void linesOfAGrowingFileAppear();
    void aLineWithoutItsEndWaits();
    void aTruncatedFileIsReadAnew();
    void aFileWrittenAnewAndLongerIsReadAnew();
    void aFileReplacedByRenamingIsReadAnew();
    void aFileDeletedAndMadeAgainIsReadAnew();
    void aFileThatComesLaterIsWaitedFor();
    void aGrowingArrayIsFollowed();
    void followingEndsWhenToldSo();
    void oldValuesLeaveIfOnlySomeAreKept();
    void aStoreThatIsFilledTakesNothingElse();

    void aNamedPipeIsReadAsItComes();
    void bytesOfAPipeMayComeOneByOne_data();
    void bytesOfAPipeMayComeOneByOne();
    void everyPieceSizeReadsTheSame();
    void standardInputIsRead();
    void filesOfTheKernelAreRead();
    void aFileMayVanishWhileItIsRead();
    void aFileMayShrinkWhileItIsRead();
    void aFollowedFileMayShrinkWhileItIsRead();
    void samplesMayShrinkWhileTheyAreRead();
    void aFileWithoutPermissionIsRefused();
    void aLineWithoutAnEndIsRefusedSoon_data();
    void aLineWithoutAnEndIsRefusedSoon();
    void aFileOfOneLongLineIsRefused();
    void aResourceIsNotNeededToBeAFile();

    void cancellingStopsReading_data();
    void cancellingStopsReading();
    void holdingStopsAndGoesOn();
    void readersMayGoAtAnyMoment();
    void aSilentPipeGetsAHint();

private:
    QString path(const char *name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    void append(const QByteArray &bytes) const
    {
        writeFile(path("live"), bytes, QIODevice::WriteOnly | QIODevice::Append);
    }
    QTemporaryDir m_folder;
};

namespace {

/// Both ends of a pipe with a name.
class NamedPipe
{
public:
    explicit NamedPipe(const QString &path) : m_path(QFile::encodeName(path)) { mkfifo(m_path.constData(), 0600); }
    ~NamedPipe()
    {
        closeWriter();
        unlink(m_path.constData());
    }
    /// Succeeds once somebody reads.
    bool openWriter()
    {
        if (m_writer < 0)
            m_writer = open(m_path.constData(), O_WRONLY | O_NONBLOCK);
        return m_writer >= 0;
    }
    void write(const QByteArray &bytes) const
    {
        QCOMPARE(::write(m_writer, bytes.constData(), size_t(bytes.size())), ssize_t(bytes.size()));
    }
    void closeWriter()
    {
        if (m_writer >= 0)
            close(m_writer);
        m_writer = -1;
    }

private:
    QByteArray m_path;
    int m_writer = -1;
};

void follow(SeriesReader &reader, const QString &path)
{
    reader.setFollow(true);
    reader.setSource(path);
}

} // namespace

void tst_LiveSources::linesOfAGrowingFileAppear()
{
    append("1\n2\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
    QTRY_COMPARE(reader.status(), SeriesReader::Ready);
    QVERIFY(!reader.store()->isComplete());
    for (int i = 3; i < 10; ++i) {
        append(QByteArray::number(i) + "\n");
        QTRY_COMPARE(reader.store()->count(), double(i));
    }
    QCOMPARE(shownStores(reader), QByteArray("1 2 3 4 5 6 7 8 9"));
}

void tst_LiveSources::aLineWithoutItsEndWaits()
{
    append("1\n2\n3");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(reader.status(), SeriesReader::Ready);
    QCOMPARE(shownStores(reader), QByteArray("1 2"));
    append("4\n5");
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 34"));
    reader.setFollow(false); // then it's whole
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 34 5"));
    QTRY_VERIFY(reader.store()->isComplete());
}

void tst_LiveSources::aTruncatedFileIsReadAnew()
{
    append("1\n2\n3\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 3"));
    const SeriesStore *const store = reader.store();
    writeFile(path("live"), "7\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("7"));
    QCOMPARE(reader.store(), store);
    QTRY_VERIFY2(reader.detected().contains(QLatin1String("read anew")), qPrintable(reader.detected()));
    append("8\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("7 8"));
}

void tst_LiveSources::aFileWrittenAnewAndLongerIsReadAnew()
{
    append("1\n2\n3\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 3"));
    reader.setRunning(false);
    QTest::qWait(20);
    writeFile(path("live"), "4\n5\n6\n7\n"); // when the reader looks it's longer than before
    reader.setRunning(true);
    QTRY_COMPARE(shownStores(reader), QByteArray("4 5 6 7"));
}

void tst_LiveSources::aFileReplacedByRenamingIsReadAnew()
{
    append("1\n2\n3\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 3"));
    for (int round = 0; round < 3; ++round) {
        const QByteArray first = QByteArray::number(10 * round + 5);
        writeFile(path("other"), first + "\n6\n7\n8\n");
        QVERIFY(::rename(QFile::encodeName(path("other")).constData(), QFile::encodeName(path("live")).constData())
                == 0);
        QTRY_COMPARE(shownStores(reader), QByteArray(first + " 6 7 8"));
        append("9\n");
        QTRY_COMPARE(shownStores(reader), QByteArray(first + " 6 7 8 9"));
    }
}

void tst_LiveSources::aFileDeletedAndMadeAgainIsReadAnew()
{
    append("1\n2\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
    QFile::remove(path("live"));
    QTest::qWait(300);
    QCOMPARE(shownStores(reader), QByteArray("1 2"));
    QCOMPARE(reader.status(), SeriesReader::Ready);
    append("3\n4\n5\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("3 4 5"));
}

void tst_LiveSources::aFileThatComesLaterIsWaitedFor()
{
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_VERIFY(reader.detected().contains(QLatin1String("waiting for it")));
    QCOMPARE(reader.status(), SeriesReader::Loading);
    append("");
    QTest::qWait(50);
    append("volt\n"); // a head and no number yet
    QTest::qWait(150);
    QCOMPARE(reader.status(), SeriesReader::Loading);
    append("1\n2\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
    QCOMPARE(reader.columnNames(), QStringList("volt"));
}

void tst_LiveSources::aGrowingArrayIsFollowed()
{
    const qint16 values[] = {1, -2, 3};
    const QByteArray bytes(reinterpret_cast<const char *>(values), sizeof values);
    append(bytes.left(3));
    SeriesReader reader;
    reader.setFormat(SeriesReader::Raw);
    reader.setSampleType(SeriesStore::Int16);
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1"));
    append(bytes.mid(3));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 -2 3"));
}

void tst_LiveSources::followingEndsWhenToldSo()
{
    append("1\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1"));
    reader.setFollow(false);
    QTRY_VERIFY(reader.store()->isComplete());
    append("2\n");
    QTest::qWait(300);
    QCOMPARE(shownStores(reader), QByteArray("1"));
    reader.setFollow(true);
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
}

void tst_LiveSources::oldValuesLeaveIfOnlySomeAreKept()
{
    append("1;2\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1|2"));
    reader.store()->setMaximumCount(300'000.0);
    for (int i = 0; i < 4; ++i)
        append(QByteArray("3;4\n").repeated(250'000));
    QTRY_COMPARE(reader.store()->snapshot().end(), qint64(1'000'001));
    for (const QObject *store : reader.stores()) {
        QTRY_VERIFY(snapshotOf(store).begin() > 0);
        QVERIFY(snapshotOf(store).count() >= 300'000);
        QVERIFY(snapshotOf(store).count() < 300'000 + 2 * 262'144);
    }
}

void tst_LiveSources::aStoreThatIsFilledTakesNothingElse()
{
    static QString refused;
    SeriesStore::setRefusal([](const QObject *, const QString &words) { refused = words; });
    append("1\n2\n");
    SeriesReader reader;
    follow(reader, path("live"));
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
    SeriesStore *const store = reader.store();
    SeriesWriter writer = store->writer();
    store->append(QVariant(7.0));
    QVERIFY2(refused.startsWith(QLatin1String("append: a SeriesReader is filling this store")), qPrintable(refused));
    store->appendBuffer(QByteArray(8, '\0'));
    QVERIFY2(refused.startsWith(QLatin1String("appendBuffer: a SeriesReader is")), qPrintable(refused));
    store->clear();
    QVERIFY2(refused.startsWith(QLatin1String("clear: a SeriesReader is")), qPrintable(refused));
    QVERIFY(!store->append(7.0));
    QVERIFY(!writer.append(7.0));
    append("3\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 3"));
    reader.cancel();
    QTRY_VERIFY(store->isComplete());
    QVERIFY(writer.append(7.0));
    QCOMPARE(shownStores(reader), QByteArray("1 2 3 7"));
    reader.reload();
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2 3"));
    QVERIFY(!writer.append(7.0));
    reader.setSource(QString());
    QTRY_COMPARE(reader.status(), SeriesReader::Null);
    QVERIFY(store->isComplete());
    QVERIFY(writer.append(7.0));
    SeriesStore::setRefusal(nullptr);
}

void tst_LiveSources::aNamedPipeIsReadAsItComes()
{
    NamedPipe pipe(path("pipe"));
    SeriesReader reader;
    reader.setSource(path("pipe"));
    QTRY_VERIFY(pipe.openWriter());
    pipe.write("a;b\n1;2\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("1|2"));
    QCOMPARE(reader.status(), SeriesReader::Loading);
    pipe.write("3;4\n5");
    QTRY_COMPARE(shownStores(reader), QByteArray("1 3|2 4"));
    pipe.write(";6");
    pipe.closeWriter();
    QTRY_COMPARE(shownStores(reader), QByteArray("1 3 5|2 4 6"));
    QTRY_COMPARE(reader.status(), SeriesReader::Ready);
    QTRY_VERIFY(reader.store()->isComplete());
}

void tst_LiveSources::bytesOfAPipeMayComeOneByOne_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("text") << QByteArray("t;U\r\n1,5;2\r\n3;4\r\n") << QByteArray("1.5 3|2 4");
    QTest::newRow("UTF-16") << QByteArray(
        "\xFF\xFE"
        "1\0,\0"
        "5\0\n\0"
        "2\0\n\0",
        12) << QByteArray("1.5 2");
    QByteArray header = "\x93NUMPY\1";
    header += QByteArray("\0\x36\0", 3) + "{'descr': '<i2', 'fortran_order': False, 'shape': (2,)";
    header += '}';
    header[8] = char(header.size() - 10);
    QTest::newRow("NumPy") << header + QByteArray("\1\0\xFE\xFF", 4) << QByteArray("1 -2");
}

void tst_LiveSources::bytesOfAPipeMayComeOneByOne()
{
    QFETCH(QByteArray, bytes);
    constexpr int few = 8;      // bytes, of which none that is needed to know the format waits for another one
    constexpr qint64 soon = 80; // milliseconds; where more pass, the reader makes do with what is there
    qint64 longest = soon;      // that so few took to come
    for (int round = 0; round < 100 && longest >= soon; ++round) {
        NamedPipe pipe(path("pipe"));
        SeriesReader reader;
        reader.setSource(path("pipe"));
        QTRY_VERIFY(pipe.openWriter());
        QElapsedTimer since;
        since.start();
        QVector<qint64> times;
        longest = 0;
        for (const char byte : bytes) {
            pipe.write(QByteArray(1, byte));
            times.append(since.elapsed());
            longest = std::max(longest, times.last() - times.at(std::max(int(times.size()) - few, 0)));
            QTest::qWait(1);
        }
        pipe.closeWriter();
        QTRY_VERIFY(hasEnded(reader));
        if (longest >= soon)
            continue; // a busy machine
        QCOMPARE(reader.errorString(), QString());
        QTEST(shownStores(reader), "expected");
    }
    QVERIFY2(longest < soon, qPrintable(QString::number(longest)));
}

void tst_LiveSources::everyPieceSizeReadsTheSame()
{
    QByteArray text = "t;U [V]\n";
    for (int i = 0; i < 300; ++i)
        text += i % 17 == 5 ? QByteArray("foo\n")
                            : QByteArray::number(i * 0.25) + ";" + QByteArray::number(-i) + (i % 3 ? "\n" : "\r\n");
    text += "5;6";
    writeFile(path("live"), text);
    const QByteArray padded = text + "\n" + QByteArray(16, '\0');
    const SDetection detection = detectLayout(padded.constData(), padded.constData() + text.size() + 1, {});
    QVERIFY(detection.layout);
    QByteArray expected;
    for (int pieceSize = 64; pieceSize >= 1; --pieceSize) {
        for (const int threads : {1, 3}) {
            Wakeup wakeup;
            InputFile file(wakeup);
            QVERIFY(file.open(path("live")));
            TextFeeder feeder(file, text.left(64), pieceSize);
            while (feeder.end() - feeder.begin() < detection.layout->headSize)
                QCOMPARE(feeder.readMore(), InputFile::Got::Bytes);
            feeder.skip(detection.layout->headSize);
            TextSink sink(*detection.layout);
            TextPump pump(feeder, *detection.layout, sink, [] {});
            QCOMPARE(pump.run(wakeup, threads), TextPump::Stop::End);
            feeder.endLastLine();
            QCOMPARE(pump.run(wakeup, threads), TextPump::Stop::End);
            QByteArray shown;
            for (int column = 0; column < 2; ++column) {
                const SeriesSnapshot values = sink.series(column)->snapshot();
                for (qint64 i = 0; i < values.end(); ++i)
                    shown += shownValue(values.valueAt(i)) + ' ';
            }
            shown += QByteArray::number(sink.badLines()) + ' ' + QByteArray::number(sink.firstBadLine());
            if (expected.isEmpty())
                expected = shown;
            QCOMPARE(shown, expected);
        }
    }
    QVERIFY(expected.endsWith(" 18 7"));
}

void tst_LiveSources::standardInputIsRead()
{
    const int before = dup(STDIN_FILENO);
    int ends[2];
    QVERIFY(pipe(ends) == 0);
    dup2(ends[0], STDIN_FILENO);
    {
        SeriesReader reader;
        reader.setSource(QStringLiteral("-"));
        QVERIFY(write(ends[1], "1\n2\n", 4) == 4);
        QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
        QElapsedTimer timer;
        timer.start();
        reader.cancel(); // the writing end is still open
        QTRY_COMPARE(reader.status(), SeriesReader::Ready);
        QVERIFY(reader.detected().contains(QLatin1String("stopped")));
        reader.reload(); // goes on with what comes
        QTRY_COMPARE(reader.status(), SeriesReader::Loading);
        QVERIFY(write(ends[1], "3\n4\n", 4) == 4);
        QTRY_COMPARE(shownStores(reader), QByteArray("3 4"));
        close(ends[1]);
        QTRY_VERIFY(hasEnded(reader));
    }
    close(ends[0]);
    dup2(before, STDIN_FILENO);
    close(before);
}

void tst_LiveSources::filesOfTheKernelAreRead()
{
    SeriesReader reader;
    reader.setSource(QStringLiteral("/proc/uptime")); // its size is 0, says the kernel
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.errorString(), QString());
    QCOMPARE(reader.stores().size(), 2);
    QVERIFY(reader.store()->minimum() > 0.0);
}

void tst_LiveSources::aFileMayVanishWhileItIsRead()
{
    writeFile(path("live"), QByteArray("1.5\n").repeated(1'000'000));
    SeriesReader reader;
    reader.setSource(path("live"));
    QTRY_VERIFY(reader.status() == SeriesReader::Loading || reader.store());
    QFile::remove(path("live"));
    QTRY_VERIFY(hasEnded(reader));
    QVERIFY(reader.status() == SeriesReader::Error || reader.store()->count() == 1e6);
}

void tst_LiveSources::aFileMayShrinkWhileItIsRead()
{
    writeFile(path("live"), QByteArray("1.5;2.5\n").repeated(5'000'000));
    HeldReading reading(path("live"), FileFormat::Text);
    writeFile(path("live"), "3;4\n5;6\n");
    reading.goOn();
    QTRY_VERIFY(reading.state().ended);
    QVERIFY2(reading.state().error.contains(QLatin1String("while it was read")), qPrintable(reading.state().error));
    QCOMPARE(reading.state().series.size(), 2);
    const qint64 rows = reading.state().series.first().data->end();
    for (const SReadSeries &series : reading.state().series) {
        const SeriesSnapshot snapshot = series.data->snapshot();
        QCOMPARE(snapshot.end(), rows);
        QVERIFY(rows == 0 || snapshot.extremes().lowest == snapshot.extremes().highest); // no number was cut short
    }
}

void tst_LiveSources::aFollowedFileMayShrinkWhileItIsRead()
{
    writeFile(path("live"), QByteArray("1.5;2.5\n").repeated(5'000'000));
    SeriesReader reader;
    reader.setFollow(true);
    reader.setSource(path("live"));
    QTRY_VERIFY(reader.store() && reader.store()->count() > 0.0);
    reader.setRunning(false);
    writeFile(path("live"), "3;4\n5;6\n");
    reader.setRunning(true);
    QTRY_COMPARE(shownStores(reader), QByteArray("3 5|4 6"));
    QCOMPARE(reader.errorString(), QString());
}

void tst_LiveSources::samplesMayShrinkWhileTheyAreRead()
{
    writeFile(path("live"), QByteArray(50'000'000, 'x'));
    HeldReading reading(path("live"), FileFormat::Raw);
    writeFile(path("live"), "y");
    reading.goOn();
    QTRY_VERIFY(reading.state().ended);
    QVERIFY2(reading.state().error.contains(QLatin1String("while it was read")), qPrintable(reading.state().error));
}

void tst_LiveSources::aFileWithoutPermissionIsRefused()
{
    constexpr uid_t somebodyElse = 65534;
    append("1\n2\n");
    QVERIFY(QFile::setPermissions(path("live"), {}));
    const bool isRoot = geteuid() == 0; // who may read everything; threads that are started meanwhile may not
    if (isRoot)
        setfsuid(somebodyElse);
    QFile file(path("live"));
    const bool isReadable = file.open(QIODevice::ReadOnly);
    SeriesReader reader;
    reader.setSource(path("live"));
    QTRY_VERIFY(reader.status() != SeriesReader::Null); // the reading thread has been started with the rights of then
    if (isRoot)
        setfsuid(0);
    if (isReadable)
        QSKIP("needs a user whom the kernel refuses something");
    QTRY_VERIFY(hasEnded(reader));
    QFile::setPermissions(path("live"), QFile::ReadOwner);
    QVERIFY2(reader.errorString().contains(QLatin1String("may not be read by you. Its owner can allow it: chmod a+r")),
             qPrintable(reader.errorString()));
    reader.reload();
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
    QCOMPARE(reader.errorString(), QString());
}

void tst_LiveSources::aLineWithoutAnEndIsRefusedSoon_data()
{
    QTest::addColumn<QByteArray>("front");
    QTest::newRow("from the beginning") << QByteArray();
    QTest::newRow("behind others") << QByteArray("1;2\n").repeated(30'000);
}

void tst_LiveSources::aLineWithoutAnEndIsRefusedSoon()
{
    QFETCH(QByteArray, front);
    constexpr qint64 whole = 200'000'000;
    std::signal(SIGPIPE, SIG_IGN);
    const QByteArray name = QFile::encodeName(path("pipe"));
    QVERIFY(mkfifo(name.constData(), 0600) == 0);
    std::atomic<qint64> taken{0};
    std::thread writer([&] {
        const int end = open(name.constData(), O_WRONLY);
        const QByteArray digits(1 << 16, '7');
        QByteArray portion = front + digits;
        ssize_t written = 1;
        while (written > 0 && taken < whole) { // until nobody reads any more
            written = ::write(end, portion.constData(), size_t(portion.size()));
            taken += std::max(written, ssize_t(0));
            portion = digits;
        }
        close(end);
    });
    SeriesReader reader;
    reader.setSource(path("pipe"));
    QTRY_VERIFY(hasEnded(reader));
    writer.join();
    unlink(name.constData());
    QVERIFY2(reader.errorString().contains(QLatin1String("has a line of more than 1048576 bytes")),
             qPrintable(reader.errorString()));
    QVERIFY2(taken < (1 << 23), qPrintable(QString::number(taken)));
    QCOMPARE(reader.store() ? reader.store()->count() : 0.0, double(front.count('\n')));
}

void tst_LiveSources::aFileOfOneLongLineIsRefused()
{
    const QByteArray part = QByteArray("1.25,").repeated(200'000);
    for (int i = 0; i < 200; ++i)
        append(part);
    SeriesReader reader;
    reader.setSource(path("live"));
    QTRY_VERIFY(hasEnded(reader));
    QVERIFY2(reader.errorString().contains(QLatin1String("has a line of more than 1048576 bytes")),
             qPrintable(reader.errorString()));
}

void tst_LiveSources::aResourceIsNotNeededToBeAFile()
{
    SeriesReader reader;
    reader.setSource(QStringLiteral("qrc:/qt-project.org/qmodels/nothing"));
    QTRY_COMPARE(reader.status(), SeriesReader::Error);
}

void tst_LiveSources::cancellingStopsReading_data()
{
    QTest::addColumn<bool>("isPipe");
    QTest::addColumn<int>("after"); // milliseconds
    for (const int after : {0, 3, 20, 120}) {
        QTest::addRow("file after %d ms", after) << false << after;
        QTest::addRow("pipe after %d ms", after) << true << after;
    }
}

void tst_LiveSources::cancellingStopsReading()
{
    QFETCH(bool, isPipe);
    QFETCH(int, after);
    NamedPipe pipe(path("pipe"));
    if (!isPipe)
        writeFile(path("live"), QByteArray("1.2345678;2.345\n").repeated(2'000'000));
    SeriesReader reader;
    bool hasBegun = false; // a fast machine may be done when it's looked at
    connect(&reader, &SeriesReader::statusChanged, this,
            [&] { hasBegun = hasBegun || reader.status() == SeriesReader::Loading; });
    reader.setSource(isPipe ? path("pipe") : path("live"));
    QTRY_VERIFY(hasBegun);
    if (after > 0)
        QTest::qWait(after);
    reader.cancel();
    QTRY_VERIFY(reader.status() == SeriesReader::Ready);
    const double count = reader.store() ? reader.store()->count() : 0.0;
    QTest::qWait(20);
    QCOMPARE(reader.store() ? reader.store()->count() : 0.0, count);
}

void tst_LiveSources::holdingStopsAndGoesOn()
{
    writeFile(path("live"), QByteArray("1.25\n").repeated(1'000'000));
    SeriesReader reader;
    reader.setRunning(false);
    reader.setSource(path("live"));
    QTest::qWait(100);
    QCOMPARE(reader.status(), SeriesReader::Loading);
    QVERIFY(!reader.store());
    reader.setRunning(true);
    QTRY_VERIFY(reader.store());
    reader.setRunning(false);
    reader.setRunning(true);
    QTRY_VERIFY(hasEnded(reader));
    QCOMPARE(reader.store()->count(), 1e6);
    QCOMPARE(reader.store()->minimum(), 1.25);
}

void tst_LiveSources::readersMayGoAtAnyMoment()
{
    writeFile(path("live"), QByteArray("1.25;3\n").repeated(300'000));
    for (int round = 0; round < 30; ++round) {
        SeriesReader reader;
        reader.setFollow(round % 2 == 0);
        reader.setSource(path("live"));
        QTest::qWait(round);
        if (round % 3 == 0)
            reader.reload();
        if (round % 5 == 0)
            QCoreApplication::processEvents();
    }
}

void tst_LiveSources::aSilentPipeGetsAHint()
{
    NamedPipe pipe(path("pipe"));
    SeriesReader reader;
    reader.setSource(path("pipe"));
    QTRY_VERIFY(pipe.openWriter());
    QTRY_VERIFY(reader.detected().contains(QLatin1String("stdbuf -oL")));
    pipe.write("1\n2\n");
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
    QVERIFY(!reader.detected().contains(QLatin1String("stdbuf")));
}

QTEST_GUILESS_MAIN(tst_LiveSources)
#include "tst_LiveSources.moc"
