// SPDX-License-Identifier: MIT
// How the viewer looks at a file, and how it writes a picture.
#include "viewer/Desktop.h"
#include "viewer/PictureFile.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

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
    void theFirstLinesAreText();
    void aPictureIsWritten();
    void anExportTakesTheFormatOfTheName();
    void aPictureThatCannotBeWrittenLeavesNothing_data();
    void aPictureThatCannotBeWrittenLeavesNothing();
    void aFullDiskLeavesTheFormerPicture();
    void aDeviceStaysADevice();
};

void tst_viewerfiles::theFirstLinesAreText()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("lines.txt"));
    const auto linesOf = [&](const QByteArray &content) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("no test file");
        file.close();
        return Desktop::firstLines(path, 3);
    };
    QCOMPARE(linesOf("a;b\r\n1;2\n3;4\n5;6\n"), (QStringList{"a;b", "1;2", "3;4"}));
    QCOMPARE(linesOf("1"), QStringList{"1"});
    QCOMPARE(linesOf(""), QStringList());
    QCOMPARE(linesOf(QByteArray("\xFF\xFE"
                                "1\0\n\0"
                                "2\0",
                                8)),
             (QStringList{"1", "2"}));
    QCOMPARE(linesOf(QByteArray(100'000, '7')).value(0), QString(400, QLatin1Char('7')));
    QCOMPARE(Desktop::firstLines(QStringLiteral("/dev/zero"), 3), QStringList());
    QCOMPARE(Desktop::firstLines(folder.path(), 3), QStringList());
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
    QCOMPARE(Desktop::writePicture(noise(), good), QString());
    QVERIFY(contentOf(good).startsWith("\x89PNG"));
    const QString bad = folder.filePath(QStringLiteral("picture.txt"));
    QCOMPARE(Desktop::writePicture(noise(), bad), bad + QStringLiteral(": Unsupported image format"));
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
