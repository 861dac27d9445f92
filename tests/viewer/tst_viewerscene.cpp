// SPDX-License-Identifier: MIT
// What people do with the viewer: open, drop and close files, press keys, click, read what it says.
#include "tests/support/Patience.h"
#include "viewer/ViewerOptions.h"
#include "viewer/ViewerScene.h"

#include <QAccessible>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QJSValue>
#include <QMap>
#include <QMimeData>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQmlIncubationController>
#include <QQmlListReference>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScopedPointer>
#include <QStyleHints>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Milliseconds that this thread has worked for: a busy machine adds none to them.
double worked()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// The visible item below another one with a property that reads so, or null.
QQuickItem *itemReading(QQuickItem *item, const QString &text)
{
    if (!item->isVisible())
        return nullptr;
    if (item->property("text").toString() == text)
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = itemReading(child, text))
            return found;
    }
    return nullptr;
}

QQuickItem *itemNamed(QQuickItem *item, const QString &name)
{
    if (item->objectName() == name)
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = itemNamed(child, name))
            return found;
    }
    return nullptr;
}

/// The dialog in front of the window, or null.
QWindow *dialog()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto isDialog = [](const QWindow *window) {
        return window->isVisible() && window->modality() != Qt::NonModal;
    };
    const auto found = std::find_if(windows.begin(), windows.end(), isDialog);
    return found == windows.end() ? nullptr : *found;
}

} // namespace

class tst_viewerscene : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void filesAreShownWithWhatWasGuessed();
    void readingShowsProgressAndNoFrozenWindow();
    void escapeEndsReading();
    void closingDoesNotWaitForTheReader();
    void whatWasClosedIsOpenedAgain();
    void droppedFilesAreShownAndOthersNamed();
    void keysZoomPanAndSwitch();
    void theBarDoesWhatItsKeysDo();
    void commandsAreFoundByTyping();
    void negativeValuesBecomeALine();
    void whatCannotBeReadIsSaid();
    void aFollowedFileSaysSo();
    void aPictureIsSaved();
    void guessesAreChangedInThePanel();
    void regionsAndPeaksAreMeasuredAndCopied();
    void cursorsAreCopied();
    void theDifferenceOfTwoFilesIsShown();
    void aFileIsShifted();
    void aFileIsScaled();
    void filesStandBeneathEachOther();
    void aPictureHasTheSizeThatIsTyped();
    void fingersZoomAndTap();
    void aScreenReaderWalksItAll();
    void theDialogsOpen();
    void aCommandLineShowsTheSame();
    void theWindowRemembers();
    void theWindowRemembersNothingIfAsked();

private:
    void show(const SViewerOptions &options);
    void showFiles(const QStringList &files, const QVariantMap &scene = {}, bool keepsSettings = false);
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(m_window, Qt::Key(key), modifiers);
    }
    bool is(const char *property) const { return m_window->property(property).toBool(); }
    QVector<QObject *> files() const;
    QObject *axis(const char *name) const { return m_plot->property(name).value<QObject *>(); }
    double from() const { return axis("axisX")->property("min").toDouble(); }
    double to() const { return axis("axisX")->property("max").toDouble(); }
    QStringList notices() const;
    void openFiles(const QStringList &files) const
    {
        QVERIFY(QMetaObject::invokeMethod(m_window, "open", Q_ARG(QVariant, files), Q_ARG(QVariant, QVariantMap())));
    }
    QQuickItem *reading(const QString &text) const { return itemReading(m_window->contentItem(), text); }
    void click(QQuickItem *item) const
    {
        QVERIFY(item);
        m_window->grabWindow(); // items that came since the last frame get their places
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    }
    /// Once all of it is there: rows that are still being made outlive the engine, which says so.
    void closeDialog() const
    {
        QTRY_COMPARE(m_engine->incubationController()->incubatingObjectCount(), 0);
        dialog()->close();
        QTRY_VERIFY(!dialog());
    }
    QString fileOf(const QString &name, const QByteArray &content) const;

    QTemporaryDir m_folder;
    QString m_short; ///< twenty values, of which the tenth is the highest
    QString m_long;  ///< ten million
    QScopedPointer<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
    QQuickItem *m_plot = nullptr;
};

void tst_viewerscene::initTestCase()
{
    QByteArray text;
    for (int i = 0; i < 20; ++i)
        text += i == 9 ? "80\n" : "40\n";
    m_short = fileOf(QStringLiteral("short.txt"), text);
    m_long = fileOf(QStringLiteral("long.txt"), QByteArray("123\n456\n").repeated(5'000'000));
}

void tst_viewerscene::cleanup()
{
    m_engine.reset();
}

QString tst_viewerscene::fileOf(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("no test file");
    return file.fileName();
}

