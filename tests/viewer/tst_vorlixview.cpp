// SPDX-License-Identifier: MIT
// The viewer as a process: what it says, how it exits, and what stands in its pictures.

#include <QColor>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QRegularExpression>
#include <QScopedPointer>
#include <QSize>
#include <QTemporaryDir>
#include <QTest>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace {

// The scene's layout, in pixels from the window's edges. Below the chart lie its axis, the navigator and the legend.
constexpr int chartTop = 12;
constexpr int chartLeft = 60;
constexpr int chartRight = 12;
constexpr int chartBottom = 142;

const QColor barColor(7, 203, 242);
const QColor lightGround(255, 255, 255);
const QColor darkGround(20, 24, 29);
const QColor lightLines(223, 227, 232);
const QColor darkLines(44, 51, 59);

struct SOutcome
{
    int exitCode = -1;
    QString output;
    QString errors;
};

struct SScene
{
    QSize size;
    bool dark;
    QString renderLoop;
    double ratio = 1.0; ///< of pixels to units of the layout
};

} // namespace

Q_DECLARE_METATYPE(SScene)

class tst_vorlixview : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void helpNamesEveryOption();
    void versionIsOneLine();
    void theIconIsDrawn();
    void badArgumentsAreRefused_data();
    void badArgumentsAreRefused();
    void anUnreadableFileIsRefused();
    void aBinaryFileIsRefused_data();
    void aBinaryFileIsRefused();
    void aMissingDisplayIsSaid();
    void aMissingOpenGLIsSaid_data();
    void aMissingOpenGLIsSaid();
    void otherPlatformsAddNoWords();
    void onWaylandThePictureIsTheSame();
    void aPictureThatCannotBeWrittenIsSaid_data();
    void aPictureThatCannotBeWrittenIsSaid();

    void barsStandWhereTheFileHasThem_data();
    void barsStandWhereTheFileHasThem();
    void atEveryRatioThePictureHasTheSizeAskedFor_data();
    void atEveryRatioThePictureHasTheSizeAskedFor();
    void peaksOfASpectrumStandWhereTheFileHasThem_data();
    void peaksOfASpectrumStandWhereTheFileHasThem();
    void aSinglePeakIsSeen_data();
    void aSinglePeakIsSeen();
    void anAreaFollowsTheValues();
    void smoothingSpreadsAPeak();
    void aLogarithmicScaleShowsPowersOfTen();
    void theSecondFileLiesOverTheFirst();
    void theBinWidthChangesTheLabelsAndNoBar();
    void twoRunsAndBothRenderLoopsGiveTheSamePicture();
    void nothingAboveTheAxisGivesAnEmptyChart_data();
    void nothingAboveTheAxisGivesAnEmptyChart();
    void noNumberAtAllIsAFailure_data();
    void noNumberAtAllIsAFailure();
    void linesThatAreNoNumberAreSaidBesideThePicture_data();
    void linesThatAreNoNumberAreSaidBesideThePicture();
    void aFailureLeavesTheFormerPicture();
    void valuesBeyondMeasureGiveAPicture_data();
    void valuesBeyondMeasureGiveAPicture();
    void aWindowStaysOpen();
    void quittingDoesNotWaitForTheReader();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString fileOf(const QString &name, const QByteArray &content) const;
    SOutcome view(const QStringList &arguments, const QProcessEnvironment &environment = {}) const;
    QImage picture(const QStringList &arguments, const SScene &scene, const QString &words = {});

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

/// Runs the viewer in the test's folder, in this process's environment where none is given.
SOutcome tst_vorlixview::view(const QStringList &arguments, const QProcessEnvironment &environment) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.setProcessEnvironment(environment.isEmpty() ? QProcessEnvironment::systemEnvironment() : environment);
    process.start(QStringLiteral(VIEWER), arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

/// The picture of a scene; a null one, and a message, when the viewer fails or says anything but `words`.
QImage tst_vorlixview::picture(const QStringList &arguments, const SScene &scene, const QString &words)
{
    const QString file = path(QStringLiteral("picture%1.png").arg(++m_pictures));
    QStringList all{QStringLiteral("--png"), file, QStringLiteral("--size"),
                    QStringLiteral("%1x%2").arg(scene.size.width()).arg(scene.size.height())};
    if (scene.dark)
        all.append(QStringLiteral("--dark"));
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QSG_RENDER_LOOP"), scene.renderLoop);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::number(scene.ratio));
    const SOutcome outcome = view(all + arguments, environment);
    if (outcome.exitCode != 0 || outcome.errors != words || !outcome.output.isEmpty()) {
        qWarning() << "exit" << outcome.exitCode << outcome.output << outcome.errors;
        return {};
    }
    return QImage(file);
}

void tst_vorlixview::helpNamesEveryOption()
{
    // Nothing of this needs a display.
    QProcessEnvironment noDisplay = QProcessEnvironment::systemEnvironment();
    noDisplay.remove(QStringLiteral("DISPLAY"));
    const SOutcome outcome = view({QStringLiteral("--help")}, noDisplay);
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QString());
    for (const char *word : {"vorlixview", "FILE...", "--png <OUT>", "--size <WxH>", "--bin-width <W>", "--unit <UNIT>",
                             "--area", "--smooth <DEPTH>", "--log", "--dark", "--help", "--version"})
        QVERIFY2(outcome.output.contains(QLatin1String(word)), word);
}

