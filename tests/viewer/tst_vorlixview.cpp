// SPDX-License-Identifier: MIT
// The viewer as a process: what it says, how it exits, and what stands in its pictures.

#include "tests/support/Patience.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLocalSocket>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QRegularExpression>
#include <QScopedPointer>
#include <QSize>
#include <QTemporaryDir>
#include <QTest>
#include <QVector>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <functional>

namespace {

const QColor barColor(0x1b, 0x6c, 0xa8);
const QColor secondColor(0xc4, 0x47, 0x1b);
const QColor lightGround(255, 255, 255);

struct SOutcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

struct SScene
{
    QSize size;
    QString renderLoop = QStringLiteral("threaded");
    double ratio = 1.0; ///< of pixels to units of the layout
};

/// What pixels of a kind cover.
QRect boxOf(const QImage &image, const std::function<bool(QColor)> &isOfKind)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isOfKind(image.pixelColor(x, y)))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

bool isNear(const QColor &a, const QColor &b, int slack = 2)
{
    return std::abs(a.red() - b.red()) <= slack && std::abs(a.green() - b.green()) <= slack
        && std::abs(a.blue() - b.blue()) <= slack;
}

/// Where values are drawn: the white ground, and a pixel at either side that an axis or a grid line may cover.
QRect plotBox(const QImage &image)
{
    return boxOf(image, [](const QColor &color) { return color == lightGround; }).adjusted(-1, 0, 1, 0);
}

/// What the bars cover.
QRect barBox(const QImage &image)
{
    return boxOf(image, [](const QColor &color) { return color == barColor; });
}

/// The bars' height in pixels in a column, measured from the base line, the lowest row of `box`.
int columnHeight(const QImage &image, int x, const QRect &box)
{
    int y = box.bottom();
    while (y >= box.top() && image.pixelColor(x, y) == barColor)
        --y;
    return box.bottom() - y;
}

} // namespace

Q_DECLARE_METATYPE(SScene)

class tst_vorlixview : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void helpAndVersionNeedNoDisplay();
    void theIconIsDrawn();
    void wrongUseIsTwo();
    void aMissingDisplayIsSaid();
    void aMissingOpenGLIsSaid_data();
    void aMissingOpenGLIsSaid();
    void aPictureNeedsNoDisplay();
    void aLargePictureIsASharperOne();
    void onWaylandThePictureIsTheSame();
    void aPictureThatCannotBeWrittenIsSaid_data();
    void aPictureThatCannotBeWrittenIsSaid();

    void barsStandWhereTheFileHasThem_data();
    void barsStandWhereTheFileHasThem();
    void atEveryRatioThePictureHasTheSizeAskedFor_data();
    void atEveryRatioThePictureHasTheSizeAskedFor();
    void peaksOfASpectrumStandWhereTheFileHasThem();
    void aSinglePeakIsSeen_data();
    void aSinglePeakIsSeen();
    void negativeValuesAreALine();
    void smoothingSpreadsAPeak();
    void aLogarithmicScaleShowsPowersOfTen();
    void theSecondFileLiesOverTheFirst();
    void theSecondFileStandsBeneathTheFirst();
    void theBinWidthChangesTheLabelsAndNoBar();
    void aRangeIsAllThatIsSeen();
    void darkColorsAreDark();
    void columnsSamplesAndPipesAreRead_data();
    void columnsSamplesAndPipesAreRead();
    void bothRenderLoopsGiveTheSamePicture();
    void valuesInViewAreWritten();
    void theDifferenceIsWritten();
    void aPageIsWritten();
    void onAFullDiskTheFormerFileStays();
    void killedWhileSavingTheFormerFileStays();
    void noNumberAtAllIsAFailure_data();
    void noNumberAtAllIsAFailure();
    void whatIsNotUnderstoodIsSaidBesideThePicture();
    void oneBadFileOfTwoIsSaid();
    void valuesBeyondMeasureGiveAPicture();
    void aWindowStaysOpen();
    void quittingDoesNotWaitForTheReader();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString fileOf(const QString &name, const QByteArray &content) const;
    QString waveOf(const QString &name, int samplesPerSecond) const;
    QProcessEnvironment environment() const;
    SOutcome view(const QStringList &arguments, const QProcessEnvironment &environment,
                  const QByteArray &input = {}) const;
    QImage picture(const QStringList &arguments, const SScene &scene, const QString &words = {},
                   const QByteArray &input = {});

    QScopedPointer<QTemporaryDir> m_folder;
    int m_pictures = 0;
};

void tst_vorlixview::init()
{
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
}

QString tst_vorlixview::fileOf(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no test file");
    return file.fileName();
}

/// Four samples of 8 bits.
QString tst_vorlixview::waveOf(const QString &name, int samplesPerSecond) const
{
    QByteArray rate(4, '\0');
    qToLittleEndian(qint32(samplesPerSecond), rate.data());
    const QByteArray format = QByteArray("\x10\0\0\0\1\0\1\0", 8) + rate + rate + QByteArray("\1\0\x8\0", 4);
    return fileOf(name, QByteArray("RIFF\x28\0\0\0WAVEfmt ", 16) + format + QByteArray("data\4\0\0\0abcd", 12));
}