void tst_viewerscene::show(const SViewerOptions &options)
{
    m_engine.reset(new QQmlApplicationEngine);
    m_window = loadViewerScene(*m_engine, options);
    QVERIFY(m_window);
    m_window->show();
    m_window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_window, patience));
    m_plot = m_window->property("plot").value<QQuickItem *>();
    QVERIFY(m_plot);
    QTRY_VERIFY(!is("reading"));
}

void tst_viewerscene::showFiles(const QStringList &files, const QVariantMap &scene, bool keepsSettings)
{
    SViewerOptions options;
    options.keepsSettings = keepsSettings;
    options.scene = scene;
    if (!keepsSettings)
        options.scene.insert(QStringLiteral("pixels"), QSizeF(900, 600));
    options.scene.insert(QStringLiteral("paths"), files);
    show(options);
}

QVector<QObject *> tst_viewerscene::files() const
{
    QVector<QObject *> files;
    const QJSValue list = m_window->property("files").value<QJSValue>();
    for (int i = 0; i < list.property(QStringLiteral("length")).toInt(); ++i)
        files.append(list.property(quint32(i)).toQObject());
    return files;
}

/// What the lines under the plot say.
QStringList tst_viewerscene::notices() const
{
    QStringList notices;
    for (const QQuickItem *item : m_window->property("notice").value<QQuickItem *>()->childItems()) {
        if (item->isVisible() && item->property("text").isValid())
            notices.append(item->property("text").toString());
    }
    return notices;
}

void tst_viewerscene::filesAreShownWithWhatWasGuessed()
{
    showFiles({m_short, fileOf(QStringLiteral("table.csv"), "t;U [V]\n1;2,5\n2;3,5\n")});
    QCOMPARE(files().size(), 2);
    QTRY_COMPARE(notices().size(), 2);
    QCOMPARE(notices()[0], QStringLiteral("short.txt: 1 column"));
    QVERIFY2(notices()[1].startsWith(QStringLiteral("table.csv: 2 columns between semicolons; decimal comma")),
             qPrintable(notices()[1]));
    QCOMPARE(m_window->title(), QStringLiteral("short.txt, table.csv – vorlixview"));
    QCOMPARE(to(), 20.0);
}

void tst_viewerscene::readingShowsProgressAndNoFrozenWindow()
{
    showFiles({});
    QVERIFY(reading(QStringLiteral("Drop files of numbers here, or press Ctrl+O")));
    openFiles({m_long});
    QVERIFY(is("reading"));
    auto *const reader = files()[0]->property("reader").value<QObject *>();
    QVector<double> progress{0.0};
    double longest = 0.0;
    QElapsedTimer timer;
    timer.start();
    while (is("reading")) {
        // Until there is progress, it's read for moments only: a fast machine would be done before it can be seen.
        reader->setProperty("running", true);
        if (progress.size() == 1) {
            QTest::qSleep(1);
            reader->setProperty("running", false);
        }
        const double before = worked();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        longest = std::max(longest, worked() - before);
        const double now = reader->property("progress").toDouble();
        if (now != progress.last())
            progress.append(now);
        QVERIFY(timer.elapsed() < patience);
    }
    qInfo("%d steps of progress; the longest turn of the event loop worked for %.1f ms", int(progress.size()), longest);
    QVERIFY(progress.size() >= 3);
    QVERIFY(std::is_sorted(progress.cbegin(), progress.cend()));
    QVERIFY(longest < 100.0);
    QTRY_COMPARE(to(), 1e7);
}

/// Of a pipe, which doesn't end by itself.
void tst_viewerscene::escapeEndsReading()
{
    showFiles({});
    const QByteArray path = QFile::encodeName(m_folder.filePath(QStringLiteral("endless")));
    QCOMPARE(mkfifo(path.constData(), 0600), 0);
    const int pipe = ::open(path.constData(), O_RDWR); // there is a reader at once, so it doesn't wait for one
    QVERIFY(pipe >= 0);
    QCOMPARE(write(pipe, "1\n2\n3\n", 6), ssize_t(6));
    openFiles({QFile::decodeName(path)});
    QTRY_VERIFY(files()[0]->property("hasNumbers").toBool());
    QVERIFY(is("reading"));
    press(Qt::Key_Escape);
    QTRY_VERIFY(!is("reading"));
    QTRY_VERIFY(notices().value(0).contains(QStringLiteral("stopped before the end")));
    ::close(pipe);
}

