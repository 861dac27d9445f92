// SPDX-License-Identifier: MIT
// The viewer as a process: what it says, how it exits, and what stands in its pictures.

#include <QColor>
#include <QDir>
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
    void otherPlatformsAddNoWords();
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
    void theBinWidthChangesTheLabelsAndNoBar();
    void aRangeIsAllThatIsSeen();
    void darkColorsAreDark();
    void columnsSamplesAndPipesAreRead_data();
    void columnsSamplesAndPipesAreRead();
    void bothRenderLoopsGiveTheSamePicture();
    void noNumberAtAllIsAFailure_data();
    void noNumberAtAllIsAFailure();
    void whatIsNotUnderstoodIsSaidBesideThePicture();
    void oneBadFileOfTwoIsSaid();
    void valuesBeyondMeasureGiveAPicture();
    void aWindowStaysOpen();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QString fileOf(const QString &name, const QByteArray &content) const;
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
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
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
    QProcessEnvironment variables = environment();
    if (value == QLatin1String("offscreen"))
        variables.remove(QStringLiteral("DISPLAY")); // it draws with that display's OpenGL
    variables.insert(variable, value);
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n");
    for (const QStringList &more : {QStringList(), {QStringLiteral("--png"), QStringLiteral("picture.png")}}) {
        const SOutcome outcome = view(more + QStringList(file), variables);
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.errors, QStringLiteral("vorlixview: %1, which the charts need\n").arg(words));
        QVERIFY(!QFile::exists(path(QStringLiteral("picture.png"))));
    }
}

/// Its keys have more bindings there.
void tst_vorlixview::otherPlatformsAddNoWords()
{
    QProcessEnvironment variables = environment();
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    const QString file = fileOf(QStringLiteral("series.txt"), "1\n");
    const SOutcome outcome = view({QStringLiteral("--png"), QStringLiteral("picture.png"), file}, variables);
    QCOMPARE(outcome.errors, QString());
    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(QImage(path(QStringLiteral("picture.png"))).size(), QSize(1280, 720));
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
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(socket)), 30000);
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
    QVERIFY(window.waitForFinished(20000));
    QCOMPARE(QString::fromUtf8(window.readAllStandardError()), QString());
    compositor.terminate();
    QVERIFY(compositor.waitForFinished(20000));
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