void tst_vorlixview::versionIsOneLine()
{
    const SOutcome outcome = view({QStringLiteral("--version")});
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.errors, QString());
    QVERIFY(QRegularExpression(QStringLiteral("\\Avorlixview [0-9]+\\.[0-9]+\\.[0-9]+\n\\z"))
                .match(outcome.output)
                .hasMatch());
}

/// The picture of the icon is one of the drawing: the same colours at the same places.
void tst_vorlixview::theIconIsDrawn()
{
    const QDir folder(QStringLiteral(DESKTOP_FOLDER));
    const QImage icon(folder.filePath(QStringLiteral("vorlixview-64.png")));
    QCOMPARE(icon.size(), QSize(64, 64));
    QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(icon.pixelColor(32, 6), darkGround);
    QCOMPARE(icon.pixelColor(10, 45), barColor);
    QCOMPARE(icon.pixelColor(41, 20), QColor(242, 135, 42));

    const QString drawn = path(QStringLiteral("icon.png"));
    QProcess renderer;
    renderer.start(QStringLiteral("rsvg-convert"),
                   {QStringLiteral("--width=64"), QStringLiteral("--height=64"), QStringLiteral("--output"), drawn,
                    folder.filePath(QStringLiteral("vorlixview.svg"))});
    if (!renderer.waitForStarted())
        QSKIP("there is no rsvg-convert to draw the SVG with");
    QVERIFY(renderer.waitForFinished(20000));
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

void tst_vorlixview::badArgumentsAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");

    const auto row = [](const char *name, const QString &arguments, const QString &message) {
        QTest::newRow(name) << arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts) << message;
    };
    const QString limits = QStringLiteral(": not WIDTHxHEIGHT with sides from 64 to 8192 pixels");
    const QString number = QStringLiteral(": not a number above 0");

    row("a picture of nothing", QStringLiteral("--png out.png"),
        QStringLiteral("no file given for the picture; --help tells how"));
    row("a missing file", QStringLiteral("missing.txt"), QStringLiteral("missing.txt: no such file"));
    row("a missing file after a good one", QStringLiteral("series.txt other/missing.txt"),
        QStringLiteral("other/missing.txt: no such file"));
    row("a folder", QStringLiteral("."), QStringLiteral(".: a directory, not a file of numbers"));
    row("a device", QStringLiteral("/dev/null"), QStringLiteral("/dev/null: not a regular file"));
    row("an unknown option", QStringLiteral("--colour series.txt"), QStringLiteral("Unknown option 'colour'."));
    row("Qt's help", QStringLiteral("--help-all"), QStringLiteral("Unknown option 'help-all'."));
    row("an option without its value", QStringLiteral("series.txt --png"),
        QStringLiteral("Missing value after '--png'."));
    row("an empty name for the picture", QStringLiteral("--png= series.txt"), QStringLiteral("--png: no file name"));
    for (const char *size : {"100", "100x", "x100", "axb", "-100x100", "100x-100", "63x64", "64x63", "8193x64",
                             "64x8193", "100x100x100", "1e3x100", "100X100", "4294967396x100"})
        row(size, QStringLiteral("--size %1 series.txt").arg(QLatin1String(size)),
            QStringLiteral("--size ") + QLatin1String(size) + limits);
    for (const char *width : {"0", "-1", "nan", "inf", "1e400", "wide", "1,5", "0x10"})
        row(width, QStringLiteral("--bin-width %1 series.txt").arg(QLatin1String(width)),
            QStringLiteral("--bin-width ") + QLatin1String(width) + number);
    for (const char *depth : {"0", "-1", "2.5", "many", "1000001", "99999999"})
        row(depth, QStringLiteral("--smooth %1 series.txt").arg(QLatin1String(depth)),
            QStringLiteral("--smooth %1: not a whole number from 1 to 1000000").arg(QLatin1String(depth)));
}

void tst_vorlixview::badArgumentsAreRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    fileOf(QStringLiteral("series.txt"), "1\n2\n");

    const SOutcome outcome = view(arguments);
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors, QStringLiteral("vorlixview: %1\n").arg(message));
    QCOMPARE(outcome.output, QString());
}

