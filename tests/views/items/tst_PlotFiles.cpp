// SPDX-License-Identifier: MIT
#include "tests/support/LogCatcher.h"
#include "tests/views/items/PlotFixture.h"
#include "views/items/BarSeries.h"
#include "views/items/NumberText.h"
#include "views/reading/SeriesReader.h"

#include <QTemporaryDir>
#include <QtTest>

#include <chrono>
#include <cstring>
#include <future>
#include <memory>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

QByteArray textOf(double value, SampleType type)
{
    char text[longestNumberText];
    return QByteArray(text, int(writeNumber(text, value, type) - text));
}

/// More than a pipe holds, as values and as a picture.
QVector<double> someNoise()
{
    std::mt19937 random(3);
    QVector<double> values(100'000);
    for (double &value : values)
        value = double(random());
    return values;
}

} // namespace

/// Values and pictures of a view in files.
class tst_PlotFiles : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void writesNumbersThatAreReadBackBitByBit();
    void writesWholeNumbersAsPeopleDo();
    void writesWhatIsInView();
    void writesGapsAsEmptyCells();
    void writesPlacesOfTheirOwn();
    void sharesPlaces();
    void givesOtherPlacesAColumnOfTheirOwn();
    void namesColumnsWithUnits();
    void leavesOutWhatIsHidden();
    void writesMoreRowsThanAtOnce();
    void isReadBackByAReader();
    void writesInTheBackground();
    void keepsTheValuesOfThatMoment();
    void saysWhyNot_data();
    void saysWhyNot();
    void keepsTheFileBeforeUntilAllIsThere();
    void warnsWhereNobodyListens();
    void givesUpWithItsView();
    void givesUpAPipeThatNothingReads_data();
    void givesUpAPipeThatNothingReads();
    void saysThatAReaderLeft();
    void writesAPicture();
    void writesSeveralFilesAtOnce();

private:
    /// Makes a named pipe and returns its path.
    QString newPipe() const;
    /// What saveValues() writes; "error: ..." if it doesn't.
    QByteArray saved();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<PlotView> m_view;
    QString m_path;
};

void tst_PlotFiles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("values.csv"));
    m_view = std::make_unique<PlotView>();
    m_view->setSize(QSizeF(300.0, 200.0));
}

QString tst_PlotFiles::newPipe() const
{
    const QString pipe = m_folder->filePath(QStringLiteral("pipe"));
    return mkfifo(pipe.toLocal8Bit().constData(), 0600) == 0 ? pipe : QString();
}

QByteArray tst_PlotFiles::saved()
{
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    m_view->saveValues(m_path);
    if (!spy.wait(patience))
        return "no answer";
    const QString error = spy.first().at(1).toString();
    return error.isEmpty() ? contentOf(m_path) : "error: " + error.toUtf8();
}

void tst_PlotFiles::writesNumbersThatAreReadBackBitByBit()
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 200'000; ++i) {
        const quint64 bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        const QByteArray text = textOf(value, SampleType::Float64);
        QVERIFY(text.size() <= longestNumberText);
        const double back = std::strtod(text.constData(), nullptr);
        QVERIFY2(std::isfinite(value) ? std::memcmp(&back, &value, sizeof back) == 0 : text.isEmpty(), text);
        float single = 0.0f;
        std::memcpy(&single, &bits, sizeof single);
        const QByteArray shorter = textOf(double(single), SampleType::Float32);
        const float singleBack = std::strtof(shorter.constData(), nullptr);
        QVERIFY2(std::isfinite(single) ? std::memcmp(&singleBack, &single, sizeof single) == 0 : shorter.isEmpty(),
                 shorter);
    }
}

void tst_PlotFiles::writesWholeNumbersAsPeopleDo()
{
    QCOMPARE(textOf(100000.0, SampleType::Float64), QByteArray("100000"));
    QCOMPARE(textOf(-3.0, SampleType::Int16), QByteArray("-3"));
    QCOMPARE(textOf(-0.0, SampleType::Float64), QByteArray("-0"));
    QCOMPARE(textOf(double(0.1f), SampleType::Float32), QByteArray("0.1"));
    QCOMPARE(textOf(0.1, SampleType::Float64), QByteArray("0.1"));
    QCOMPARE(textOf(999999999999999.0, SampleType::Float64), QByteArray("999999999999999"));
    QCOMPARE(textOf(1e300, SampleType::Float64), QByteArray("1e+300"));
}

