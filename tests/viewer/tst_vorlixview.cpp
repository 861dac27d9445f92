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