void tst_vorlixview::anUnreadableFileIsRefused()
{
    const QString file = fileOf(QStringLiteral("secret.txt"), "1\n");
    QVERIFY(QFile::setPermissions(file, QFileDevice::WriteOwner));
    if (QFileInfo(file).isReadable())
        QSKIP("the superuser may read everything");
    const SOutcome outcome = view({file});
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors, QStringLiteral("vorlixview: %1: permission denied\n").arg(file));
}

void tst_vorlixview::aBinaryFileIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a zero byte") << QByteArray("1\n2\0003\n", 6);
    QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    QTest::newRow("letters of two bytes") << QByteArray(
        "\xff\xfe"
        "1\0\n\0",
        6);
}

void tst_vorlixview::aBinaryFileIsRefused()
{
    QFETCH(QByteArray, content);
    const QString file = fileOf(QStringLiteral("numbers.bin"), content);
    const SOutcome outcome = view({file});
    QCOMPARE(outcome.exitCode, 2);
    QCOMPARE(outcome.errors,
             QStringLiteral("vorlixview: %1: not a text file; expected one number per line\n").arg(file));
}

void tst_vorlixview::aMissingDisplayIsSaid()
{
    QProcessEnvironment noDisplay = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        noDisplay.remove(QLatin1String(name));
    const SOutcome outcome = view({fileOf(QStringLiteral("series.txt"), "1\n")}, noDisplay);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors, QStringLiteral("vorlixview: no display; run it with xvfb-run\n"));
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

/// With a window as with a picture.
void tst_vorlixview::aMissingOpenGLIsSaid()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    QFETCH(QString, words);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    if (value == QLatin1String("offscreen"))
        environment.remove(QStringLiteral("DISPLAY")); // it draws with that display's OpenGL
    environment.insert(variable, value);
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n");
    for (const QStringList &more : {QStringList(), {QStringLiteral("--png"), QStringLiteral("picture.png")}}) {
        const SOutcome outcome = view(more + QStringList(file), environment);
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.errors, QStringLiteral("vorlixview: %1, which the charts need\n").arg(words));
        QVERIFY(!QFile::exists(path(QStringLiteral("picture.png"))));
    }
}

/// Its keys have more bindings there.
void tst_vorlixview::otherPlatformsAddNoWords()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n");
    const SOutcome outcome = view({QStringLiteral("--png"), QStringLiteral("picture.png"), file}, environment);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(QImage(path(QStringLiteral("picture.png"))).size(), QSize(1280, 720));
}

/// And nothing is said there, neither for a picture nor for a window.
void tst_vorlixview::onWaylandThePictureIsTheSame()
{
    const QString socket = QStringLiteral("wayland-of-the-test");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    QProcess compositor;
    compositor.setProcessEnvironment(environment);
    compositor.start(QStringLiteral("weston"),
                     {QStringLiteral("--backend=headless-backend.so"), QStringLiteral("--use-gl"),
                      QStringLiteral("--width=1600"), QStringLiteral("--height=1000"), QStringLiteral("--idle-time=0"),
                      QStringLiteral("--socket=") + socket});
    if (!compositor.waitForStarted())
        QSKIP("weston isn't installed");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(socket)), 30000);
    environment.remove(QStringLiteral("DISPLAY"));
    environment.insert(QStringLiteral("WAYLAND_DISPLAY"), socket);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n4\n1\n5\n");

    const SOutcome outcome = view({QStringLiteral("--png"), QStringLiteral("wayland.png"), QStringLiteral("--size"),
                                   QStringLiteral("640x480"), file},
                                  environment);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(QImage(path(QStringLiteral("wayland.png"))),
             picture({file}, {QSize(640, 480), false, QStringLiteral("threaded")}));

    QProcess window;
    window.setProcessEnvironment(environment);
    window.start(QStringLiteral(VIEWER), {file});
    QVERIFY(window.waitForStarted());
    QVERIFY(!window.waitForFinished(1500));
    window.terminate();
    QVERIFY(window.waitForFinished(20000));
    QCOMPARE(QString::fromUtf8(window.readAllStandardError()), QString());
    compositor.terminate();
    QVERIFY(compositor.waitForFinished(20000));
}

void tst_vorlixview::aPictureThatCannotBeWrittenIsSaid_data()
{
    QTest::addColumn<QString>("picture");
    QTest::newRow("into a missing folder") << QStringLiteral("missing/picture.png");
    QTest::newRow("over a folder") << QStringLiteral(".");
    QTest::newRow("onto a full device") << QStringLiteral("/dev/full");
}

