// SPDX-License-Identifier: MIT
// The viewer's scene with ten million values: what a long series shows at every zoom, and how long a step takes; and
// what people do with it: open, drop and close files, point, turn the wheel, press keys.
#include "viewer/ViewerOptions.h"
#include "viewer/ViewerScene.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QJSValue>
#include <QMimeData>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScopedPointer>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <ctime>

namespace {

constexpr int count = 10'000'000;
constexpr int peakIndex = 7'654'321;
constexpr int peakValue = 997;
constexpr int highestOther = 500;

/// Three digits and a line end per value: the noise of a linear congruential generator, and one peak.
QByteArray numbers()
{
    QByteArray text(4 * count, '\n');
    char *place = text.data();
    quint32 state = 1;
    for (int i = 0; i < count; ++i, place += 4) {
        state = state * 1664525u + 1013904223u;
        const int value = i == peakIndex ? peakValue : 300 + int(state >> 16) % (highestOther - 300 + 1);
        place[0] = char('0' + value / 100);
        place[1] = char('0' + value / 10 % 10);
        place[2] = char('0' + value % 10);
    }
    return text;
}

/// Milliseconds that this thread, or the whole process, has worked for: a busy machine adds none to them.
double worked(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

struct SStep
{
    double blocked; ///< milliseconds in which the GUI thread did not return
    double shown;   ///< milliseconds until the frame was on the screen
    double work;    ///< milliseconds that all threads worked for it
};

} // namespace

class tst_viewerscene : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void theHighestValueIsSeenAtEveryZoom_data();
    void theHighestValueIsSeenAtEveryZoom();
    void barsStandExactlyFarFromTheOrigin();
    void stepsAreQuick_data();
    void stepsAreQuick();
    void readingShowsProgressAndNoFrozenWindow();
    void closingDoesNotWaitForTheReader();
    void droppedFilesAreShownAndOthersNamed();
    void keysZoomPanAndSwitch();
    void theWheelZoomsAtThePointerAndPans();
    void fieldsTakeValuesAndForgetOthers_data();
    void fieldsTakeValuesAndForgetOthers();
    void pointingTellsAndMarksTheValue_data();
    void pointingTellsAndMarksTheValue();
    void anAreaReachesTheEdges_data();
    void anAreaReachesTheEdges();
    void legendNamesCanBeRead_data();
    void legendNamesCanBeRead();
    void linesThatAreNoNumberAreSaidInTheWindow();
    void anExportThatFailsIsSaidInTheWindow();

private:
    void open(bool area, int smoothDepth = 1);
    void show(const SViewerOptions &options);
    void showShort(bool area = false);
    void call(const char *function) const { QVERIFY(QMetaObject::invokeMethod(m_window, function)); }
    bool is(const char *property) const { return m_window->property(property).toBool(); }
    int views() const
    {
        return m_window->property("views").value<QJSValue>().property(QStringLiteral("length")).toInt();
    }
    QPoint pointAt(double x, double y) const;
    void zoom(double left, double width);
    SStep timedZoom(double left, double width);
    QImage settled();
    QString footer() const { return m_window->property("footer").value<QQuickItem *>()->property("text").toString(); }
    bool shows(const QString &text) const;
    void open(const QStringList &files);
    QString fileOf(const QString &name, const QByteArray &content) const;
    QRectF zoomRect() const { return m_chart->property("zoomRect").toRectF(); }
    QRect chartBox() const;

    QTemporaryDir m_folder;
    QString m_file;
    QString m_short; ///< twenty values, of which the tenth is the highest
    QScopedPointer<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
    QQuickItem *m_chart = nullptr;
};

void tst_viewerscene::initTestCase()
{
    m_file = m_folder.filePath(QStringLiteral("long.txt"));
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(numbers()) == 4 * count);
    m_short = m_folder.filePath(QStringLiteral("short.txt"));
    QFile shortFile(m_short);
    QVERIFY(shortFile.open(QIODevice::WriteOnly));
    for (int i = 0; i < 20; ++i)
        shortFile.write(i == 9 ? "80\n" : "40\n");
}

void tst_viewerscene::cleanup()
{
    m_engine.reset();
}

void tst_viewerscene::open(bool area, int smoothDepth)
{
    SViewerOptions options;
    options.files = QStringList{m_file};
    options.area = area;
    options.smoothDepth = smoothDepth;
    m_engine.reset(new QQmlApplicationEngine);
    QElapsedTimer timer;
    timer.start();
    m_window = loadViewerScene(*m_engine, options);
    QVERIFY(m_window);
    m_window->show();
    m_chart = m_window->property("chart").value<QQuickItem *>();
    QVERIFY(m_chart);
    qint64 longest = 0;
    QElapsedTimer turn;
    do {
        turn.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        longest = std::max(longest, turn.elapsed());
        QVERIFY(timer.elapsed() < 60000);
    } while (m_window->property("reading").toBool());
    qInfo("opened in %lld ms; the longest turn of the event loop took %lld ms", timer.elapsed(), longest);
    settled();
}

void tst_viewerscene::zoom(double left, double width)
{
    const QRectF now = zoomRect();
    m_chart->setProperty("zoomRect", QRectF(left, now.y(), width, now.height()));
}