void tst_viewerscene::closingDoesNotWaitForTheReader()
{
    showFiles({m_short});
    openFiles({m_long});
    QVERIFY(is("reading"));
    QCOMPARE(files().size(), 2);
    press(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(!is("reading"));
    QCOMPARE(files().size(), 0);
    QTRY_VERIFY(reading(QStringLiteral("Drop files of numbers here, or press Ctrl+O")));
    openFiles({m_short}); // others may be opened thereafter
    QTRY_VERIFY(!is("reading"));
    QTRY_COMPARE(to(), 20.0);
}

void tst_viewerscene::whatWasClosedIsOpenedAgain()
{
    const QString other = fileOf(QStringLiteral("other.csv"), "1;2\n3;4\n");
    showFiles({m_short});
    QVERIFY(QMetaObject::invokeMethod(m_window, "open", Q_ARG(QVariant, QStringList{other}),
                                      Q_ARG(QVariant, (QVariantMap{{QStringLiteral("column"), 1}}))));
    QCOMPARE(files().size(), 2);
    press(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(files().size(), 1);
    QCOMPARE(files()[0]->property("source").toString(), m_short);
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(files().size(), 2);
    QCOMPARE(files()[1]->property("source").toString(), other);
    QCOMPARE(files()[1]->property("reader").value<QObject *>()->property("column").toInt(), 1); // as it was read before
    press(Qt::Key_Z, Qt::ControlModifier);                                                      // nothing is left
    QCOMPARE(files().size(), 2);
}

void tst_viewerscene::droppedFilesAreShownAndOthersNamed()
{
    showFiles({m_short});
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_short), QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("none.txt"))),
                  QUrl::fromLocalFile(m_folder.path()), QUrl(QStringLiteral("https://example.org/a.txt")),
                  QUrl::fromLocalFile(m_short)});
    const QPoint place(300, 300);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &drop);
    QVERIFY(drop.isAccepted());
    QCOMPARE(files().size(), 3);
    QTRY_VERIFY(!is("reading"));
    QCOMPARE(notices().last(),
             m_folder.filePath(QStringLiteral("none.txt")) + QStringLiteral(": no such file\n") + m_folder.path()
                 + QStringLiteral(": a directory, not a file of numbers\n")
                 + QStringLiteral("https://example.org/a.txt: no such file"));
    click(reading(notices().last()));
    QTRY_COMPARE(notices().size(), 3); // a click takes it away
}

void tst_viewerscene::keysZoomPanAndSwitch()
{
    showFiles({m_short});
    QTRY_COMPARE(to(), 20.0);
    press(Qt::Key_Plus);
    QCOMPARE(to() - from(), 10.0);
    press(Qt::Key_Home);
    QCOMPARE(from(), 0.0);
    press(Qt::Key_PageDown);
    QCOMPARE(from(), 9.0);
    press(Qt::Key_PageUp);
    QCOMPARE(from(), 0.0);
    press(Qt::Key_0);
    QCOMPARE(to(), 20.0);
    const auto isOn = [this](int key) {
        switch (key) {
        case Qt::Key_A:
            return m_window->property("look").toString() == QLatin1String("area");
        case Qt::Key_I:
            return m_window->property("look").toString() == QLatin1String("line");
        case Qt::Key_L:
            return axis("axisY")->property("logScale").toBool();
        case Qt::Key_O:
            return m_plot->property("overviewVisible").toBool();
        default:
            return m_plot->property("theme").value<QObject *>()->property("dark").toBool();
        }
    };
    for (const int key : {Qt::Key_A, Qt::Key_I, Qt::Key_L, Qt::Key_O, Qt::Key_D}) {
        QVERIFY(!isOn(key));
        press(key);
        QVERIFY(isOn(key));
        press(key);
        QVERIFY(!isOn(key));
    }
    press(Qt::Key_Q, Qt::ControlModifier);
    QTRY_VERIFY(!m_window->isVisible());
}

void tst_viewerscene::theBarDoesWhatItsKeysDo()
{
    showFiles({m_short});
    click(reading(QStringLiteral("Logarithmic")));
    QTRY_VERIFY(axis("axisY")->property("logScale").toBool());
    QQuickItem *areas = reading(QStringLiteral("Areas"));
    click(areas);
    QTRY_VERIFY(areas->property("checked").toBool());
    QCOMPARE(files()[0]->property("shownLook").toString(), QStringLiteral("area"));
    press(Qt::Key_Plus);          // the plot has the keys again
    QCOMPARE(to() - from(), 9.5); // an area ends at its last point
}

