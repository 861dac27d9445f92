// SPDX-License-Identifier: MIT
// What the viewer finds in the lines of a file, and how it writes a picture.
#include "viewer/FileChecks.h"
#include "viewer/LineChecks.h"
#include "viewer/PictureFile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

SLineChecks checked(QByteArray text, const QString &name = QStringLiteral("data.txt"))
{
    QBuffer device(&text);
    if (!device.open(QIODevice::ReadOnly))
        qFatal("no buffer");
    return checkLines(device, name);
}

/// While it lives, files of this process grow no longer than that: as on a full disk, a write fails in the middle.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes) : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    Q_DISABLE_COPY(SmallDisk)

private:
    void (*m_formerHandler)(int);
    rlimit m_former{};
};

/// A picture that takes some hundred kilobytes.
QImage noise()
{
    QImage image(400, 300, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            state = state * 1664525u + 1013904223u;
            image.setPixel(x, y, 0xff000000u | (state >> 8));
        }
    }
    return image;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_viewerfiles : public QObject
{
    Q_OBJECT

private slots:
    void linesOfNumbersAreWell_data();
    void linesOfNumbersAreWell();
    void otherLinesAreNamed_data();
    void otherLinesAreNamed();
    void whatIsAdvisedHelps_data();
    void whatIsAdvisedHelps();
    void wordsAreShortAndPrintable();
    void longLinesCountOnce();

    void aPictureIsWritten();
    void anExportTakesTheFormatOfTheName();
    void aPictureThatCannotBeWrittenLeavesNothing_data();
    void aPictureThatCannotBeWrittenLeavesNothing();
    void aFullDiskLeavesTheFormerPicture();
    void aDeviceStaysADevice();
};

void tst_viewerfiles::linesOfNumbersAreWell_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("hasNumbers");
    QTest::newRow("integers") << QByteArray("1\n2\n3\n") << true;
    QTest::newRow("no end") << QByteArray("1") << true;
    QTest::newRow("line ends of two bytes") << QByteArray("1\r\n2.5\r\n") << true;
    QTest::newRow("blanks around") << QByteArray(" 1\n\t2 \n") << true;
    QTest::newRow("of every kind") << QByteArray("-1e5\n+3\n.5\nnan\ninf\n") << true;
    QTest::newRow("blank lines") << QByteArray("1\n\n \n2\n\n\n\n\n") << true;
    QTest::newRow("under a word") << QByteArray("counts\n1\n2\n") << true;
    QTest::newRow("under a head with a number") << QByteArray("# run 5\n1\n2\n") << true;
    QTest::newRow("a mark of the byte order") << QByteArray(
        "\xef\xbb\xbf"
        "1\n2\n") << true;
    QTest::newRow("one stray carriage return") << QByteArray("1\r2\n3\n4\n5\n") << true;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("blanks only") << QByteArray("\n  \n") << false;
}

void tst_viewerfiles::linesOfNumbersAreWell()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, hasNumbers);
    const SLineChecks checks = checked(text);
    QCOMPARE(checks.problem, QString());
    QCOMPARE(checks.hasNumbers, hasNumbers);
}