QProcessEnvironment tst_vorlixview::environment() const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
        environment.insert(QLatin1String(name), m_folder->path());
    return environment;
}

/// Runs the viewer in the test's folder.
SOutcome tst_vorlixview::view(const QStringList &arguments, const QProcessEnvironment &environment,
                              const QByteArray &input) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VIEWER), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/// The picture of a scene; a null one, and a message, when the viewer fails or says anything but `words`.
QImage tst_vorlixview::picture(const QStringList &arguments, const SScene &scene, const QString &words,
                               const QByteArray &input)
{
    const QString file = path(QStringLiteral("picture%1.png").arg(++m_pictures));
    const QStringList all{QStringLiteral("--png"), file, QStringLiteral("--size"),
                          QStringLiteral("%1x%2").arg(scene.size.width()).arg(scene.size.height())};
    auto variables = environment();
    variables.insert(QStringLiteral("QSG_RENDER_LOOP"), scene.renderLoop);
    variables.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(scene.ratio));
    const SOutcome outcome = view(all + arguments, variables, input);
    if (outcome.exitCode != 0 || outcome.errors != words || !outcome.output.isEmpty()) {
        qWarning() << "exit" << outcome.exitCode << outcome.output << outcome.errors;
        return {};
    }
    return QImage(file);
}

void tst_vorlixview::helpAndVersionNeedNoDisplay()
{
    QProcessEnvironment noDisplay = environment();
    noDisplay.remove(QStringLiteral("DISPLAY"));
    const SOutcome help = view({QStringLiteral("--help")}, noDisplay);
    QCOMPARE(help.exitCode, 0);
    QCOMPARE(help.errors, QString());
    for (const char *word : {"vorlixview", "FILE...", "--png <OUT>", "--size <WxH>", "--step, --bin-width <W>"})
        QVERIFY2(help.output.contains(QLatin1String(word)), word);
    const SOutcome version = view({QStringLiteral("--version")}, noDisplay);
    QCOMPARE(version.exitCode, 0);
    QCOMPARE(version.errors, QString());
    QVERIFY(QRegularExpression(QStringLiteral("\\Avorlixview [0-9]+\\.[0-9]+\\.[0-9]+\n\\z"))
                .match(version.output)
                .hasMatch());
}

/// The picture of the icon is one of the drawing: the same colours at the same places.
void tst_vorlixview::theIconIsDrawn()
{
    const QDir folder(QStringLiteral(DESKTOP_FOLDER));
    const QImage icon(folder.filePath(QStringLiteral("vorlixview-64.png")));
    QCOMPARE(icon.size(), QSize(64, 64));
    QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(icon.pixelColor(32, 6), QColor(20, 24, 29));
    QCOMPARE(icon.pixelColor(10, 45), QColor(7, 203, 242));
    QCOMPARE(icon.pixelColor(41, 20), QColor(242, 135, 42));

    const QString drawn = path(QStringLiteral("icon.png"));
    QProcess renderer;
    renderer.start(QStringLiteral("rsvg-convert"),
                   {QStringLiteral("--width=64"), QStringLiteral("--height=64"), QStringLiteral("--output"), drawn,
                    folder.filePath(QStringLiteral("vorlixview.svg"))});
    if (!renderer.waitForStarted())
        QSKIP("there is no rsvg-convert to draw the SVG with");
    QVERIFY(renderer.waitForFinished(patience));
    const QImage fresh(drawn);
    QCOMPARE(fresh.size(), icon.size());
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const QColor a = icon.pixelColor(x, y);
            const QColor b = fresh.pixelColor(x, y);
            QVERIFY2(std::abs(a.alpha() - b.alpha()) <= 8 && std::abs(a.lightness() - b.lightness()) <= 8,
                     qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
        }
    }
}

/// What is wrong in which way is for another test to tell.
void tst_vorlixview::wrongUseIsTwo()
{
    const SOutcome outcome = view({QStringLiteral("missing.txt")}, environment());
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors, QStringLiteral("vorlixview: missing.txt: no such file\n"));
    QCOMPARE(outcome.output, QString());
}

void tst_vorlixview::aMissingDisplayIsSaid()
{
    QProcessEnvironment noDisplay = environment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        noDisplay.remove(QLatin1String(name));
    const SOutcome outcome = view({fileOf(QStringLiteral("series.txt"), "1\n")}, noDisplay);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QStringLiteral("vorlixview: no display for a window; --png needs none\n"));
}

void tst_vorlixview::aMissingOpenGLIsSaid_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("words"); // Qt may say more before
    const QString platform = QStringLiteral("QT_QPA_PLATFORM");
    for (const char *name : {"offscreen", "minimal", "vnc"})
        QTest::newRow(name) << platform << QString::fromLatin1(name)
                            << QStringLiteral("the platform \"%1\" has no OpenGL").arg(QLatin1String(name));
    QTest::newRow("software") << QStringLiteral("QT_QUICK_BACKEND") << QStringLiteral("software")
                              << QStringLiteral("QT_QUICK_BACKEND=software draws without OpenGL");
}