/// The picture once the scene stands still, after as many frames as a fit may take.
QImage tst_viewerscene::settled()
{
    QImage last;
    for (int frame = 0; frame < 100; ++frame) {
        QTest::qWait(30);
        m_chart->update();
        const QImage image = m_window->grabWindow().convertToFormat(QImage::Format_RGB32);
        if (frame >= 3 && image == last)
            break;
        last = image;
    }
    return last;
}

QRect tst_viewerscene::chartBox() const
{
    return m_chart->mapRectToScene(m_chart->boundingRect()).toAlignedRect();
}

SStep tst_viewerscene::timedZoom(double left, double width)
{
    std::atomic<qint64> shown{0};
    const double before = worked(CLOCK_PROCESS_CPUTIME_ID);
    QElapsedTimer timer;
    timer.start();
    zoom(left, width);
    const double blocked = double(timer.nsecsElapsed()) / 1e6;
    const QMetaObject::Connection connection = connect(
        m_window, &QQuickWindow::frameSwapped, m_window, [&] { shown = timer.nsecsElapsed(); }, Qt::DirectConnection);
    m_chart->update(); // the chart drops requests that come within its interval
    const bool came = QTest::qWaitFor([&] { return shown != 0; }, 5000);
    disconnect(connection);
    if (!came)
        return {blocked, 1e9, 1e9};
    return {blocked, double(shown) / 1e6, worked(CLOCK_PROCESS_CPUTIME_ID) - before};
}

void tst_viewerscene::theHighestValueIsSeenAtEveryZoom_data()
{
    QTest::addColumn<bool>("area");
    QTest::newRow("bars") << false;
    QTest::newRow("area") << true;
}

void tst_viewerscene::theHighestValueIsSeenAtEveryZoom()
{
    QFETCH(bool, area);
    open(area);
    double width = count;
    for (int step = 0; width >= 8.0; ++step, width /= 1.83) {
        // The peak is here and there in the view, at no round place.
        const double fraction = 0.13 + 0.74 * std::fmod(step * 0.618, 1.0);
        const double left = std::min(std::max(peakIndex + 0.5 - fraction * width, 0.0), count - width);
        zoom(left, width);
        const QImage image = settled();
        const QRect box = chartBox();
        const QRectF shown = zoomRect();
        QVERIFY2(std::abs(shown.width() - width) < 1e-6 * width, qPrintable(QString::number(width)));
        QVERIFY(std::abs(shown.height() - 1.05 * peakValue) < 1e-3);

        // Above all other values, half way up to the peak, only the peak is seen: one bar, as wide as it has to be.
        const int y = box.bottom() - int(0.75 * box.height());
        const QRgb ground = image.pixel(box.right() - 1, box.top() + 2);
        int first = -1;
        int last = -1;
        for (int x = box.left(); x <= box.right(); ++x) {
            if (image.pixel(x, y) == ground)
                continue;
            first = first < 0 ? x : first;
            last = x;
        }
        const double pixels = box.width() / shown.width();
        const double place = box.left() + (peakIndex - shown.left()) * pixels;
        const double slack = area ? 3.0 : 2.0;
        const QByteArray what = "zoom to " + QByteArray::number(width) + ": " + QByteArray::number(first) + " to "
            + QByteArray::number(last) + " for " + QByteArray::number(place);
        QVERIFY2(first >= 0, what);
        if (!area || pixels < 1.0) {
            QVERIFY2(first >= place - slack && first <= place + slack, what);
            QVERIFY2(last <= place + std::max(pixels, 1.0) + slack, what);
        }

        // Its top.
        int top = box.bottom();
        for (int x = first; x <= last; ++x) {
            int highest = y;
            while (highest > box.top() && image.pixel(x, highest) != ground)
                --highest;
            top = std::min(top, highest);
        }
        const double height = box.top() + box.height() * (1.0 - 1.0 / 1.05);
        QVERIFY2(std::abs(top - height) <= 3.0, qPrintable(QStringLiteral("%1 for %2").arg(top).arg(height)));
    }
}

void tst_viewerscene::barsStandExactlyFarFromTheOrigin()
{
    open(false);
    for (const double width : {40.0, 7.0, 3.0}) {
        zoom(peakIndex - 1.25, width);
        const QImage image = settled();
        const QRect box = chartBox();
        const double pixels = box.width() / width;
        const int y = box.bottom() - int(0.75 * box.height());
        const QRgb ground = image.pixel(box.right() - 1, box.top() + 2);
        const int left = box.left() + int(std::lround(1.25 * pixels));
        const int right = box.left() + int(std::lround(2.25 * pixels));
        for (const int x : {left - 2, right + 1})
            QVERIFY2(image.pixel(x, y) == ground, qPrintable(QString::number(x)));
        for (const int x : {left + 1, right - 2})
            QVERIFY2(image.pixel(x, y) != ground, qPrintable(QString::number(x)));
    }
}

void tst_viewerscene::stepsAreQuick_data()
{
    theHighestValueIsSeenAtEveryZoom_data();
}

void tst_viewerscene::stepsAreQuick()
{
    QFETCH(bool, area);
    open(area);
    const auto report = [](const char *what, std::vector<SStep> steps) {
        std::sort(steps.begin(), steps.end(), [](const SStep &a, const SStep &b) { return a.work < b.work; });
        double blocked = 0.0;
        double longest = 0.0;