void tst_viewerfiles::otherLinesAreNamed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("hasNumbers");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const QByteArray &text, bool hasNumbers, const char *line,
                        const char *advice) {
        QTest::newRow(name) << text << hasNumbers
                            << QStringLiteral("%1, which isn't a single number%2")
                                   .arg(QString::fromUtf8(line), QString::fromUtf8(advice));
    };
    const char *commas =
        ". With points for decimal commas: tr , . <data.txt >numbers.txt; the second of two columns: "
        "cut -d , -f 2 <data.txt >numbers.txt";
    row("decimal commas", "1,5\n2,5\n", false, "line 1 is \"1,5\"", commas);
    row("few of them", "1\n2\n\n3\n4\n-5,25e3\r\n6\n", true, "line 6 is \"-5,25e3\"", commas);
    row("one after many zeros", QByteArray("0\n").repeated(50000) + "0,5\n", true, "line 50001 is \"0,5\"", commas);
    row("semicolons", "0;10\n1;20\n", false, "line 1 is \"0;10\"",
        ". Its column 2 alone: cut -d ';' -f 2 <data.txt >numbers.txt");
    row("semicolons and commas, with a head", "time;value\n0;1,5\n", false, "line 2 is \"0;1,5\"",
        ". Its column 2 alone: cut -d ';' -f 2 <data.txt | tr , . >numbers.txt");
    row("three with commas", "1,2,3\n4,5,6\n", false, "line 1 is \"1,2,3\"",
        ". Its column 3 alone: cut -d ',' -f 3 <data.txt >numbers.txt");
    row("tabs", "1\t2\n", false, "line 1 is \"1 2\"", ". Its column 2 alone: cut -f 2 <data.txt >numbers.txt");
    row("blanks", "  1   2\n", false, "line 1 is \"1   2\"",
        ". Its column 2 alone: awk '{print $2}' <data.txt >numbers.txt");
    row("blanks and commas", "1,5 2,5\n", false, "line 1 is \"1,5 2,5\"",
        ". Its column 2 alone: awk '{print $2}' <data.txt | tr , . >numbers.txt");
    row("a unit", "3.5 V\n3.6 V\n", false, "line 1 is \"3.5 V\"",
        ". Its column 1 alone: awk '{print $1}' <data.txt >numbers.txt");
    row("dates", "2026-01-02 12:00;7\n", false, "line 1 is \"2026-01-02 12:00;7\"",
        ". Its column 2 alone: cut -d ';' -f 2 <data.txt >numbers.txt");
    row("words", "counts\nmore\n", false, "line 1 is \"counts\"", "; expected one number per line");
    row("a hexadecimal number", "0x10\n", false, "line 1 is \"0x10\"", "; expected one number per line");
    QTest::newRow("old line ends") << QByteArray("1\r2\r3\r") << false
                                   << QStringLiteral(
                                          "its lines end in carriage returns. With line feeds: "
                                          "tr '\\r' '\\n' <data.txt >numbers.txt");
}

void tst_viewerfiles::otherLinesAreNamed()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, hasNumbers);
    QFETCH(QString, problem);
    const SLineChecks checks = checked(text);
    QCOMPARE(checks.problem, problem);
    QCOMPARE(checks.hasNumbers, hasNumbers);
}

void tst_viewerfiles::whatIsAdvisedHelps_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("numbers");
    const QString plain = QStringLiteral("data.txt");
    QTest::newRow("decimal commas") << plain << QByteArray("1,5\n2\n") << QByteArray("1.5\n2\n");
    QTest::newRow("semicolons") << plain << QByteArray("0;1,5;V\n1;2,5;V\n") << QByteArray("1.5\n2.5\n");
    QTest::newRow("commas") << plain << QByteArray("0,7,V\n1,8,V\n") << QByteArray("7\n8\n");
    QTest::newRow("tabs") << plain << QByteArray("0\t7\n1\t8\n") << QByteArray("7\n8\n");
    QTest::newRow("blanks") << plain << QByteArray("  0  7,5\n 10  8\n") << QByteArray("7.5\n8\n");
    QTest::newRow("old line ends") << plain << QByteArray("1\r2\r3\r") << QByteArray("1\n2\n3\n");
    for (const char *name : {"a b.txt", "it's.txt", "$HOME;.txt", "-n", "zwölf.txt"})
        QTest::newRow(name) << QString::fromUtf8(name) << QByteArray("1,5\n") << QByteArray("1.5\n");
}

/// In a shell.
void tst_viewerfiles::whatIsAdvisedHelps()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, numbers);
    const QTemporaryDir folder;
    QFile file(folder.filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    file.close();
    static const QRegularExpression command(QStringLiteral(": ((tr|cut|awk) .*? >numbers\\.txt)"));
    const QRegularExpressionMatch match = command.match(checked(text, name).problem);
    QVERIFY(match.hasMatch());
    QProcess shell;
    shell.setWorkingDirectory(folder.path());
    shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), match.captured(1)});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.readAllStandardError(), QByteArray());
    const QByteArray made = contentOf(folder.filePath(QStringLiteral("numbers.txt")));
    QCOMPARE(made, numbers);
    QCOMPARE(checked(made).problem, QString());
}

