// SPDX-License-Identifier: MIT
#include "sources/SCSVReader.h"
#include "tests/support/Bits.h"
#include "tests/support/MetaTable.h"
#include "tests/support/RecordingPlotter.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>

class tst_SCSVReader : public QObject
{
    Q_OBJECT

private slots:
    void propertiesAndSignalsStandInOrder();
    void fiveLinesGiveFiveValues();
    void areaAndSeriesReachThePlotter();
    void positionalQueriesFindNothingUntilTheAreaHasAHeight();
    void theSamePathIsNotReadAgain();
    void aMissingFileChangesNothingButThePath();
    void anEmptyFileGivesAnEmptySeries();
    void anEmptyFileInFrontPublishesNoSeries();
    void theBinWidthAppliesFromTheNextLoadOn();
    void aPipeIsNotWaitedFor();
    void aFolderIsNoFile();
    void theNullDeviceIsAnEmptyFile();
    void anEndlessDeviceIsNoFile();
    void aSymbolicLinkIsItsTarget();
    void anUnreadableFileChangesNothing();
    void aFileThatCannotBeReadToItsEndWarnsAndChangesNothing();
    void handlersMayDestroyTheReader();
    void aHandlerMayLoadAnotherFile();

private:
    QString write(const char *name, const QByteArray &text);

    QTemporaryDir m_folder;
};

QString tst_SCSVReader::write(const char *name, const QByteArray &text)
{
    const QString path = m_folder.filePath(QString::fromLatin1(name));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

void tst_SCSVReader::propertiesAndSignalsStandInOrder()
{
    const QMetaObject &meta = SCSVReader::staticMetaObject;
    QCOMPARE(ownProperties(meta),
             (QStringList{QStringLiteral("file QString write fileChanged"),
                          QStringLiteral("binWidth double write binWidthChanged")}));
    QCOMPARE(ownSignals(meta), (QStringList{QStringLiteral("fileChanged()"), QStringLiteral("binWidthChanged()")}));
    SCSVReader reader;
    QVERIFY(reader.file().isEmpty());
    QCOMPARE(reader.binWidth(), 9.375e-12);
}

void tst_SCSVReader::fiveLinesGiveFiveValues()
{
    SCSVReader reader;
    QStringList order;
    connect(&reader, &SCSVReader::fileChanged, this, [&] { order.append(QStringLiteral("file")); });
    connect(&reader, &Filter1D::areaChanged, this, [&] { order.append(QStringLiteral("area")); });
    connect(&reader, &Filter1D::dataChanged, this, [&] { order.append(QStringLiteral("data")); });
    reader.setFile(write("five", "1\n2.5\nabc\n\n4\n"));
    COMPARE_BITS(reader.data(), (QVector<double>{1.0, 2.5, 0.0, 0.0, 4.0}));
    QVERIFY(reader.area().width() == 5 * 9.375e-12);
    QCOMPARE(reader.area(), QRectF(0.0, 0.0, 5 * 9.375e-12, 0.0));
    QCOMPARE(order, (QStringList{QStringLiteral("file"), QStringLiteral("area"), QStringLiteral("data")}));
}

void tst_SCSVReader::areaAndSeriesReachThePlotter()
{
    SCSVReader reader;
    RecordingPlotter plotter;
    reader.addPlotter(&plotter);
    reader.setFile(write("two", "1\n2\n"));
    QCOMPARE(plotter.areas.last(), reader.area());
    COMPARE_BITS(plotter.series.last(), (QVector<double>{1.0, 2.0}));
}

void tst_SCSVReader::positionalQueriesFindNothingUntilTheAreaHasAHeight()
{
    SCSVReader reader;
    reader.setBinWidth(1.0);
    reader.setFile(write("four", "1\n2\n3\n4\n"));
    QCOMPARE(reader.index_at(1.0), -1);
    QCOMPARE(reader.max_in(QRectF(0.0, 0.0, 4.0, 10.0)), 0.0);
    reader.setArea(QRectF(0.0, 0.0, 4.0, 10.0));
    QCOMPARE(reader.index_at(1.0), 1);
    QCOMPARE(reader.max_in(QRectF(0.0, 0.0, 4.0, 10.0)), 4.0);
}

void tst_SCSVReader::theSamePathIsNotReadAgain()
{
    SCSVReader reader;
    const QString path = write("changing", "1\n");
    reader.setFile(path);
    write("changing", "1\n2\n");
    QSignalSpy changes(&reader, &SCSVReader::fileChanged);
    reader.setFile(path);
    QCOMPARE(changes.size(), 0);
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
    reader.setFile(QString());
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
    reader.setFile(path);
    COMPARE_BITS(reader.data(), (QVector<double>{1.0, 2.0}));
}

void tst_SCSVReader::aMissingFileChangesNothingButThePath()
{
    SCSVReader reader;
    reader.setFile(write("one", "1\n"));
    const QRectF area = reader.area();
    QSignalSpy file(&reader, &SCSVReader::fileChanged);
    QSignalSpy data(&reader, &Filter1D::dataChanged);
    QSignalSpy areas(&reader, &Filter1D::areaChanged);
    const QString missing = m_folder.filePath(QStringLiteral("missing"));
    reader.setFile(missing);
    QCOMPARE(reader.file(), missing);
    QCOMPARE(file.size(), 1);
    QCOMPARE(data.size() + areas.size(), 0);
    QCOMPARE(reader.area(), area);
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
}

void tst_SCSVReader::anEmptyFileGivesAnEmptySeries()
{
    SCSVReader reader;
    reader.setFile(write("one", "1\n"));
    QSignalSpy data(&reader, &Filter1D::dataChanged);
    reader.setFile(write("empty", ""));
    QCOMPARE(data.size(), 1);
    QVERIFY(reader.data().isEmpty());
    QVERIFY(reader.area().isNull());
}

void tst_SCSVReader::anEmptyFileInFrontPublishesNoSeries()
{
    SCSVReader reader;
    QSignalSpy data(&reader, &Filter1D::dataChanged);
    reader.setFile(write("empty", ""));
    QCOMPARE(data.size(), 0);
}

void tst_SCSVReader::theBinWidthAppliesFromTheNextLoadOn()
{
    SCSVReader reader;
    reader.setFile(write("two", "1\n2\n"));
    QSignalSpy changes(&reader, &SCSVReader::binWidthChanged);
    QSignalSpy data(&reader, &Filter1D::dataChanged);
    const QRectF area = reader.area();
    reader.setBinWidth(9.375e-12 * (1.0 + 1e-14));
    QCOMPARE(changes.size(), 0);
    reader.setBinWidth(0.5);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(data.size(), 0);
    QCOMPARE(reader.area(), area);
    reader.setFile(write("three", "1\n2\n3\n"));
    QCOMPARE(reader.area(), QRectF(0.0, 0.0, 1.5, 0.0));
}

void tst_SCSVReader::aPipeIsNotWaitedFor()
{
    const QString pipe = m_folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    SCSVReader reader;
    QSignalSpy areas(&reader, &Filter1D::areaChanged);
    reader.setFile(pipe); // opening it would never return
    QCOMPARE(areas.size(), 0);
    QCOMPARE(reader.file(), pipe);
}

void tst_SCSVReader::aFolderIsNoFile()
{
    SCSVReader reader;
    reader.setFile(write("one", "1\n"));
    reader.setFile(m_folder.path());
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
}

void tst_SCSVReader::theNullDeviceIsAnEmptyFile()
{
    SCSVReader reader;
    reader.setFile(write("one", "1\n"));
    reader.setFile(QStringLiteral("/dev/null"));
    QVERIFY(reader.data().isEmpty());
    QVERIFY(reader.area().isNull());
}

void tst_SCSVReader::anEndlessDeviceIsNoFile()
{
    SCSVReader reader;
    reader.setFile(write("one", "1\n"));
    reader.setFile(QStringLiteral("/dev/zero"));
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
}

void tst_SCSVReader::aSymbolicLinkIsItsTarget()
{
    const QString link = m_folder.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(write("one", "1\n"), link));
    SCSVReader reader;
    reader.setFile(link);
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
}