void tst_vorlixview::aMissingOpenGLIsSaid()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    QFETCH(QString, words);
    QProcessEnvironment variables = environment();
    if (value == QLatin1String("offscreen"))
        variables.remove(QStringLiteral("DISPLAY")); // it draws with that display's OpenGL
    variables.insert(variable, value);
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n");
    const SOutcome outcome = view({file}, variables);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QStringLiteral("vorlixview: %1, which a window needs\n").arg(words));
    // A picture needs none.
    const SOutcome picture = view({QStringLiteral("--png"), QStringLiteral("picture.png"), file}, variables);
    QCOMPARE(picture.errors, QString());
    QCOMPARE(picture.exitCode, 0);
    QCOMPARE(QImage(path(QStringLiteral("picture.png"))).size(), QSize(1280, 720));
}

void tst_vorlixview::aPictureNeedsNoDisplay()
{
    QProcessEnvironment noDisplay = environment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        noDisplay.remove(QLatin1String(name));
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n2\n");
    const QStringList arguments{QStringLiteral("--png"), QStringLiteral("picture.png"), QStringLiteral("--size"),
                                QStringLiteral("3000x2000"), file};
    const SOutcome outcome = view(arguments, noDisplay);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(QImage(path(QStringLiteral("picture.png"))), picture({file}, {QSize(3000, 2000)}));
}

/// Its letters grow with it: the empty margin of the axis does.
void tst_vorlixview::aLargePictureIsASharperOne()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n2\n");
    const QRect usual = barBox(picture({file}, {QSize(1280, 800)}));
    const QRect large = barBox(picture({file}, {QSize(3840, 2400)}));
    QVERIFY(usual.left() > 20);
    QVERIFY2(std::abs(large.left() - 3 * usual.left()) <= 3, qPrintable(QString::number(large.left())));
    QVERIFY(std::abs(large.bottom() - 3 * usual.bottom()) <= 4);
}

/// And nothing is said there, neither for a picture nor for a window.
void tst_vorlixview::onWaylandThePictureIsTheSame()
{
    const QString socket = QStringLiteral("wayland-of-the-test");
    QProcessEnvironment variables = environment();
    QProcess compositor;
    compositor.setProcessEnvironment(variables);
    compositor.start(QStringLiteral("weston"),
                     {QStringLiteral("--backend=headless-backend.so"), QStringLiteral("--use-gl"),
                      QStringLiteral("--width=1600"), QStringLiteral("--height=1000"), QStringLiteral("--idle-time=0"),
                      QStringLiteral("--socket=") + socket});
    if (!compositor.waitForStarted())
        QSKIP("weston isn't installed");
    const auto answers = [&] { // the socket is there some time before
        QLocalSocket connection;
        connection.connectToServer(path(socket));
        return connection.waitForConnected(patience);
    };
    QTRY_VERIFY(answers());
    variables.remove(QStringLiteral("DISPLAY"));
    variables.insert(QStringLiteral("WAYLAND_DISPLAY"), socket);
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n4\n1\n5\n");

    const SOutcome outcome = view({QStringLiteral("--png"), QStringLiteral("wayland.png"), QStringLiteral("--size"),
                                   QStringLiteral("640x480"), file},
                                  variables);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(QImage(path(QStringLiteral("wayland.png"))), picture({file}, {QSize(640, 480)}));

    QProcess window;
    window.setProcessEnvironment(variables);
    window.start(QStringLiteral(VIEWER), {file});
    QVERIFY(window.waitForStarted());
    QVERIFY(!window.waitForFinished(1500));
    window.terminate();
    QVERIFY(window.waitForFinished(patience));
    QCOMPARE(QString::fromUtf8(window.readAllStandardError()), QString());
    compositor.terminate();
    QVERIFY(compositor.waitForFinished(patience));
}

void tst_vorlixview::aPictureThatCannotBeWrittenIsSaid_data()
{
    QTest::addColumn<QString>("picture");
    QTest::newRow("into a missing folder") << QStringLiteral("missing/picture.png");
    QTest::newRow("onto a full device") << QStringLiteral("/dev/full");
}

void tst_vorlixview::aPictureThatCannotBeWrittenIsSaid()
{
    QFETCH(QString, picture);
    const QString series = fileOf(QStringLiteral("series.txt"), "1\n");
    const SOutcome outcome = view({QStringLiteral("--png"), picture, series}, environment());
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.startsWith(QStringLiteral("vorlixview: %1: ").arg(picture)), qPrintable(outcome.errors));
    QCOMPARE(outcome.errors.count(QLatin1Char('\n')), 1);
}

void tst_vorlixview::barsStandWhereTheFileHasThem_data()
{
    QTest::addColumn<SScene>("scene");
    QTest::newRow("small, threaded") << SScene{QSize(320, 240), QStringLiteral("threaded")};
    QTest::newRow("odd, basic") << SScene{QSize(1001, 703), QStringLiteral("basic")};
}