void tst_viewerscene::commandsAreFoundByTyping()
{
    showFiles({m_short});
    press(Qt::Key_K, Qt::ControlModifier);
    QTRY_VERIFY(itemNamed(m_window->contentItem(), QStringLiteral("search")));
    QTRY_VERIFY(reading(QStringLiteral("Read all files again")));
    for (const char letter : {'o', 'v', 'e', 'r', 'v'})
        QTest::keyClick(m_window, letter);
    QTRY_VERIFY(!reading(QStringLiteral("Read all files again")));
    QVERIFY(!m_plot->property("overviewVisible").toBool()); // no letter was a key
    press(Qt::Key_Return);
    QTRY_VERIFY(m_plot->property("overviewVisible").toBool());
    QTRY_VERIFY(!itemNamed(m_window->contentItem(), QStringLiteral("search")));
    press(Qt::Key_F1);
    QTRY_VERIFY(itemNamed(m_window->contentItem(), QStringLiteral("search")));
    for (const char letter : {'z', 'o', 'o', 'm', ' ', 'i', 'n'}) // the plot's own
        QTest::keyClick(m_window, letter);
    press(Qt::Key_Return);
    QTRY_COMPARE(to() - from(), 10.0);
    press(Qt::Key_Question);
    QTRY_VERIFY(itemNamed(m_window->contentItem(), QStringLiteral("search")));
    press(Qt::Key_Escape);
    QTRY_VERIFY(!itemNamed(m_window->contentItem(), QStringLiteral("search")));
    QTRY_VERIFY(m_plot->hasActiveFocus());
}

void tst_viewerscene::negativeValuesBecomeALine()
{
    showFiles({m_short, fileOf(QStringLiteral("signed.txt"), "1\n-1\n2\n")});
    QTRY_COMPARE(files()[1]->property("shownLook").toString(), QStringLiteral("line"));
    QCOMPARE(files()[0]->property("shownLook").toString(), QStringLiteral("bars"));
    QCOMPARE(files()[1]->property("series").value<QObject *>()->metaObject()->className(), "LineSeries");
}

void tst_viewerscene::whatCannotBeReadIsSaid()
{
    const QString empty = fileOf(QStringLiteral("empty.txt"), "");
    const QString hole = fileOf(QStringLiteral("hole.txt"), "1\n2\n3\nfoo\n5\n");
    showFiles({m_short, empty, hole});
    QTRY_COMPARE(notices().value(1), QStringLiteral("“%1” is empty").arg(empty));
    QVERIFY(notices().value(2).contains(QStringLiteral("the first one line 4")));
    QCOMPARE(to(), 20.0);
}

void tst_viewerscene::aFollowedFileSaysSo()
{
    const QString log = fileOf(QStringLiteral("log.txt"), "1\n2\n3\n");
    showFiles({log}, {{QStringLiteral("hints"), QVariantMap{{QStringLiteral("follow"), true}}}});
    const auto state = [this] {
        return itemNamed(m_window->contentItem(), QStringLiteral("state"))->property("text").toString();
    };
    QTRY_VERIFY(state().startsWith(QStringLiteral("FOLLOWING")));
    QFile file(log);
    QVERIFY(file.open(QIODevice::Append) && file.write("4\n5\n") == 4 && file.flush());
    QTRY_COMPARE(to(), 5.0);
    press(Qt::Key_Plus);
    press(Qt::Key_Left);
    QTRY_COMPARE(state(), QStringLiteral("PAUSED"));
    press(Qt::Key_End);
    QTRY_VERIFY(state().startsWith(QStringLiteral("FOLLOWING")));
    file.close();
    QVERIFY(QFile::remove(log));
    fileOf(QStringLiteral("log.txt"), "7\n8\n");
    QTRY_VERIFY(state().startsWith(QStringLiteral("FILE REPLACED, FOLLOWING")));
    QTRY_COMPARE(to(), 2.0);
}

void tst_viewerscene::aPictureIsSaved()
{
    showFiles({m_short});
    const auto save = [this](const QString &path) {
        QVERIFY(QMetaObject::invokeMethod(m_plot->parentItem(), "saveImage", Q_ARG(QString, path), Q_ARG(double, 2.0)));
    };
    save(QStringLiteral("/dev/full"));
    QTRY_COMPARE(notices().value(1), QStringLiteral("/dev/full: No space left on device"));
    const QString picture = m_folder.filePath(QStringLiteral("picture.png"));
    save(picture);
    QTRY_VERIFY(QFile::exists(picture));
    QTRY_COMPARE(notices().size(), 1); // the next one goes well: nothing is said any more
    QCOMPARE(QImage(picture).width(), 2 * int(m_plot->width()));
}