void tst_PlotFiles::writesWhatIsInView()
{
    StoredSeries<> line(*m_view, ramp(10, 100.0));
    line.series.setStart(0.5);
    line.series.setStep(0.25);
    m_view->axisX()->setMin(1.0);
    m_view->axisX()->setMax(1.5);
    QCOMPARE(saved(), QByteArray("x,y\n1,102\n1.25,103\n1.5,104\n"));
    m_view->axisX()->setMin(1.1);
    m_view->axisX()->setMax(1.4);
    QCOMPARE(saved(), QByteArray("x,y\n1.25,103\n"));
    m_view->axisX()->setMin(1.1);
    m_view->axisX()->setMax(1.2);
    QCOMPARE(saved(), QByteArray("error: no values are in view"));
}

void tst_PlotFiles::writesGapsAsEmptyCells()
{
    StoredSeries<> line(*m_view, {1.5, qQNaN(), qInf(), -2.0});
    QCOMPARE(saved(), QByteArray("x,y\n0,1.5\n1,\n2,\n3,-2\n"));
}

void tst_PlotFiles::writesPlacesOfTheirOwn()
{
    StoredSeries<> line(*m_view, {1.0, 2.0, 3.0, 4.0});
    SeriesStore places;
    places.setValueType(SeriesStore::Float32);
    for (const double x : {0.1, 0.2, 0.7, 9.0})
        places.append(x);
    line.series.setXStore(&places);
    QCoreApplication::processEvents();
    m_view->axisX()->setMin(0.15);
    m_view->axisX()->setMax(8.0);
    QCOMPARE(saved(), QByteArray("x,y\n0.2,2\n0.7,3\n"));
    line.series.setXOffset(1.0); // and what is added isn't a single-precision number any more
    m_view->axisX()->setMax(1.5);
    QCOMPARE(saved(), QByteArray("x,y\n1.1000000014901161,1\n1.2000000029802322,2\n"));
}

void tst_PlotFiles::sharesPlaces()
{
    StoredSeries<> first(*m_view, {1.0, 2.0, 3.0});
    StoredSeries<BarSeries> second(*m_view, {7.0, qQNaN()});
    first.series.setName(QStringLiteral("a"));
    second.series.setName(QStringLiteral("b, \"c\""));
    QCOMPARE(saved(), QByteArray("x,a,\"b, \"\"c\"\"\"\n0,1,7\n1,2,\n2,3,\n"));
}

void tst_PlotFiles::givesOtherPlacesAColumnOfTheirOwn()
{
    StoredSeries<> first(*m_view, {1.0, 2.0, 3.0});
    StoredSeries<> second(*m_view, {7.0});
    StoredSeries<> third(*m_view, {4.0, 5.0, 6.0});
    second.series.setStart(0.5);
    QCOMPARE(saved(), QByteArray("x,y,y3,x of y2,y2\n0,1,4,0.5,7\n1,2,5,,\n2,3,6,,\n"));
}

void tst_PlotFiles::namesColumnsWithUnits()
{
    StoredSeries<> line(*m_view, {1.0});
    line.series.setName(QStringLiteral("sample"));
    m_view->axisX()->setTitleText(QStringLiteral("energy"));
    m_view->axisX()->setUnit(QStringLiteral("keV"));
    m_view->axisY()->setUnit(QStringLiteral("counts"));
    QCOMPARE(saved(), QByteArray("energy [keV],sample [counts]\n0,1\n"));
}

void tst_PlotFiles::leavesOutWhatIsHidden()
{
    StoredSeries<> first(*m_view, {1.0, 2.0});
    StoredSeries<> second(*m_view, {3.0, 4.0});
    second.series.setVisible(false);
    QCOMPARE(saved(), QByteArray("x,y\n0,1\n1,2\n"));
}