void tst_vorlixview::barsStandWhereTheFileHasThem()
{
    QFETCH(SScene, scene);
    const QString file = fileOf(QStringLiteral("zwölf Werte.txt"), "4\n0\n9\r\n0\n0\n2.5\n7\n1e0\n+3\n 6 \n5\n0.5");
    const QVector<double> values{4, 0, 9, 0, 0, 2.5, 7, 1, 3, 6, 5, 0.5};
    const QImage image = picture({file}, scene);
    QCOMPARE(image.size(), scene.size);
    const QRect box = barBox(image);
    QVERIFY(box.width() > scene.size.width() * 0.7 && box.height() > scene.size.height() * 0.6);
    const double barWidth = double(box.width()) / values.size();
    for (int i = 0; i < values.size(); ++i) {
        const double expected = box.height() * values[i] / 9.0;
        // The first and the last pixel whose centres lie in the bar, but for a pixel that rounding may take.
        const int first = int(std::ceil(box.left() + i * barWidth - 0.5 + 0.6));
        const int last = int(std::floor(box.left() + (i + 1) * barWidth - 0.5 - 0.6));
        for (const int x : {first, (first + last) / 2, last}) {
            const int height = columnHeight(image, x, box);
            QVERIFY2(
                std::abs(height - expected) <= 1.5,
                qPrintable(QStringLiteral("bar %1, column %2: %3 for %4").arg(i).arg(x).arg(height).arg(expected)));
        }
    }
}

void tst_vorlixview::atEveryRatioThePictureHasTheSizeAskedFor_data()
{
    QTest::addColumn<SScene>("scene");
    QTest::newRow("1.25") << SScene{QSize(640, 480), QStringLiteral("threaded"), 1.25};
    QTest::newRow("1.5") << SScene{QSize(1001, 703), QStringLiteral("basic"), 1.5};
    QTest::newRow("2") << SScene{QSize(640, 480), QStringLiteral("threaded"), 2.0};
}

/// The layout grows with the ratio, its margins and letters too.
void tst_vorlixview::atEveryRatioThePictureHasTheSizeAskedFor()
{
    QFETCH(SScene, scene);
    const QVector<double> values{4, 9, 2.5, 7};
    const QString file = fileOf(QStringLiteral("series.txt"), "4\n9\n2.5\n7\n");
    const QImage image = picture({file}, scene);
    QCOMPARE(image.size(), scene.size);
    QCOMPARE(image.devicePixelRatio(), 1.0);
    const QRect box = barBox(image);
    QVERIFY(box.width() > scene.size.width() * 0.6);
    QVERIFY2(box.left() > 25 * scene.ratio, qPrintable(QString::number(box.left()))); // room for larger letters
    for (int i = 0; i < values.size(); ++i) {
        const int x = box.left() + int((i + 0.5) * box.width() / values.size());
        QVERIFY(std::abs(columnHeight(image, x, box) - box.height() * values[i] / 9.0) <= 2.0);
    }
}

void tst_vorlixview::peaksOfASpectrumStandWhereTheFileHasThem()
{
    QProcess generator;
    generator.start(QStringLiteral(PYTHON), {QStringLiteral(SAMPLE_SPECTRUM)});
    QVERIFY(generator.waitForFinished(patience));
    const QByteArray text = generator.readAllStandardOutput();
    const QList<QByteArray> lines = text.trimmed().split('\n');
    QCOMPARE(lines.size(), 16384);
    QVector<double> counts;
    for (const QByteArray &line : lines)
        counts.append(line.toInt());
    const double highest = *std::max_element(counts.cbegin(), counts.cend());

    const QImage image = picture({fileOf(QStringLiteral("spectrum.txt"), text)}, {QSize(1280, 720)});
    QCOMPARE(image.size(), QSize(1280, 720));
    // The plot area, between the axis of y and the ground at the right.
    const QRect box = barBox(image);
    const QRect ground = plotBox(image);
    const int left = ground.left();
    const int width = ground.width() - 1;
    int columnsWithPeaks = 0;
    for (int column = 0; column < width; ++column) {
        const int height = columnHeight(image, left + column, box);
        // Each column shows the highest of its values, give or take one at its edges.
        const auto place = [&](double shift) {
            return qBound(0, int((column + shift) * counts.size() / width), int(counts.size()) - 1);
        };
        const double most = *std::max_element(counts.cbegin() + place(-0.6), counts.cbegin() + place(1.6) + 1);
        const double least = *std::max_element(counts.cbegin() + place(0.3), counts.cbegin() + place(0.7) + 1);
        const double scale = box.height() / highest;
        QVERIFY2(height <= most * scale + 1.5 && height >= least * scale - 1.5,
                 qPrintable(QStringLiteral("column %1").arg(column)));
        columnsWithPeaks += height > box.height() / 5.0;
    }
    QVERIFY(columnsWithPeaks >= 5);
}