void tst_viewerscene::guessesAreChangedInThePanel()
{
    const QString table = fileOf(QStringLiteral("table.csv"), "t;U\n1;2,5\n2;3,5\n3;9,5\n");
    showFiles({table});
    QTRY_COMPARE(notices().size(), 1);
    click(reading(notices()[0])); // the notice opens
    QQuickItem *column = nullptr;
    QTRY_VERIFY((column = itemNamed(m_window->contentItem(), QStringLiteral("column"))));
    QTRY_VERIFY(reading(QStringLiteral("9,5")));
    QTRY_VERIFY(reading(QStringLiteral("U")));
    const auto type = [this](QQuickItem *field, const QByteArray &text) {
        field->forceActiveFocus();
        QVERIFY(QMetaObject::invokeMethod(field, "selectAll"));
        press(Qt::Key_Backspace);
        for (const char letter : text)
            QTest::keyClick(m_window, letter);
        press(Qt::Key_Return);
    };
    auto *reader = files()[0]->property("reader").value<QObject *>();
    type(column, "U");
    QTRY_COMPARE(reader->property("column").toString(), QStringLiteral("U"));
    QTRY_COMPARE(files()[0]->property("store").value<QObject *>()->property("maximum").toDouble(), 9.5);
    type(column, "");
    QTRY_VERIFY(!reader->property("column").isValid());
    QTRY_VERIFY(reading(QStringLiteral("9,5")));
    click(reading(QStringLiteral("9,5"))); // a number in the second column
    QTRY_COMPARE(reader->property("column").toString(), QStringLiteral("2"));
    QTRY_COMPARE(m_plot->property("axisY").value<QObject *>()->property("titleText").toString(), QStringLiteral("U"));
    auto *step = itemNamed(m_window->contentItem(), QStringLiteral("step"));
    QVERIFY(step);
    type(step, "0.5");
    QTRY_COMPARE(to(), 1.5);
    type(step, "wide"); // isn't a step
    QCOMPARE(to(), 1.5);
    QTRY_COMPARE(step->property("text").toString(), QStringLiteral("0.5"));
    auto *format = itemNamed(m_window->contentItem(), QStringLiteral("format"));
    auto *samples = itemNamed(m_window->contentItem(), QStringLiteral("sampleType"));
    QVERIFY(format && samples);
    type(column, ""); // samples have one
    type(format, "raw");
    type(samples, "int8");
    const auto count = [this] {
        const auto *store = files()[0]->property("store").value<QObject *>(); // none while it begins anew
        return store ? store->property("count").toDouble() : 0.0;
    };
    QTRY_COMPARE(count(), double(QFileInfo(table).size()));
    type(samples, "int64"); // isn't one of them
    QTRY_COMPARE(samples->property("text").toString(), QStringLiteral("int8"));
    QVERIFY(QMetaObject::invokeMethod(m_window, "focusPlot"));
    press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    QVERIFY2(QGuiApplication::clipboard()->text().contains(QStringLiteral("--format raw --sample-type int8")),
             qPrintable(QGuiApplication::clipboard()->text()));
    press(Qt::Key_H);
    QTRY_VERIFY((column = itemNamed(m_window->contentItem(), QStringLiteral("column"))));
    press(Qt::Key_Escape);
    QTRY_VERIFY(!itemNamed(m_window->contentItem(), QStringLiteral("column")));
    const double before = to() - from();
    press(Qt::Key_Plus); // the plot has the keys again
    QCOMPARE(to() - from(), before / 2.0);
}

void tst_viewerscene::regionsAndPeaksAreMeasuredAndCopied()
{
    QByteArray text;
    for (int i = 0; i < 300; ++i) // three triangles, 21 wide
        text += QByteArray::number(qMax(0, 21 - qAbs(i % 100 - 50)) * (1 + i / 100)) + '\n';
    showFiles({fileOf(QStringLiteral("peaks.txt"), text)});
    QTRY_COMPARE(to(), 300.0);
    press(Qt::Key_P);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("peak at\t250.5\npeak\t63\n"));
    press(Qt::Key_Comma);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("peak at\t150.5\npeak\t42\n"));
    press(Qt::Key_Comma);
    press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("peak at,peak\n50.5,21\n"));
    press(Qt::Key_Period);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("peak at\t150.5\npeak\t42\n"));
    press(Qt::Key_X);
    press(Qt::Key_M); // the middle third
    press(Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 12);
    QCOMPARE(lines.mid(0, 4), (QStringList{"from\t100", "to\t200", "count\t100", "sum\t882"}));
    QCOMPARE(lines.mid(8, 4), (QStringList{"maximum\t42", "maximumAt\t150", "centroid\t150", "peakWidth\t21"}));
    press(Qt::Key_M);
    QGuiApplication::clipboard()->setText(QStringLiteral("kept"));
    press(Qt::Key_C, Qt::ControlModifier); // nothing is measured
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("kept"));
}

void tst_viewerscene::cursorsAreCopied()
{
    showFiles({m_short});
    press(Qt::Key_C);
    press(Qt::Key_C);
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(),
             QStringLiteral("A at\t10\nB at\t15\nB - A at\t5\n"
                            "A short.txt\t40\nB short.txt\t40\nB - A short.txt\t0\n"));
}