void tst_vorlixview::aPictureThatCannotBeWrittenIsSaid()
{
    QFETCH(QString, picture);
    const QString series = fileOf(QStringLiteral("series.txt"), "1\n");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    const SOutcome outcome = view({QStringLiteral("--png"), picture, series}, environment);
    QCOMPARE(outcome.exitCode, 1);
    QVERIFY2(outcome.errors.startsWith(QStringLiteral("vorlixview: %1: ").arg(picture)), qPrintable(outcome.errors));
    QCOMPARE(outcome.errors.count(QLatin1Char('\n')), 1);
}

void tst_vorlixview::barsStandWhereTheFileHasThem_data()
{
    QTest::addColumn<SScene>("scene");
    for (const char *loop : {"threaded", "basic"}) {
        for (const QSize size : {QSize(320, 240), QSize(1001, 703)}) {
            for (const bool dark : {false, true}) {
                QTest::addRow("%s, %dx%d, %s", loop, size.width(), size.height(), dark ? "dark" : "light")
                    << SScene{size, dark, QLatin1String(loop)};
            }
        }
    }
}

/// The bars' height in pixels in a column, measured from the bottom of the chart.
static int columnHeight(const QImage &image, int x, int bottom)
{
    int y = bottom;
    while (y >= chartTop && image.pixelColor(x, y) == barColor)
        --y;
    return bottom - y;
}

/// The ground, or a line of the axis on it.
static bool isGround(const QColor &color, bool dark)
{
    return color == (dark ? darkGround : lightGround) || color == (dark ? darkLines : lightLines);
}