void tst_vorlixview::aSinglePeakIsSeen_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<int>("channel");
    QTest::newRow("bars, the first") << QString() << 0;
    QTest::newRow("bars, the last") << QString() << 9999;
    QTest::newRow("area") << QStringLiteral("--area") << 7321;
    QTest::newRow("line") << QStringLiteral("--line") << 4999;
}

/// One count in ten thousand channels, fourteen times as many as the picture has columns.
void tst_vorlixview::aSinglePeakIsSeen()
{
    QFETCH(QString, option);
    QFETCH(int, channel);
    QByteArray text;
    for (int i = 0; i < 10000; ++i)
        text += i == channel ? "700\n" : "0\n";
    QStringList arguments{fileOf(QStringLiteral("peak.txt"), text)};
    if (!option.isEmpty())
        arguments.append(option);
    const QImage image = picture(arguments, {QSize(800, 400)});
    QCOMPARE(image.size(), QSize(800, 400));
    const QRect ground = plotBox(image);
    const int middle = ground.center().y();
    QVector<int> columns;
    for (int x = ground.left(); x <= ground.right(); ++x) {
        // Blue: the lines of axes and of the grid are gray.
        if (image.pixelColor(x, middle).blue() - image.pixelColor(x, middle).red() > 60)
            columns.append(x);
    }
    QVERIFY2(!columns.isEmpty() && columns.size() <= 3, qPrintable(QString::number(columns.size())));
    const double expected = ground.left() + (channel + 0.5) / 10000 * ground.width();
    QVERIFY2(std::abs(columns.first() - expected) <= 2.5, qPrintable(QString::number(columns.first())));
}

void tst_vorlixview::negativeValuesAreALine()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "-4\n8\n-2\n6\n6\n");
    const QImage image = picture({file}, {QSize(572, 400)});
    QCOMPARE(image.size(), QSize(572, 400));
    QVERIFY(!barBox(image).isEmpty());
    int pixels = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            pixels += image.pixelColor(x, y) == barColor;
    }
    QVERIFY2(pixels < 572 * 400 / 50, qPrintable(QString::number(pixels))); // bars would cover a third
}

/// An average over four values of one peak of 8 among zeros: four bars of 2.
void tst_vorlixview::smoothingSpreadsAPeak()
{
    QByteArray text;
    for (int i = 0; i < 20; ++i)
        text += i == 10 ? "8\n" : "0\n";
    const QImage image =
        picture({QStringLiteral("--smooth"), QStringLiteral("4"), fileOf(QStringLiteral("series.txt"), text)},
                {QSize(472, 400)});
    const QRect box = barBox(image);
    const QRect ground = plotBox(image);
    const double bin = ground.width() / 20.0;
    QVERIFY(std::abs(box.left() - (ground.left() + 8 * bin)) <= 2.0);
    QVERIFY(std::abs(box.right() + 1 - (ground.left() + 12 * bin)) <= 2.0);
    QCOMPARE(columnHeight(image, box.left() + 2, box), box.height());
    QCOMPARE(columnHeight(image, box.right() - 2, box), box.height());
}

void tst_vorlixview::aLogarithmicScaleShowsPowersOfTen()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n10\n100\n1000\n0\n");
    const QImage image = picture({QStringLiteral("--log"), file}, {QSize(572, 400)});
    const QRect box = barBox(image);
    const QRect ground = plotBox(image);
    // From the top: what is left out is said over the bottom of the bars.
    QVector<int> tops;
    for (int bin = 0; bin < 5; ++bin) {
        const int x = int(ground.left() + (bin + 0.5) * ground.width() / 5.0);
        int y = box.top();
        while (y <= box.bottom() && image.pixelColor(x, y) != barColor)
            ++y;
        tops.append(y);
    }
    QCOMPARE(tops[4], box.bottom() + 1);
    const int decade = tops[2] - tops[3];
    QVERIFY(decade > 40);
    QVERIFY(std::abs(tops[1] - tops[2] - decade) <= 1);
}

void tst_vorlixview::theSecondFileLiesOverTheFirst()
{
    const QStringList files{fileOf(QStringLiteral("a.txt"), "10\n0\n"), fileOf(QStringLiteral("b.txt"), "5\n5\n")};
    const QImage image = picture(files, {QSize(400, 300)});
    QCOMPARE(image.size(), QSize(400, 300));
    const QRect box = barBox(image);
    const int low = 210;
    const int high = box.top() + 20;
    const auto mixed = [](const QColor &over, const QColor &under) {
        const auto channel = [](int o, int u) { return int(std::lround(0.6 * o + 0.4 * u)); };
        return QColor(channel(over.red(), under.red()), channel(over.green(), under.green()),
                      channel(over.blue(), under.blue()));
    };
    QVERIFY(isNear(image.pixelColor(100, high), barColor));
    QVERIFY(isNear(image.pixelColor(100, low), mixed(secondColor, barColor)));
    QVERIFY(isNear(image.pixelColor(300, low), mixed(secondColor, lightGround)));
}