void tst_viewerscene::theDifferenceOfTwoFilesIsShown()
{
    showFiles({m_short});
    press(Qt::Key_D, Qt::ControlModifier);
    QTRY_COMPARE(notices().last(), QStringLiteral("a difference needs two files"));
    press(Qt::Key_D, Qt::ControlModifier);
    QTRY_COMPARE(notices().size(), 1);
    openFiles({fileOf(QStringLiteral("flat.txt"), QByteArray("30\n").repeated(20))});
    press(Qt::Key_D, Qt::ControlModifier);
    QTRY_VERIFY(reading(QStringLiteral("short.txt − flat.txt"))); // in the legend
    QTRY_COMPARE(axis("axisY")->property("min").toDouble(), 0.0);
    const auto shown = [this] {
        const QQmlListReference list(m_plot, "seriesList", m_engine.data());
        return list.count() == 3 ? list.at(2)->property("maximum").toDouble() : std::nan("");
    };
    QTRY_COMPARE(shown(), 50.0);
    m_window->setProperty("factor", 2.0);
    QTRY_COMPARE(shown(), 20.0);
    press(Qt::Key_W, Qt::ControlModifier); // the second file
    QTRY_VERIFY(!reading(QStringLiteral("short.txt − flat.txt")));
}

void tst_viewerscene::aFileIsShifted()
{
    showFiles({m_short});
    QTRY_COMPARE(to(), 20.0);
    press(Qt::Key_H);
    QQuickItem *shift = nullptr;
    QTRY_VERIFY((shift = itemNamed(m_window->contentItem(), QStringLiteral("xOffset"))));
    shift->forceActiveFocus();
    QTest::keyClick(m_window, '5');
    press(Qt::Key_Return);
    QTRY_COMPARE(to(), 25.0);
    QCOMPARE(from(), 5.0);
}

void tst_viewerscene::aFileIsScaled()
{
    showFiles({m_short, fileOf(QStringLiteral("other.txt"), "1\n2\n3\n")});
    press(Qt::Key_H); // the file on top
    QQuickItem *scale = nullptr;
    QTRY_VERIFY((scale = itemNamed(m_window->contentItem(), QStringLiteral("yFactor"))));
    scale->forceActiveFocus();
    for (const char letter : {'5', '0'})
        QTest::keyClick(m_window, letter);
    press(Qt::Key_Return);
    QCOMPARE(files()[1]->property("series").value<QObject *>()->property("maximum").toDouble(), 150.0);
    QTRY_VERIFY(axis("axisY")->property("max").toDouble() >= 150.0);
    QTRY_VERIFY(reading(QStringLiteral("other.txt × 50"))); // in the legend
}

void tst_viewerscene::filesStandBeneathEachOther()
{
    const QString other = fileOf(QStringLiteral("other.txt"), "t\n" + QByteArray("1\n2\n").repeated(10));
    showFiles({m_short, other});
    QTRY_COMPARE(to(), 20.0);
    const auto plotOf = [this](int file) { return qobject_cast<QQuickItem *>(files()[file])->parentItem(); };
    QCOMPARE(plotOf(1), m_plot);
    const double alone = m_plot->height();
    press(Qt::Key_B);
    QTRY_VERIFY(plotOf(1) != m_plot);
    QQuickItem *lower = plotOf(1);
    QVERIFY(m_plot->height() < 0.6 * alone);
    QCOMPARE(lower->y(), m_plot->height());
    QCOMPARE(lower->property("linkedTo").value<QQuickItem *>(), m_plot);
    QCOMPARE(QQmlListReference(m_plot, "seriesList", m_engine.data()).count(), 1);
    QCOMPARE(QQmlListReference(lower, "seriesList", m_engine.data()).count(), 1);
    QCOMPARE(lower->property("axisY").value<QObject *>()->property("titleText").toString(), QStringLiteral("t"));
    press(Qt::Key_O); // one overview, of the lowest
    QVERIFY(!m_plot->property("overviewVisible").toBool());
    QVERIFY(lower->property("overviewVisible").toBool());

    click(lower); // what is done is done to the plot that has the focus; x is common
    press(Qt::Key_Plus);
    QCOMPARE(to() - from(), 10.0);
    press(Qt::Key_0);
    press(Qt::Key_M);
    QVERIFY(lower->property("regionVisible").toBool() && !m_plot->property("regionVisible").toBool());
    press(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("from\t")));
    press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    QVERIFY(QGuiApplication::clipboard()->text().startsWith(QStringLiteral("vorlixview --beneath --range 0:20 ")));

    openFiles({m_short}); // a third one below
    QTRY_COMPARE(files().size(), 3);
    QTRY_VERIFY(plotOf(2) != m_plot && plotOf(2) != plotOf(1));
    QTRY_COMPARE(plotOf(2)->y(), plotOf(1)->y() + plotOf(1)->height());
    press(Qt::Key_W, Qt::ControlModifier);
    QTRY_COMPARE(files().size(), 2);
    QTRY_VERIFY(plotOf(1) != m_plot && plotOf(1)->property("overviewVisible").toBool());
    press(Qt::Key_B);
    QTRY_COMPARE(plotOf(1), m_plot);
    QTRY_COMPARE(m_plot->height(), alone);
    QCOMPARE(QQmlListReference(m_plot, "seriesList", m_engine.data()).count(), 2);
    press(Qt::Key_Plus); // the plot has the keys again
    QCOMPARE(to() - from(), 10.0);
}

