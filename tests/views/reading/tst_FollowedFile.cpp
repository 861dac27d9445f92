// SPDX-License-Identifier: MIT
#include "Reading.h"

#include "tests/support/RandomSeries.h"
#include "views/reading/InputFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include <unistd.h>

/// A file that another thread appends to, truncates, replaces and deletes while a reader follows it. In the
/// environment, VORLIX_FOLLOW_SECONDS says for how long: see scripts/follow.
class tst_FollowedFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void aFileWrittenAnewBehindTheLastLookIsNoticed();
    void anEmptyFileThatIsReplacedIsNoticed();
    void anEmptyFileReplacedByAnEmptyOneIsNoticed();
    void noticesStayOpenFromFileToFile();
    void whatIsShownIsOfOneVersion();

private:
    QTemporaryDir m_folder;
};

namespace {

/// Writes versions of a file: lines of the version's number and their own, counted from 0.
class Writer
{
public:
    explicit Writer(const QTemporaryDir &folder) : m_path(folder.filePath("live")), m_other(folder.filePath("other"))
    {
        begin(m_path);
        m_thread = std::thread([this] { work(); });
    }
    ~Writer()
    {
        m_isStopping = true;
        goOn();
        m_thread.join();
    }

    const QString &path() const { return m_path; }
    /// Whether it waits for goOn(), until when the file stays as it is.
    bool isResting() const { return m_isResting; }
    void goOn() { m_isResting = false; }
    // While it's resting
    int version() const { return m_version; }
    qint64 lines() const { return m_lines; }
    int actions() const { return m_actions; }
    /// Milliseconds since the last line was written.
    double age() const { return double(m_sinceLine.nsecsElapsed()) / 1e6; }

private:
    void work()
    {
        while (!m_isStopping) {
            for (int i = m_random.whole(1, 30); i > 0; --i)
                act();
            append(m_path); // a version may have no line yet
            m_sinceLine.start();
            m_isResting = true;
            while (m_isResting && !m_isStopping)
                usleep(100);
        }
    }

    void act()
    {
        ++m_actions;
        if (m_random.oneIn(3))
            usleep(useconds_t(m_random.whole(0, 5000)));
        switch (m_random.whole(0, 12)) {
        case 0:
            return begin(m_path); // truncates
        case 1:
            begin(m_other);
            if (m_random.oneIn(2))
                append(m_other);
            ::rename(QFile::encodeName(m_other).constData(), QFile::encodeName(m_path).constData());
            return;
        case 2:
            QFile::remove(m_path);
            return begin(m_path);
        default:
            return append(m_path);
        }
    }

    void begin(const QString &path)
    {
        ++m_version;
        m_lines = 0;
        writeFile(path, {});
    }

    void append(const QString &path)
    {
        QByteArray bytes;
        for (int i = m_random.whole(1, m_random.oneIn(10) ? 20'000 : 50); i > 0; --i)
            bytes += QByteArray::number(m_version) + ';' + QByteArray::number(m_lines++) + '\n';
        const int cut = m_random.whole(0, int(bytes.size())); // anywhere in a line
        writeFile(path, bytes.left(cut), QIODevice::WriteOnly | QIODevice::Append);
        writeFile(path, bytes.mid(cut), QIODevice::WriteOnly | QIODevice::Append);
    }

    const QString m_path;
    const QString m_other;
    RandomSeries m_random{7};
    int m_version = 0;
    qint64 m_lines = 0;
    int m_actions = 0;
    QElapsedTimer m_sinceLine;
    std::atomic<bool> m_isResting{false};
    std::atomic<bool> m_isStopping{false};
    std::thread m_thread;
};

/// What is wrong with the values that are shown: all are of one version, and none is missing.
QString faultsOf(const SeriesReader &reader)
{
    if (reader.stores().size() != 2)
        return reader.stores().isEmpty() ? QString() : QStringLiteral("%1 columns").arg(reader.stores().size());
    const SeriesSnapshot versions = snapshotOf(reader.stores().at(0));
    const SeriesSnapshot lines = snapshotOf(reader.stores().at(1));
    if (!versions.isEmpty() && versions.extremes().lowest != versions.extremes().highest)
        return QStringLiteral("versions %1 to %2").arg(versions.extremes().lowest).arg(versions.extremes().highest);
    if (!lines.isEmpty() && (lines.extremes().lowest != 0.0 || lines.extremes().highest != double(lines.end() - 1)))
        return QStringLiteral("%1 lines from %2 to %3")
            .arg(QString::number(lines.end()), QString::number(lines.extremes().lowest),
                 QString::number(lines.extremes().highest));
    return reader.badLines() > 0.0 ? QStringLiteral("%1 bad lines").arg(reader.badLines()) : QString();
}

bool showsAll(const SeriesReader &reader, const Writer &writer)
{
    if (reader.stores().size() != 2)
        return false;
    const SeriesSnapshot versions = snapshotOf(reader.stores().at(0));
    const SeriesSnapshot lines = snapshotOf(reader.stores().at(1));
    return lines.end() == writer.lines() && versions.end() == writer.lines()
        && versions.extremes().highest == double(writer.version());
}

/// How long it took until all was shown, of many times.
QByteArray inWords(std::vector<double> milliseconds)
{
    if (milliseconds.empty())
        return "never";
    std::sort(milliseconds.begin(), milliseconds.end());
    const auto quantile = [&](double part) {
        return QByteArray::number(milliseconds[std::size_t(part * double(milliseconds.size() - 1))], 'f', 0);
    };
    const auto late = std::count_if(milliseconds.cbegin(), milliseconds.cend(), [](double ms) { return ms > 300.0; });
    return QByteArray::number(qint64(milliseconds.size())) + " times, after " + quantile(0.5) + " ms, 99 % after "
        + quantile(0.99) + ", 99.9 % after " + quantile(0.999) + ", all after " + quantile(1.0) + ", "
        + QByteArray::number(qint64(late)) + " later than 300";
}

} // namespace

void tst_FollowedFile::aFileWrittenAnewBehindTheLastLookIsNoticed()
{
    const QString path = m_folder.filePath("anew");
    writeFile(path, "1\n2\n3\n");
    Wakeup wakeup;
    wakeup.follow(true);
    InputFile file(wakeup);
    QVERIFY(file.open(path));
    char bytes[64];
    qint64 count = 0;
    QCOMPARE(file.read(bytes, sizeof bytes, count), InputFile::Got::Bytes);
    QCOMPARE(count, qint64(6));
    QCOMPARE(file.change(), InputFile::Change::None);
    writeFile(path, "4\n5\n6\n7\n"); // longer than before when it's read on
    QCOMPARE(file.read(bytes, sizeof bytes, count), InputFile::Got::End);
    QCOMPARE(file.change(), InputFile::Change::Shrunk);
}

void tst_FollowedFile::anEmptyFileThatIsReplacedIsNoticed()
{
    const QString path = m_folder.filePath("empty");
    const QString other = m_folder.filePath("full");
    writeFile(path, {});
    writeFile(other, "1\n2\n");
    SeriesReader reader;
    reader.setFollow(true);
    reader.setSource(path);
    QTest::qWait(50); // it's open
    QVERIFY(::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()) == 0);
    QTRY_COMPARE(shownStores(reader), QByteArray("1 2"));
}

/// The notices are of the file that's open. So the new one is opened before there is anything in it.
void tst_FollowedFile::anEmptyFileReplacedByAnEmptyOneIsNoticed()
{
    const QString path = m_folder.filePath("empty");
    const QString other = m_folder.filePath("emptyToo");
    writeFile(path, {});
    writeFile(other, {});
    Wakeup wakeup;
    wakeup.follow(true);
    InputFile file(wakeup);
    QVERIFY(file.open(path));
    QCOMPARE(file.change(), InputFile::Change::None);
    QVERIFY(::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()) == 0);
    QCOMPARE(file.change(), InputFile::Change::Replaced);
}