/// What the bars cover in the chart. Below it they are seen once more, in the navigator.
static QRect barBox(const QImage &image)
{
    QRect box;
    for (int y = chartTop; y < image.height() - chartBottom; ++y) {
        for (int x = chartLeft; x < image.width() - chartRight; ++x) {
            if (image.pixelColor(x, y) == barColor)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

void tst_vorlixview::barsStandWhereTheFileHasThem()
{
    QFETCH(SScene, scene);
    const QString file =
        fileOf(QStringLiteral("zwölf Werte.txt"), "4\n0\n9\r\nno number\n\n2.5\n7\n1e0\n+3\n 6 \n5\n0.5");
    const QVector<double> values{4, 0, 9, 0, 0, 2.5, 7, 1, 3, 6, 5, 0.5};
    const double highest = 9.0;

    const QImage image = picture({file}, scene);
    QCOMPARE(image.size(), scene.size);
    const QRect box = barBox(image);

    // Fitted: from margin to margin, and the highest bar leaves 5 % of its height above it.
    QCOMPARE(box.left(), chartLeft);
    QCOMPARE(box.right(), scene.size.width() - chartRight - 1);
    QCOMPARE(box.bottom(), scene.size.height() - chartBottom - 1);
    const double chartHeight = box.bottom() + 1 - chartTop;
    QVERIFY(std::abs(box.height() - chartHeight / 1.05) <= 1.0);

    const double barWidth = double(box.width()) / values.size();
    for (int i = 0; i < values.size(); ++i) {
        const double expected = chartHeight / 1.05 * values[i] / highest;
        // The first and the last pixel whose centres lie in the bar, but for a pixel that rounding may take.
        const int first = int(std::ceil(box.left() + i * barWidth - 0.5 + 0.1));
        const int last = int(std::floor(box.left() + (i + 1) * barWidth - 0.5 - 0.1));
        for (const int x : {first, (first + last) / 2, last}) {
            const int height = columnHeight(image, x, box.bottom());
            QVERIFY2(
                std::abs(height - expected) <= 1.0,
                qPrintable(QStringLiteral("bar %1, column %2: %3 for %4").arg(i).arg(x).arg(height).arg(expected)));
        }
        const QPoint above((first + last) / 2, box.bottom() - int(expected) - 3);
        QVERIFY(isGround(image.pixelColor(above), scene.dark));
    }
}

void tst_vorlixview::atEveryRatioThePictureHasTheSizeAskedFor_data()
{
    QTest::addColumn<SScene>("scene");
    for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
        QTest::addRow("%g, threaded", ratio) << SScene{QSize(640, 480), false, QStringLiteral("threaded"), ratio};
        QTest::addRow("%g, basic", ratio) << SScene{QSize(1001, 703), false, QStringLiteral("basic"), ratio};
    }
}

/// The layout grows with the ratio, its margins and letters too. An edge between two pixels is blurred.
void tst_vorlixview::atEveryRatioThePictureHasTheSizeAskedFor()
{
    QFETCH(SScene, scene);
    const QVector<double> values{4, 9, 2.5, 7};
    const QImage image = picture({fileOf(QStringLiteral("series.txt"), "4\n9\n2.5\n7\n")}, scene);
    QCOMPARE(image.size(), scene.size);
    QCOMPARE(image.devicePixelRatio(), 1.0);

    const double left = chartLeft * scene.ratio;
    const double right = (std::ceil(scene.size.width() / scene.ratio) - chartRight) * scene.ratio;
    const double bottom = (std::ceil(scene.size.height() / scene.ratio) - chartBottom) * scene.ratio;
    const double full = (bottom - chartTop * scene.ratio) / 1.05;
    for (int i = 0; i < values.size(); ++i) {
        const double first = left + i * (right - left) / values.size();
        const double end = left + (i + 1) * (right - left) / values.size();
        for (const double x : {first + 2.0, (first + end) / 2.0, end - 2.0}) {
            const int height = columnHeight(image, int(x), int(bottom) - 2) + 2;
            const double expected = full * values[i] / 9.0;
            QVERIFY2(
                std::abs(height - expected) <= 2.0,
                qPrintable(QStringLiteral("bar %1, column %2: %3 for %4").arg(i).arg(x).arg(height).arg(expected)));
        }
    }
    QVERIFY(isGround(image.pixelColor(int(left) - 2, int(bottom) - 4), false));
    QVERIFY(isGround(image.pixelColor(int(right) + 2, int(bottom) - 4), false));
}

void tst_vorlixview::peaksOfASpectrumStandWhereTheFileHasThem_data()
{
    QTest::addColumn<SScene>("scene");
    QTest::newRow("threaded, 1280x720") << SScene{QSize(1280, 720), false, QStringLiteral("threaded")};
    QTest::newRow("basic, 1000x600") << SScene{QSize(1000, 600), true, QStringLiteral("basic")};
}

void tst_vorlixview::peaksOfASpectrumStandWhereTheFileHasThem()
{
    QFETCH(SScene, scene);
    QProcess generator;
    generator.start(QStringLiteral(PYTHON), {QStringLiteral(SAMPLE_SPECTRUM)});
    QVERIFY(generator.waitForFinished(60000));
    const QByteArray text = generator.readAllStandardOutput();
    const QList<QByteArray> lines = text.trimmed().split('\n');
    QCOMPARE(lines.size(), 16384);
    QVector<double> counts;
    for (const QByteArray &line : lines)
        counts.append(line.toInt());
    const double highest = *std::max_element(counts.cbegin(), counts.cend());

    const QImage image = picture({fileOf(QStringLiteral("spectrum.txt"), text)}, scene);
    QCOMPARE(image.size(), scene.size);
    // A bar is the highest of so many values that it is at least a pixel wide. A pixel shows the bar in which its
    // centre lies; at a border of two bars it is either.
    const int chartWidth = scene.size.width() - chartLeft - chartRight;
    int together = 1;
    while (counts.size() / together > chartWidth)
        together *= 2;
    QVector<double> bars;
    for (int i = 0; i < counts.size(); i += together)
        bars.append(*std::max_element(counts.cbegin() + i, counts.cbegin() + i + together));
    const int bottom = barBox(image).bottom();
    const double chartHeight = bottom + 1 - chartTop;
    int columnsWithPeaks = 0;
    for (int column = 0; column < chartWidth; ++column) {
        const int bar = int((column + 0.5) / chartWidth * bars.size());
        const int height = columnHeight(image, chartLeft + column, bottom);
        const auto fits = [&](int index) {
            const double count = bars[qBound(0, index, int(bars.size()) - 1)];
            return std::abs(height - chartHeight / 1.05 * count / highest) <= 1.0;
        };
        QVERIFY2(fits(bar) || fits(bar - 1) || fits(bar + 1), qPrintable(QStringLiteral("column %1").arg(column)));
        columnsWithPeaks += height > chartHeight / 5.0;
    }
    QVERIFY(columnsWithPeaks >= 5);
}

void tst_vorlixview::aSinglePeakIsSeen_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<int>("channel");
    for (const QString &option : {QString(), QStringLiteral("--area"), QStringLiteral("--dark")}) {
        for (const int channel : {0, 4999, 7321, 9999})
            QTest::newRow(qPrintable(QStringLiteral("%1 channel %2").arg(option).arg(channel))) << option << channel;
    }
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
    const SScene scene{QSize(800, 400), false, QStringLiteral("threaded")};
    const QImage image = picture(arguments, scene);
    QCOMPARE(image.size(), scene.size);

    const int chartWidth = 800 - chartLeft - chartRight;
    const int chartHeight = 400 - chartTop - chartBottom;
    int highest = 0;
    int column = -1;
    for (int x = chartLeft; x < 800 - chartRight; ++x) {
        const int height = columnHeight(image, x, 400 - chartBottom - 1);
        column = height > highest ? x : column;
        highest = std::max(highest, height);
    }
    QVERIFY2(std::abs(highest - chartHeight / 1.05) <= 2.0, qPrintable(QString::number(highest)));
    QVERIFY2(std::abs(column - (chartLeft + (channel + 0.5) / 10000 * chartWidth)) <= 2.5,
             qPrintable(QString::number(column)));
}

/// The height up to which a column is not ground.
static int filledHeight(const QImage &image, int x)
{
    int y = image.height() - chartBottom - 1;
    while (y >= chartTop && !isGround(image.pixelColor(x, y), false))
        --y;
    return image.height() - chartBottom - 1 - y;
}

/// From the middle of one bin to the middle of the next, the height changes evenly.
void tst_vorlixview::anAreaFollowsTheValues()
{
    const QVector<double> values{4, 8, 2, 6, 6};
    const QImage image = picture({QStringLiteral("--area"), fileOf(QStringLiteral("series.txt"), "4\n8\n2\n6\n6\n")},
                                 {QSize(572, 400), false, QStringLiteral("threaded")});
    QCOMPARE(image.size(), QSize(572, 400));
    const double chartHeight = 400 - chartTop - chartBottom;
    for (int column = 55; column < 445; column += 7) { // a hundred columns a bin
        const double place = (column + 0.5) / 100.0 - 0.5;
        const int before = int(place);
        const double value = values[before] + (place - before) * (values[before + 1] - values[before]);
        const double expected = chartHeight / 1.05 * value / 8.0;
        const int height = filledHeight(image, chartLeft + column);
        QVERIFY2(std::abs(height - expected) <= 4.0,
                 qPrintable(QStringLiteral("column %1: %2 for %3").arg(column).arg(height).arg(expected)));
    }
}

/// An average over four values of one peak of 8: four or five bins of 2 around its place, as high as the chart allows.
void tst_vorlixview::smoothingSpreadsAPeak()
{
    QByteArray text;
    for (int i = 0; i < 20; ++i)
        text += i == 10 ? "8\n" : "0\n";
    const QImage image =
        picture({QStringLiteral("--smooth"), QStringLiteral("4"), fileOf(QStringLiteral("series.txt"), text)},
                {QSize(472, 400), false, QStringLiteral("threaded")});
    QCOMPARE(image.size(), QSize(472, 400));
    const double full = (400 - chartTop - chartBottom) / 1.05;
    for (int bin = 0; bin < 20; ++bin) { // twenty columns a bin
        const int height = filledHeight(image, chartLeft + 20 * bin + 10);
        const bool raised = bin >= 8 && bin <= 12;
        QVERIFY2(std::abs(height - (raised ? full : 0.0)) <= 1.0,
                 qPrintable(QStringLiteral("bin %1: %2").arg(bin).arg(height)));
    }
}

void tst_vorlixview::aLogarithmicScaleShowsPowersOfTen()
{
    const QImage image =
        picture({QStringLiteral("--log"), fileOf(QStringLiteral("series.txt"), "1\n10\n100\n1000\n0\n")},
                {QSize(572, 400), false, QStringLiteral("threaded")});
    QCOMPARE(image.size(), QSize(572, 400));
    const double full = (400 - chartTop - chartBottom) / 1.05;
    for (int bin = 0; bin < 5; ++bin) {
        const double expected = bin < 4 ? full * bin / 3.0 : 0.0;
        const int height = columnHeight(image, chartLeft + 100 * bin + 50, 400 - chartBottom - 1);
        QVERIFY2(std::abs(height - expected) <= 1.0, qPrintable(QStringLiteral("bin %1: %2").arg(bin).arg(height)));
    }
}

void tst_vorlixview::theSecondFileLiesOverTheFirst()
{
    const QStringList files{fileOf(QStringLiteral("a.txt"), "10\n0\n"), fileOf(QStringLiteral("b.txt"), "5\n5\n")};
    const QImage image = picture(files, {QSize(400, 300), false, QStringLiteral("threaded")});
    QCOMPARE(image.size(), QSize(400, 300));
    const int low = 130;
    const int high = 40;
    const auto mixed = [](const QColor &over, const QColor &under) {
        const auto channel = [](int o, int u) { return int(std::lround(0.6 * o + 0.4 * u)); };
        return QColor(channel(over.red(), under.red()), channel(over.green(), under.green()),
                      channel(over.blue(), under.blue()));
    };
    const auto near = [](const QColor &a, const QColor &b) {
        return std::abs(a.red() - b.red()) <= 2 && std::abs(a.green() - b.green()) <= 2
            && std::abs(a.blue() - b.blue()) <= 2;
    };
    const QColor second(242, 135, 42);
    QCOMPARE(image.pixelColor(100, high), barColor);
    QVERIFY(near(image.pixelColor(100, low), mixed(second, barColor)));
    QVERIFY(near(image.pixelColor(300, low), mixed(second, lightGround)));
    QCOMPARE(image.pixelColor(300, high), lightGround);
}

void tst_vorlixview::theBinWidthChangesTheLabelsAndNoBar()
{
    const SScene scene{QSize(400, 300), false, QStringLiteral("threaded")};
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n2\n");
    const QImage one = picture({file}, scene);
    const QImage tiny = picture({QStringLiteral("--bin-width"), QStringLiteral("9.375e-12"), file}, scene);
    QCOMPARE(one.size(), scene.size);
    const int bottom = barBox(one).bottom();
    const QRect bars(0, 0, 400, bottom + 1);
    const QRect labels(0, bottom + 1, 400, 299 - bottom);
    QCOMPARE(tiny.copy(bars), one.copy(bars));
    QVERIFY(tiny.copy(labels) != one.copy(labels));
}

void tst_vorlixview::twoRunsAndBothRenderLoopsGiveTheSamePicture()
{
    const QString file = fileOf(QStringLiteral("series.txt"), "3\n1\n4\n1\n5\n9\n2\n6\n");
    const QImage first = picture({file}, {QSize(500, 300), false, QStringLiteral("threaded")});
    QVERIFY(!first.isNull());
    QCOMPARE(picture({file}, {QSize(500, 300), false, QStringLiteral("threaded")}), first);
    QCOMPARE(picture({file}, {QSize(500, 300), false, QStringLiteral("basic")}), first);
}

void tst_vorlixview::nothingAboveTheAxisGivesAnEmptyChart_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("words");
    const QString none = QStringLiteral("no numbers above 0");
    QTest::newRow("a zero") << QByteArray("0\n") << QString() << none;
    QTest::newRow("below zero") << QByteArray("-1\n-2\n") << QString() << none;
    QTest::newRow("ones as logarithms") << QByteArray("1\n1\n") << QStringLiteral("--log")
                                        << QStringLiteral("no value above 1, so nothing to see on a logarithmic scale");
}