void tst_PlotFiles::writesMoreRowsThanAtOnce()
{
    StoredSeries<> line(*m_view, ramp(100'003));
    QByteArray expected = "x,y\n";
    for (int i = 0; i < 100'003; ++i)
        expected += QByteArray::number(i) + ',' + QByteArray::number(i) + '\n';
    QVERIFY(saved() == expected);
}

void tst_PlotFiles::isReadBackByAReader()
{
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> values(-1e-3, 1e3);
    QVector<double> numbers(5000);
    for (double &number : numbers)
        number = values(random);
    StoredSeries<> line(*m_view, numbers);
    line.series.setName(QStringLiteral("sample"));
    line.series.setStep(0.1667);
    m_view->axisX()->setUnit(QStringLiteral("keV"));
    QVERIFY(saved().startsWith("x [keV],sample\n0,"));
    SeriesReader reader;
    reader.setXColumn(1);
    reader.setColumn(2);
    reader.setSource(m_path);
    reader.componentComplete();
    QTRY_COMPARE(reader.status(), SeriesReader::Ready);
    const SeriesSnapshot found = reader.store()->snapshot();
    const SeriesSnapshot places = reader.xStore()->snapshot();
    QCOMPARE(found.count(), qint64(numbers.size()));
    for (int i = 0; i < numbers.size(); ++i) {
        QVERIFY(found.valueAt(i) == numbers.at(i));
        QVERIFY(places.valueAt(i) == double(i) * 0.1667);
    }
}

void tst_PlotFiles::writesInTheBackground()
{
    StoredSeries<> line(*m_view, {1.0, 2.0});
    const QString pipe = newPipe();
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    m_view->saveValues(pipe); // nothing reads yet, so it can't be written
    QVERIFY(spy.isEmpty());
    QCOMPARE(contentOf(pipe), QByteArray("x,y\n0,1\n1,2\n"));
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy.first().at(0).toString(), pipe);
    QCOMPARE(spy.first().at(1).toString(), QString());
}

void tst_PlotFiles::keepsTheValuesOfThatMoment()
{
    StoredSeries<> line(*m_view, {1.0, 2.0});
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    m_view->saveValues(m_path);
    line.store.clear();
    line.store.append(5.0);
    m_view->removeSeries(&line.series);
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(contentOf(m_path), QByteArray("x,y\n0,1\n1,2\n"));
}

void tst_PlotFiles::saysWhyNot_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("words");
    QTest::newRow("nothing") << QString() << QStringLiteral("a file to write to was expected");
    QTest::newRow("elsewhere") << QStringLiteral("https://example.org/a.png")
                               << QStringLiteral("“https://example.org/a.png” is not a file here");
    QTest::newRow("no folder") << QStringLiteral("/nowhere/a")
                               << QStringLiteral("/nowhere/a: No such file or directory");
    QTest::newRow("full") << QStringLiteral("file:///dev/full") << QStringLiteral("/dev/full: No space left on device");
}

void tst_PlotFiles::saysWhyNot()
{
    QFETCH(QString, file);
    QFETCH(QString, words);
    StoredSeries<> line(*m_view, {1.0, 2.0});
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    m_view->saveValues(file);
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy.last(), (QVariantList{file, words}));
    m_view->saveImage(file);
    QVERIFY(spy.size() == 1); // never before the caller goes on
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(spy.last(), (QVariantList{file, words}));
}