void tst_FollowedFile::noticesStayOpenFromFileToFile()
{
#if !defined(Q_OS_LINUX)
    QSKIP("other systems have no such notices");
#endif
    const auto descriptors = [] {
        int count = 0;
        const QDir open(QStringLiteral("/proc/self/fd"));
        for (const QString &name : open.entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot))
            count += QFile::symLinkTarget(open.filePath(name)).contains(QLatin1String("inotify"));
        return count;
    };
    const QString path = m_folder.filePath("noticed");
    writeFile(path, "1\n");
    QTRY_COMPARE(descriptors(), 0); // those of readers that are gone
    const int before = 0;
    {
        Wakeup wakeup;
        wakeup.follow(true);
        for (int i = 0; i < 3; ++i) {
            {
                InputFile file(wakeup);
                QVERIFY(file.open(path));
                QCOMPARE(descriptors(), before + 1);
                std::thread writer([&] { writeFile(path, "2\n"); });
                QElapsedTimer since;
                since.start();
                file.wait(2 * patience);
                writer.join();
                QVERIFY(since.elapsed() < patience);
            }
            // Closing takes the system up to seconds when it has much to do.
            QCOMPARE(descriptors(), before + 1);
        }
        wakeup.stopWatching();
        QCOMPARE(descriptors(), before);
    }
}

void tst_FollowedFile::whatIsShownIsOfOneVersion()
{
    bool isSet = false;
    const int wanted = qEnvironmentVariableIntValue("VORLIX_FOLLOW_SECONDS", &isSet);
    const qint64 most = (isSet ? wanted : 4) * 1000LL;
    Writer writer(m_folder);
    SeriesReader reader;
    reader.setFollow(true);
    reader.setSource(writer.path());
    QString fault;
    const auto looksRight = [&] {
        if (fault.isEmpty())
            fault = faultsOf(reader);
        return fault.isEmpty();
    };
    std::vector<double> delays;
    int actions = 0;
    QElapsedTimer since;
    since.start();
    while (since.elapsed() < most) {
        QVERIFY2(QTest::qWaitFor([&] { return !looksRight() || writer.isResting(); }, patience), "the writer hangs");
        QVERIFY2(QTest::qWaitFor([&] { return !looksRight() || showsAll(reader, writer); }, patience),
                 qPrintable(QStringLiteral("after %1 ms: %2 lines of version %3 aren't shown; %4")
                                .arg(since.elapsed())
                                .arg(writer.lines())
                                .arg(writer.version())
                                .arg(reader.detected())));
        QVERIFY2(fault.isEmpty(), qPrintable(fault));
        QCOMPARE(reader.errorString(), QString());
        delays.push_back(writer.age());
        actions = writer.actions();
        writer.goOn();
    }
    qInfo("%d changes of the file in %lld s; all was shown %s", actions, since.elapsed() / 1000,
          inWords(delays).constData());
}

QTEST_GUILESS_MAIN(tst_FollowedFile)
#include "tst_FollowedFile.moc"