void tst_vorlixview::nothingAboveTheAxisGivesAnEmptyChart()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, option);
    QFETCH(QString, words);
    QStringList arguments{fileOf(QStringLiteral("series.txt"), content)};
    if (!option.isEmpty())
        arguments.append(option);
    const QImage image = picture(arguments, {QSize(400, 300), false, QStringLiteral("threaded")},
                                 QStringLiteral("vorlixview: series.txt: %1\n").arg(words));
    QCOMPARE(image.size(), QSize(400, 300));
    QVERIFY(barBox(image).isEmpty());
}

void tst_vorlixview::noNumberAtAllIsAFailure_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("words");
    QTest::newRow("empty") << QByteArray() << QStringLiteral("the file is empty");
    QTest::newRow("a line of text")
        << QByteArray("counts\n")
        << QStringLiteral("line 1 is \"counts\", which isn't a single number; expected one number per line");
    QTest::newRow("decimal commas")
        << QByteArray("1,2\n3,4\n")
        << QStringLiteral(
               "line 1 is \"1,2\", which isn't a single number. With points for decimal commas: "
               "tr , . <series.txt >numbers.txt; the second of two columns: "
               "cut -d , -f 2 <series.txt >numbers.txt");
    QTest::newRow("columns") << QByteArray("x;y\n1;2,5\n")
                             << QStringLiteral(
                                    "line 2 is \"1;2,5\", which isn't a single number. Its column 2 alone: "
                                    "cut -d ';' -f 2 <series.txt | tr , . >numbers.txt");
}