/// Each in a plot of its own, equally high, over the same places of x.
void tst_vorlixview::theSecondFileStandsBeneathTheFirst()
{
    const QString first = fileOf(QStringLiteral("a.txt"), "0\n0\n7\n0\n");
    const QString second = fileOf(QStringLiteral("b.txt"), "0\n0\n50000\n0\n0\n0\n0\n0\n");
    const QImage image = picture({QStringLiteral("--beneath"), first, second}, {QSize(800, 601)});
    QCOMPARE(image.size(), QSize(800, 601));
    const QRect upper = barBox(image.copy(0, 0, 700, 300)); // without the legends
    const QRect lower = barBox(image.copy(0, 300, 700, 301));
    QVERIFY(upper.height() > 200 && std::abs(upper.height() - lower.height()) <= 2);
    QCOMPARE(upper.left(), lower.left());
    QCOMPARE(upper.width(), lower.width());
    const SOutcome table = view({QStringLiteral("--csv"), QStringLiteral("-"), QStringLiteral("--beneath"),
                                 QStringLiteral("--range"), QStringLiteral("2:3"), first, second},
                                environment());
    QCOMPARE(table.errors, QString());
    QCOMPARE(table.output, QStringLiteral("x,a.txt,b.txt\n2,7,50000\n3,0,0\n"));
}

void tst_vorlixview::theBinWidthChangesTheLabelsAndNoBar()
{
    const SScene scene{QSize(400, 300)};
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n2\n");
    const QImage one = picture({file}, scene);
    const QImage tiny = picture({QStringLiteral("--bin-width"), QStringLiteral("9.375e-12"), file}, scene);
    QCOMPARE(one.size(), scene.size);
    const QRect box = barBox(one);
    QCOMPARE(barBox(tiny), box);
    const QRect labels(0, box.bottom() + 4, 400, 299 - box.bottom() - 4);
    QVERIFY(tiny.copy(labels) != one.copy(labels));
}

void tst_vorlixview::aRangeIsAllThatIsSeen()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "9\n1\n2\n1\n9\n");
    const QImage part = picture({QStringLiteral("--range"), QStringLiteral("1:4"), file}, {QSize(400, 300)});
    const QRect box = barBox(part);
    QVERIFY(box.height() > 150); // as high as its own values need
    QCOMPARE(columnHeight(part, box.center().x(), box), box.height());
    for (const int x : {box.left() + 3, box.right() - 3})
        QVERIFY(std::abs(columnHeight(part, x, box) - box.height() / 2) <= 1);
}

void tst_vorlixview::darkColorsAreDark()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n2\n");
    const QImage dark = picture({QStringLiteral("--dark"), file}, {QSize(400, 300)});
    QVERIFY(dark.pixelColor(2, 2).lightness() < 60);
    const QImage light = picture({file}, {QSize(400, 300)});
    QVERIFY(light.pixelColor(2, 2).lightness() > 240);
}

void tst_vorlixview::columnsSamplesAndPipesAreRead_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("asInput");
    QTest::newRow("a column by its number") << "--column 2" << QByteArray("1;3\n2;1\n3;2\n") << false;
    QTest::newRow("a column by its name, decimal commas")
        << "--column U" << QByteArray("t;U\n1;4,5\n2;1,5\n3;3,0\n") << false;
    QTest::newRow("samples") << "--sample-type uint8" << QByteArray("\3\1\2") << false;
    QTest::newRow("standard input") << "-" << QByteArray("3\n1\n2\n") << true;
    QTest::newRow("skipped lines") << "--skip-lines 2" << QByteArray("7\n7\n3\n1\n2\n") << false;
    QTest::newRow("followed") << "--follow" << QByteArray("3\n1\n2\n") << false;
}

/// They all hold 3, 1, 2, or that by the half again.
void tst_vorlixview::columnsSamplesAndPipesAreRead()
{
    QFETCH(QString, options);
    QFETCH(QByteArray, content);
    QFETCH(bool, asInput);
    QStringList arguments = options.split(QLatin1Char(' '));
    if (!asInput)
        arguments.append(fileOf(QStringLiteral("series"), content));
    const QImage image = picture(arguments, {QSize(400, 300)}, {}, asInput ? content : QByteArray());
    const QRect box = barBox(image);
    QVERIFY(box.width() > 250); // a name beside the axis takes some room
    for (int i = 0; i < 3; ++i) {
        const int height = columnHeight(image, box.left() + int((i + 0.5) * box.width() / 3.0), box);
        QVERIFY(std::abs(height - box.height() * QVector<double>{3, 1, 2}[i] / 3.0) <= 1.5);
    }
}

void tst_vorlixview::bothRenderLoopsGiveTheSamePicture()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n4\n1\n5\n9\n2\n6\n");
    const QImage first = picture({file}, {QSize(500, 300), QStringLiteral("threaded")});
    QVERIFY(!first.isNull());
    QCOMPARE(picture({file}, {QSize(500, 300), QStringLiteral("basic")}), first);
}