/// In the panel in front of the dialog, which has the window's size at first.
void tst_viewerscene::aPictureHasTheSizeThatIsTyped()
{
    showFiles({m_short});
    press(Qt::Key_S, Qt::ControlModifier);
    const auto field = [this](const char *name) {
        return itemNamed(m_window->contentItem(), QString::fromLatin1(name));
    };
    QTRY_VERIFY(field("pictureWidth"));
    const double ratio = m_window->effectiveDevicePixelRatio();
    QCOMPARE(field("pictureWidth")->property("text").toInt(), qRound(900 * ratio));
    QCOMPARE(field("pictureHeight")->property("text").toInt(), qRound(600 * ratio));
    const auto type = [&](const char *name, const QByteArray &text) {
        field(name)->forceActiveFocus();
        QVERIFY(QMetaObject::invokeMethod(field(name), "selectAll"));
        for (const char letter : text)
            QTest::keyClick(m_window, letter);
        press(Qt::Key_Return);
    };
    type("pictureWidth", "2560");
    type("pictureHeight", "1000");
    click(reading(QStringLiteral("Save…")));
    QObject *dialogs = nullptr;
    QTRY_VERIFY((dialogs = m_window->findChild<QObject *>(QStringLiteral("dialogs"))));
    QTRY_VERIFY(dialog());
    const QString picture = m_folder.filePath(QStringLiteral("typed.png"));
    QQmlExpression taken(qmlContext(dialogs), dialogs, QStringLiteral("uses.picture.take(['%1'])").arg(picture));
    taken.evaluate(); // as if the file had been chosen
    QVERIFY2(!taken.hasError(), qPrintable(taken.error().toString()));
    QTRY_VERIFY(QFile::exists(picture));
    QCOMPARE(QImage(picture).size(), QSize(2560, 1000));
    QTRY_VERIFY(!field("pictureWidth")); // the dialog came in its place
    closeDialog();
}

void tst_viewerscene::fingersZoomAndTap()
{
    QTouchDevice *const screen = QTest::createTouchDevice();
    showFiles({m_short});
    QTRY_COMPARE(to(), 20.0);
    const QPoint middle = m_plot->mapToScene({m_plot->width() / 2, m_plot->height() / 2}).toPoint();
    const auto finger = [&](int distance) { return middle + QPoint(distance, 0); };
    QTest::touchEvent(m_window, screen).press(0, finger(-50), m_window).press(1, finger(50), m_window);
    for (const int distance : {80, 120, 160, 200})
        QTest::touchEvent(m_window, screen).move(0, finger(-distance), m_window).move(1, finger(distance), m_window);
    QTest::touchEvent(m_window, screen).release(0, finger(-200), m_window).release(1, finger(200), m_window);
    QVERIFY2(to() - from() < 10.0, qPrintable(QString::number(to() - from())));
    QQuickItem *const button = reading(QStringLiteral("Logarithmic"));
    const QPoint place = button->mapToScene({button->width() / 2, button->height() / 2}).toPoint();
    QTest::touchEvent(m_window, screen).press(0, place, m_window);
    QTest::touchEvent(m_window, screen).release(0, place, m_window);
    QTRY_VERIFY(axis("axisY")->property("logScale").toBool());
}