/// Said once, and there is no picture that would pass for one.
void tst_vorlixview::noNumberAtAllIsAFailure()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, words);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    const SOutcome outcome =
        view({QStringLiteral("--png"), QStringLiteral("picture.png"), fileOf(QStringLiteral("series.txt"), content)},
             environment);
    QCOMPARE(outcome.exitCode, 1);
    QCOMPARE(outcome.errors,
             QStringLiteral("vorlixview: series.txt: %1\n"
                            "vorlixview: picture.png: not written: there are no numbers to show\n")
                 .arg(words));
    QVERIFY(!QFile::exists(path(QStringLiteral("picture.png"))));
}

void tst_vorlixview::linesThatAreNoNumberAreSaidBesideThePicture_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("other"); // a second file
    QTest::addColumn<QString>("words");
    const auto said = [](const char *words) {
        return QStringLiteral("vorlixview: series.txt: ") + QLatin1String(words) + QLatin1Char('\n');
    };
    QTest::newRow("some decimal commas")
        << QByteArray("1\n2,5\n3\n") << QByteArray()
        << said(
               "line 2 is \"2,5\", which isn't a single number. With points for decimal commas: "
               "tr , . <series.txt >numbers.txt; the second of two columns: cut -d , -f 2 <series.txt >numbers.txt");
    QTest::newRow("one file of two")
        << QByteArray("counts\n") << QByteArray("1\n2\n")
        << said("line 1 is \"counts\", which isn't a single number; expected one number per line");
    QTest::newRow("a head") << QByteArray("# run 5 of 7\ncounts\n1\n2\n3\n") << QByteArray() << QString();
}