void tst_vorlixview::valuesInViewAreWritten()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "9\n1.5\n2\n1\n9\n");
    const QStringList wanted{QStringLiteral("--range"), QStringLiteral("1:4"), QStringLiteral("--step"),
                             QStringLiteral("1"), file};
    const SOutcome shown = view(QStringList{QStringLiteral("--csv"), QStringLiteral("-")} + wanted, environment());
    QCOMPARE(shown.errors, QString());
    QCOMPARE(shown.exitCode, 0);
    const QStringList lines = shown.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.mid(1, 3), (QStringList{"1,1.5", "2,2", "3,1"}));
    const SOutcome written =
        view(QStringList{QStringLiteral("--csv"), QStringLiteral("out.csv")} + wanted, environment());
    QCOMPARE(written.exitCode, 0);
    QCOMPARE(written.output, QString());
    QFile out(path(QStringLiteral("out.csv")));
    QVERIFY(out.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(out.readAll()), shown.output);
    const SOutcome full =
        view(QStringList{QStringLiteral("--csv"), QStringLiteral("/dev/full")} + wanted, environment());
    QCOMPARE(full.exitCode, 1);
    QCOMPARE(full.errors, QStringLiteral("vorlixview: /dev/full: No space left on device\n"));
}

void tst_vorlixview::theDifferenceIsWritten()
{
    const QStringList wanted{QStringLiteral("--csv"), QStringLiteral("-"), QStringLiteral("--difference")};
    const QString first = fileOf(QStringLiteral("a.txt"), "9\n5\n7\n");
    const SOutcome both =
        view(wanted + QStringList{first, fileOf(QStringLiteral("b.txt"), "1\n2.5\n8\n")}, environment());
    QCOMPARE(both.errors, QString());
    QCOMPARE(both.exitCode, 0);
    QCOMPARE(both.output, QStringLiteral("x,a.txt,b.txt,a.txt − b.txt\n0,9,1,8\n1,5,2.5,2.5\n2,7,8,-1\n"));
    const SOutcome alone = view(wanted + QStringList{first}, environment());
    QCOMPARE(alone.errors, QStringLiteral("vorlixview: a difference needs two files\n"));
    QCOMPARE(alone.exitCode, 1);
    QCOMPARE(alone.output, QString());
    const QString timed = fileOf(QStringLiteral("t.csv"),
                                 "2020-01-01T00:00:00;1\n2020-01-01T00:00:01;2\n"
                                 "2020-01-01T00:00:02;3\n");
    const SOutcome apart = view(wanted + QStringList{first, timed}, environment());
    QCOMPARE(apart.errors,
             QStringLiteral("vorlixview: no difference: the values of the two files stand at different places\n"));
    QCOMPARE(apart.exitCode, 1);
    const QString former = fileOf(QStringLiteral("former.png"), "the former one");
    const SOutcome picture = view({QStringLiteral("--png"), former, QStringLiteral("--difference"),
                                   waveOf(QStringLiteral("slow.wav"), 1000), waveOf(QStringLiteral("fast.wav"), 2000)},
                                  environment());
    QCOMPARE(picture.errors, apart.errors);
    QCOMPARE(picture.exitCode, 1);
    QFile kept(former);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("the former one"));
}

/// A page of PDF as large as the picture: 96 pixels are an inch.
void tst_vorlixview::aPageIsWritten()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n2\n");
    const SOutcome outcome = view({QStringLiteral("--png"), QStringLiteral("page.pdf"), QStringLiteral("--size"),
                                   QStringLiteral("960x480"), file},
                                  environment());
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);
    QFile page(path(QStringLiteral("page.pdf")));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QByteArray content = page.readAll();
    QVERIFY(content.startsWith("%PDF-"));
    QVERIFY(content.contains("/MediaBox [0 0 720.000000 360.000000]"));
}

/// A limit for the size of files stands for the disk.
void tst_vorlixview::onAFullDiskTheFormerFileStays()
{
    const QString file = fileOf(QStringLiteral("series.txt"), QByteArray("123456\n").repeated(100'000));
    for (const QString &option : {QStringLiteral("--csv"), QStringLiteral("--png")}) {
        const QString target = fileOf(QStringLiteral("out"), "the former one");
        QProcess process;
        process.setProcessEnvironment(environment());
        process.start(QStringLiteral("bash"),
                      {QStringLiteral("-c"), QStringLiteral("trap '' XFSZ; ulimit -f 2; exec \"$0\" \"$@\""),
                       QStringLiteral(VIEWER), option, target, file});
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()),
                 QStringLiteral("vorlixview: %1: File too large\n").arg(target));
        QFile former(target);
        QVERIFY(former.open(QIODevice::ReadOnly));
        QCOMPARE(former.readAll(), QByteArray("the former one"));
        QCOMPARE(QDir(m_folder->path()).entryList({QStringLiteral("out*")}), QStringList{QStringLiteral("out")});
    }
}