void tst_PlotFiles::keepsTheFileBeforeUntilAllIsThere()
{
    StoredSeries<> line(*m_view, {1.0, 2.0});
    QFile before(m_path);
    QVERIFY(before.open(QIODevice::WriteOnly) && before.write("what was there") > 0);
    before.close();
    m_view->axisX()->setMin(5.0);
    m_view->axisX()->setMax(6.0);
    QCOMPARE(saved(), QByteArray("error: no values are in view"));
    QCOMPARE(contentOf(m_path), QByteArray("what was there"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
}

void tst_PlotFiles::warnsWhereNobodyListens()
{
    const LogCatcher log;
    m_view->saveValues(QStringLiteral("/nowhere/a"));
    QTRY_COMPARE(log.count(QStringLiteral("no values are in view")), 1);
}

void tst_PlotFiles::givesUpWithItsView()
{
    QVector<double> many(10'000'000, 0.123456789); // a second's work: far more than the view needs to go
    StoredSeries<> line(*m_view, many);
    m_view->saveValues(m_path);
    m_view.reset(); // a writer that doesn't give up would be waited for, and its file would be there
    QVERIFY(QDir(m_folder->path()).entryList(QDir::Files).isEmpty());
}

void tst_PlotFiles::givesUpAPipeThatNothingReads_data()
{
    QTest::addColumn<bool>("isOpened");
    QTest::addColumn<bool>("isPicture");
    for (const bool isPicture : {false, true}) {
        const char *what = isPicture ? "a picture" : "values";
        QTest::addRow("%s, never opened", what) << false << isPicture;
        QTest::addRow("%s, opened and not read", what) << true << isPicture;
    }
}

void tst_PlotFiles::givesUpAPipeThatNothingReads()
{
    QFETCH(bool, isOpened);
    QFETCH(bool, isPicture);
    StoredSeries<> line(*m_view, someNoise());
    const QByteArray pipe = newPipe().toLocal8Bit();
    const int reader = isOpened ? ::open(pipe.constData(), O_RDONLY | O_NONBLOCK) : -1;
    if (isPicture)
        m_view->saveImage(QString::fromLocal8Bit(pipe), 4.0);
    else
        m_view->saveValues(QString::fromLocal8Bit(pipe));
    QTest::qWait(200); // the pipe is full by now, or still waits for a reader
    bool wasNeeded = false;
    std::promise<void> gone;
    std::thread rescue([&, isGone = gone.get_future()] { // or the test would hang where the view does
        wasNeeded = isGone.wait_for(std::chrono::milliseconds(patience)) == std::future_status::timeout;
        if (wasNeeded)
            contentOf(QString::fromLocal8Bit(pipe));
    });
    m_view.reset();
    gone.set_value();
    rescue.join();
    ::close(reader);
    QVERIFY(!wasNeeded);
}

void tst_PlotFiles::saysThatAReaderLeft()
{
    StoredSeries<> line(*m_view, someNoise());
    const QString pipe = newPipe();
    const int reader = ::open(pipe.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK);
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    m_view->saveValues(pipe);
    int waiting = 0;
    QTRY_VERIFY(::ioctl(reader, FIONREAD, &waiting) == 0 && waiting > 0); // some of it is in the pipe
    QVERIFY(spy.isEmpty());
    ::close(reader); // the program would end by a signal
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy.first().at(1).toString(), pipe + QStringLiteral(": Broken pipe"));
}

void tst_PlotFiles::writesAPicture()
{
    StoredSeries<> line(*m_view, {1.0, 2.0});
    const QString path = m_folder->filePath(QStringLiteral("a picture.png"));
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    m_view->saveImage(QUrl::fromLocalFile(path).toString(), 2.5);
    QTRY_COMPARE(spy.size(), 1);
    QCOMPARE(spy.first().at(1).toString(), QString());
    const QImage picture(path, "png");
    QCOMPARE(picture.size(), QSize(750, 500));
    m_view->saveImage(path, 0.0);
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(spy.last().at(1).toString(), QStringLiteral("the scale of a picture is a number above 0, not 0"));
    QCOMPARE(QImage(path).size(), QSize(750, 500));
}

void tst_PlotFiles::writesSeveralFilesAtOnce()
{
    StoredSeries<> line(*m_view, ramp(1000));
    QSignalSpy spy(m_view.get(), &PlotView::saved);
    for (int i = 0; i < 12; ++i)
        m_view->saveValues(m_folder->filePath(QString::number(i)));
    QTRY_COMPARE(spy.size(), 12);
    for (int i = 1; i < 12; ++i)
        QVERIFY(contentOf(m_folder->filePath(QString::number(i)))
                == contentOf(m_folder->filePath(QStringLiteral("0"))));
}

QTEST_MAIN(tst_PlotFiles)
#include "tst_PlotFiles.moc"