void tst_vorlixview::linesThatAreNoNumberAreSaidBesideThePicture()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, other);
    QFETCH(QString, words);
    QStringList files{fileOf(QStringLiteral("series.txt"), content)};
    if (!other.isEmpty())
        files.append(fileOf(QStringLiteral("other.txt"), other));
    const QImage image = picture(files, {QSize(400, 300), false, QStringLiteral("threaded")}, words);
    QCOMPARE(image.size(), QSize(400, 300));
    bool isEmpty = true;
    for (int x = chartLeft; x < 400 - chartRight; ++x)
        isEmpty &= isGround(image.pixelColor(x, 400 - chartBottom - 130), false);
    QVERIFY(!isEmpty);
}

void tst_vorlixview::aFailureLeavesTheFormerPicture()
{
    const QString picture = fileOf(QStringLiteral("picture.png"), "the former one");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    const QStringList arguments{QStringLiteral("--png"), picture, fileOf(QStringLiteral("series.txt"), "counts\n")};
    QCOMPARE(view(arguments, environment).exitCode, 1);
    QFile file(picture);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("the former one"));
    fileOf(QStringLiteral("series.txt"), "1\n");
    QCOMPARE(view(arguments, environment).exitCode, 0);
    QCOMPARE(QImage(picture).size(), QSize(1280, 720));
}

void tst_vorlixview::valuesBeyondMeasureGiveAPicture_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("infinite") << QByteArray("1\ninf\n-inf\n3\n");
    QTest::newRow("no number") << QByteArray("1\nnan\n3\n");
    QTest::newRow("huge") << QByteArray("1e308\n1.7e308\n-1.7e308\n");
    QTest::newRow("tiny") << QByteArray("1e-320\n2e-320\n");
}

void tst_vorlixview::valuesBeyondMeasureGiveAPicture()
{
    QFETCH(QByteArray, content);
    const QString file = fileOf(QStringLiteral("series.txt"), content);
    for (const QString &loop : {QStringLiteral("threaded"), QStringLiteral("basic")})
        QCOMPARE(picture({file}, {QSize(400, 300), false, loop}).size(), QSize(400, 300));
}

void tst_vorlixview::aWindowStaysOpen()
{
    QProcess process;
    process.start(QStringLiteral(VIEWER), {fileOf(QStringLiteral("series.txt"), "1\n2\n3\n")});
    QVERIFY(process.waitForStarted());
    QVERIFY(!process.waitForFinished(1500));
    process.terminate();
    QVERIFY(process.waitForFinished(20000));
}

/// Half of the time that it takes to read the file and end is far more than ending takes.
void tst_vorlixview::quittingDoesNotWaitForTheReader()
{
    const QString plugins = QStringLiteral(PLUGINS);
    if (!QFileInfo::exists(plugins))
        QSKIP("there is no plugin that closes the window");
    // A carriage return within a line sends the reader a slow way.
    const QString file = fileOf(QStringLiteral("series.txt"), QByteArray("+5\n").repeated(6'000'000) + "1\r2\n");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder->path());
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), plugins);
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorlixsnapshot"));
    environment.insert(QStringLiteral("SNAPSHOT_DO"), QStringLiteral("close()"));
    const auto timed = [&](const char *moment, const QString &loop) {
        environment.insert(QStringLiteral("QSG_RENDER_LOOP"), loop);
        environment.insert(QStringLiteral("SNAPSHOT_UNTIL"), QLatin1String(moment));
        QElapsedTimer timer;
        timer.start();
        const SOutcome outcome = view({file}, environment);
        const qint64 took = timer.elapsed();
        qInfo("%s: exit %d after %lld ms %s", moment, outcome.exitCode, took, qPrintable(outcome.errors));
        return outcome.exitCode == 0 && outcome.errors.isEmpty() ? took : -1;
    };
    const qint64 whole = timed("views.length === 1 && !reading", QStringLiteral("threaded"));
    QVERIFY(whole > 0);
    for (const QString &loop : {QStringLiteral("threaded"), QStringLiteral("basic")}) {
        const qint64 quick = timed("reading && progress >= 0", loop);
        QVERIFY(quick > 0 && quick < whole / 2);
    }
}

QTEST_GUILESS_MAIN(tst_vorlixview)
#include "tst_vorlixview.moc"