void tst_vorlixview::killedWhileSavingTheFormerFileStays()
{
    const QString file = fileOf(QStringLiteral("series.txt"), QByteArray("123456\n").repeated(3'000'000));
    const QString target = fileOf(QStringLiteral("out.csv"), "the former one");
    QProcess process;
    process.setProcessEnvironment(environment());
    // The kernel kills it when the file has that many KiB: in the middle, however fast it writes.
    process.start(QStringLiteral("bash"),
                  {QStringLiteral("-c"), QStringLiteral("ulimit -c 0; ulimit -f 5000; exec \"$0\" \"$@\""),
                   QStringLiteral(VIEWER), QStringLiteral("--csv"), target, file});
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QCOMPARE(process.exitCode(), SIGXFSZ);
    QFile former(target);
    QVERIFY(former.open(QIODevice::ReadOnly));
    QCOMPARE(former.readAll(), QByteArray("the former one"));
    QCOMPARE(QDir(m_folder->path()).entryList({QStringLiteral("out*")}), QStringList{QStringLiteral("out.csv")});
}

void tst_vorlixview::noNumberAtAllIsAFailure_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("part");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("is empty");
    QTest::newRow("a line of text") << QByteArray("counts\n") << QStringLiteral("the first one reads “counts”");
    QTest::newRow("bytes") << QByteArray("1\n2\0003\n", 6) << QStringLiteral("is not a text");
}

/// The viewer says so once and writes no picture. The one that was there stays.
void tst_vorlixview::noNumberAtAllIsAFailure()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, part);
    const QString picture = fileOf(QStringLiteral("picture.png"), "the former one");
    const QString file = fileOf(QStringLiteral("series.txt"), content);
    const SOutcome outcome = view({QStringLiteral("--png"), picture, file}, environment());
    QCOMPARE(outcome.exitCode, 1);
    const QStringList lines = outcome.errors.split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[0].startsWith(QStringLiteral("vorlixview: “%1” ").arg(file)) && lines[0].contains(part),
             qPrintable(lines[0]));
    QCOMPARE(lines[1], QStringLiteral("vorlixview: %1: not written: there are no numbers to show").arg(picture));
    QFile former(picture);
    QVERIFY(former.open(QIODevice::ReadOnly));
    QCOMPARE(former.readAll(), QByteArray("the former one"));
}

void tst_vorlixview::whatIsNotUnderstoodIsSaidBesideThePicture()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n2\n3\nfoo\n5\n");
    const QImage image =
        picture({file}, {QSize(400, 300)},
                QStringLiteral("vorlixview: series.txt: 1 column; 1 line not understood in full, shown "
                               "as gaps, the first one line 4\n"));
    QVERIFY(!barBox(image).isEmpty());
}

void tst_vorlixview::oneBadFileOfTwoIsSaid()
{
    const QString good = fileOf(QStringLiteral("good.txt"), "1\n2\n");
    const QString bad = fileOf(QStringLiteral("bad.txt"), "");
    const QImage image =
        picture({good, bad}, {QSize(400, 300)}, QStringLiteral("vorlixview: “%1” is empty\n").arg(bad));
    QVERIFY(!barBox(image).isEmpty());
}

void tst_vorlixview::valuesBeyondMeasureGiveAPicture()
{
    const QStringList files{
        fileOf(QStringLiteral("a.txt"), "1\ninf\n-inf\n3\n"), fileOf(QStringLiteral("b.txt"), "1\nnan\n3\n"),
        fileOf(QStringLiteral("c.txt"), "1e308\n1.7e308\n-1.7e308\n"), fileOf(QStringLiteral("d.txt"), "1e-320\n")};
    for (const QString &file : files)
        QCOMPARE(picture({file}, {QSize(400, 300)}).size(), QSize(400, 300));
    QCOMPARE(picture(files, {QSize(400, 300), QStringLiteral("basic")}).size(), QSize(400, 300));
}

void tst_vorlixview::aWindowStaysOpen()
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(QStringLiteral(VIEWER), {fileOf(QStringLiteral("series.txt"), "1\n2\n3\n")});
    QVERIFY(process.waitForStarted());
    QVERIFY(!process.waitForFinished(1000));
    process.terminate();
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
}

/// Standard input never ends here.
void tst_vorlixview::quittingDoesNotWaitForTheReader()
{
    const QString plugins = QStringLiteral(PLUGINS);
    if (!QFileInfo::exists(plugins))
        QSKIP("there is no plugin that closes the window");
    QProcessEnvironment variables = environment();
    variables.insert(QStringLiteral("QT_PLUGIN_PATH"), plugins);
    variables.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorlixsnapshot"));
    variables.insert(QStringLiteral("SNAPSHOT_DO"), QStringLiteral("close()"));
    variables.insert(QStringLiteral("SNAPSHOT_UNTIL"), QStringLiteral("reading && hasNumbers"));
    for (const QString &loop : {QStringLiteral("threaded"), QStringLiteral("basic")}) {
        variables.insert(QStringLiteral("QSG_RENDER_LOOP"), loop);
        QProcess process;
        process.setProcessEnvironment(variables);
        process.start(QStringLiteral(VIEWER), {QStringLiteral("-")});
        process.write("1\n2\n3\n");
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
        QCOMPARE(process.exitCode(), 0);
    }
}

QTEST_GUILESS_MAIN(tst_vorlixview)
#include "tst_vorlixview.moc"