void tst_SCSVReader::anUnreadableFileChangesNothing()
{
    if (geteuid() == 0)
        QSKIP("the superuser may read everything");
    const QString path = write("secret", "1\n");
    QVERIFY(QFile::setPermissions(path, QFileDevice::WriteOwner));
    SCSVReader reader;
    reader.setFile(path);
    QVERIFY(reader.data().isEmpty());
}

void tst_SCSVReader::aFileThatCannotBeReadToItsEndWarnsAndChangesNothing()
{
    const QString path = write("hole", "1\n");
    QFile hole(path);
    QVERIFY(hole.resize(600'000'000)); // one line of NULs that occupies no disk
    SCSVReader reader;
    reader.setFile(write("one", "1\n"));
    const QRectF area = reader.area();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("SCSVReader: cannot read.*hole.*a line of")));
    reader.setFile(path);
    COMPARE_BITS(reader.data(), QVector<double>{1.0});
    QCOMPARE(reader.area(), area);
    QCOMPARE(reader.file(), path);
}

void tst_SCSVReader::handlersMayDestroyTheReader()
{
    const QString path = write("two", "1\n2\n");
    auto reader = std::make_unique<SCSVReader>();
    connect(reader.get(), &SCSVReader::fileChanged, this, [&] { reader.reset(); });
    reader->setFile(path);
    QVERIFY(!reader);

    for (const auto changed : {&Filter1D::areaChanged, &Filter1D::dataChanged}) {
        reader = std::make_unique<SCSVReader>();
        connect(reader.get(), changed, this, [&] { reader.reset(); });
        reader->setFile(path);
        QVERIFY(!reader);
    }
}

void tst_SCSVReader::aHandlerMayLoadAnotherFile()
{
    const QString second = write("second", "2\n");
    SCSVReader reader;
    RecordingPlotter plotter;
    reader.addPlotter(&plotter);
    connect(&reader, &SCSVReader::fileChanged, this, [&] { reader.setFile(second); });
    reader.setFile(write("first", "1\n"));
    QCOMPARE(reader.file(), second);
    COMPARE_BITS(reader.data(), QVector<double>{2.0});
    COMPARE_BITS(plotter.series.last(), QVector<double>{2.0});
}

QTEST_GUILESS_MAIN(tst_SCSVReader)
#include "tst_SCSVReader.moc"