void tst_viewerfiles::wordsAreShortAndPrintable()
{
    const QString problem = checked(QByteArray(2000, 'x') + "\n").problem;
    QVERIFY(problem.startsWith(QStringLiteral("line 1 is \"") + QString(40, QLatin1Char('x')) + QChar(0x2026)
                               + QLatin1Char('"')));
    QVERIFY(problem.size() < 120);
    for (const QChar letter : checked("\x1b[31m\x07\xff\n").problem)
        QVERIFY(letter.isPrint());
}

void tst_viewerfiles::longLinesCountOnce()
{
    const QByteArray longNumber = "1" + QByteArray(20000, '0') + "\n";
    QCOMPARE(checked("1\n" + longNumber + "2,5\n").problem.left(15), QStringLiteral("line 3 is \"2,5\""));
}

void tst_viewerfiles::aPictureIsWritten()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    const QImage image = noise();
    for (int i = 0; i < 2; ++i) { // the second time over the first
        QCOMPARE(writePicture(image, path, "png"), QString());
        QCOMPARE(QImage(path).convertToFormat(image.format()), image);
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 1);
}

void tst_viewerfiles::anExportTakesTheFormatOfTheName()
{
    const QTemporaryDir folder;
    const QString good = folder.filePath(QStringLiteral("picture.PNG"));
    QCOMPARE(FileChecks::writePicture(noise(), good), QString());
    QVERIFY(contentOf(good).startsWith("\x89PNG"));
    const QString bad = folder.filePath(QStringLiteral("picture.txt"));
    QCOMPARE(FileChecks::writePicture(noise(), bad), bad + QStringLiteral(": Unsupported image format"));
    QVERIFY(!QFile::exists(bad));
}

void tst_viewerfiles::aPictureThatCannotBeWrittenLeavesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("in a missing folder") << QStringLiteral("missing/picture.png");
    QTest::newRow("in a file") << QStringLiteral("file/picture.png");
    QTest::newRow("over a folder") << QStringLiteral(".");
}

void tst_viewerfiles::aPictureThatCannotBeWrittenLeavesNothing()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QString path = folder.filePath(name);
    const QString error = writePicture(noise(), path, "png");
    QVERIFY2(error.startsWith(path + QStringLiteral(": ")), qPrintable(error));
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), {QStringLiteral("file")});
}

void tst_viewerfiles::aFullDiskLeavesTheFormerPicture()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    const QString other = folder.filePath(QStringLiteral("other.png"));
    QCOMPARE(writePicture(noise(), path, "png"), QString());
    const QByteArray former = contentOf(path);
    for (const rlim_t room : {0, 1000, 100'000}) {
        const SmallDisk full(room);
        for (const QString &target : {path, other}) {
            const QString error = writePicture(noise(), target, "png");
            QCOMPARE(error, target + QStringLiteral(": File too large"));
        }
        QCOMPARE(contentOf(path), former);
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 {QStringLiteral("picture.png")});
    }
}

void tst_viewerfiles::aDeviceStaysADevice()
{
    const QString device = QStringLiteral("/dev/full");
    if (!QFile::exists(device))
        QSKIP("there is no /dev/full");
    QCOMPARE(writePicture(noise(), device, "png"), device + QStringLiteral(": No space left on device"));
    QCOMPARE(writePicture(noise(), QStringLiteral("/dev/null"), "png"), QString());
    for (const QString &path : {device, QStringLiteral("/dev/null")})
        QVERIFY(QFile::exists(path) && !QFileInfo(path).isFile());
}

QTEST_GUILESS_MAIN(tst_viewerfiles)
#include "tst_viewerfiles.moc"