/// By its roles and names, and by what can be pressed.
void tst_viewerscene::aScreenReaderWalksItAll()
{
    showFiles({m_short, fileOf(QStringLiteral("other.txt"), "1\n2\n3\n")});
    QTRY_COMPARE(notices().size(), 2);
    const auto found = [this] {
        QMap<QString, QAccessibleInterface *> items;
        const std::function<void(QAccessibleInterface *)> walk = [&](QAccessibleInterface *item) {
            if (!item->state().invisible)
                items.insert(item->text(QAccessible::Name), item);
            for (int i = 0; i < item->childCount(); ++i)
                walk(item->child(i));
        };
        walk(QAccessible::queryAccessibleInterface(m_window));
        return items;
    };
    const auto roleOf = [&](const char *name) {
        QAccessibleInterface *item = found().value(QString::fromUtf8(name));
        return item ? item->role() : QAccessible::NoRole;
    };
    QCOMPARE(roleOf("Menu"), QAccessible::Button);
    QCOMPARE(roleOf("Logarithmic"), QAccessible::CheckBox);
    QCOMPARE(roleOf("other.txt: 1 column"), QAccessible::AlertMessage);
    QCOMPARE(roleOf("other.txt"), QAccessible::CheckBox); // in the legend
    const auto saysItsNumbers = [&] {
        const QStringList names = found().keys();
        return !names.filter(QStringLiteral("short.txt, 20 values from 40 to 80")).isEmpty();
    };
    QTRY_VERIFY(saysItsNumbers());
    QAccessibleInterface *const log = found().value(QStringLiteral("Logarithmic"));
    QCOMPARE(log->text(QAccessible::Description), QStringLiteral("L")); // its key
    log->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(axis("axisY")->property("logScale").toBool());
    press(Qt::Key_H);
    QTRY_COMPARE(roleOf("Column of x"), QAccessible::EditableText);
    press(Qt::Key_Escape);
    press(Qt::Key_F1);
    QTRY_COMPARE(roleOf("Search for a command"), QAccessible::EditableText);
    QTRY_COMPARE(roleOf("Read all files again"), QAccessible::MenuItem);
}

void tst_viewerscene::theDialogsOpen()
{
    showFiles({m_short});
    for (const char *name : {"open", "picture", "table"}) {
        QVERIFY(QMetaObject::invokeMethod(m_window, "showDialog", Q_ARG(QVariant, QString::fromLatin1(name)),
                                          Q_ARG(QVariant, QVariant())));
        QTRY_VERIFY(dialog());
        closeDialog();
    }
}

void tst_viewerscene::aCommandLineShowsTheSame()
{
    const QString odd = fileOf(QStringLiteral("it's odd.csv"), "1;2\n2;3\n3;1\n");
    showFiles({odd},
              {{QStringLiteral("hints"), QVariantMap{{QStringLiteral("column"), QStringLiteral("2")}}},
               {QStringLiteral("unit"), QStringLiteral("keV")},
               {QStringLiteral("logarithmic"), true}});
    QTRY_COMPARE(to(), 3.0);
    press(Qt::Key_A);
    QTRY_COMPARE(to(), 2.0);
    press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    QString quoted = odd;
    quoted.replace(QStringLiteral("'"), QStringLiteral("'\\''"));
    QCOMPARE(QGuiApplication::clipboard()->text(),
             QStringLiteral("vorlixview --area --log --column 2 --unit keV --range 0:2 '%1'").arg(quoted));
}

void tst_viewerscene::theWindowRemembers()
{
    const QString table = fileOf(QStringLiteral("kept.csv"), "1;2\n2;5\n");
    showFiles({m_short, table}, {}, true);
    QCOMPARE(m_window->size(), QSize(1280, 720));
    m_window->resize(1000, 500);
    press(Qt::Key_D);
    press(Qt::Key_O);
    press(Qt::Key_H);
    QTRY_VERIFY(reading(QStringLiteral("Remember for *.csv")));
    files()[1]->setProperty("hints", QVariantMap{{QStringLiteral("column"), 2}});
    click(reading(QStringLiteral("Remember for *.csv")));
    QVERIFY(m_window->close());
    m_engine.reset();
    showFiles({}, {}, true);
    QCOMPARE(m_window->size(), QSize(1000, 500));
    QVERIFY(m_plot->property("theme").value<QObject *>()->property("dark").toBool());
    QVERIFY(m_plot->property("overviewVisible").toBool());
    click(reading(table)); // the one opened last
    QTRY_COMPARE(files().size(), 1);
    QCOMPARE(files()[0]->property("source").toString(), table);
    QCOMPARE(files()[0]->property("reader").value<QObject *>()->property("column").toInt(), 2);
}

void tst_viewerscene::theWindowRemembersNothingIfAsked()
{
    showFiles({});
    QVERIFY(!m_plot->property("overviewVisible").toBool());
    QVERIFY(!reading(m_short));
    m_window->close();
    m_engine.reset();
    showFiles({}, {}, true);
    QCOMPARE(m_window->size(), QSize(1000, 500)); // as the last one that remembers left it
}

int main(int argc, char **argv)
{
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    QCoreApplication::setOrganizationName(QStringLiteral("vorlixview"));
    QGuiApplication application(argc, argv);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    QGuiApplication::styleHints()->setMousePressAndHoldInterval(patience); // a finger that is late still taps
    tst_viewerscene test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_viewerscene.moc"
