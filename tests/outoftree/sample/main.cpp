// SPDX-License-Identifier: MIT
// Usage: sample [--check]
//
// Shows series that come from a worker thread through a filter of this program's own.
// With --check it looks at its windows after some of them, says what it saw, and closes them.
#include "Envelope.h"
#include "Sampler.h"

#include <plotters/BarPlotterDx.h>

#include <QDebug>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QOpenGLContext>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

namespace {

constexpr int seriesCount = 20;

bool isBar(const QImage &picture, int x, int y)
{
    const QColor color = picture.pixelColor(x, y);
    return color.red() > 200 && color.green() > 150 && color.blue() < 80;
}

/// The peak stands at a quarter of the width and falls off to its right, to 0.99^50 = 0.6 of its height 50 samples on.
/// The chart's top is 1.05 times the largest number.
bool looksRight(const QImage &picture)
{
    const auto rowOf = [&](double share) { return int(picture.height() * (1.0 - share / 1.05)); };
    const auto columnOf = [&](double sample) { return int(picture.width() * (sample + 0.5) / 400.0); };
    return !isBar(picture, columnOf(50), rowOf(0.1))  // left of the peak: nothing
        && isBar(picture, columnOf(100), rowOf(0.95)) // the peak
        && isBar(picture, columnOf(150), rowOf(0.55)) // falling off ...
        && !isBar(picture, columnOf(150), rowOf(0.68))
        && isBar(picture, columnOf(200), rowOf(0.45)) // ... until the second peak
        && !isBar(picture, columnOf(200), rowOf(0.6));
}

/// Another decay and back again: the same result, so what is filtered again is the input.
bool filtersItsInputAgain(Envelope &envelope)
{
    const QVector<double> before = envelope.data();
    envelope.setDecay(1.0);
    const bool changed = envelope.data() != before;
    envelope.setDecay(0.99);
    return changed && envelope.data() == before;
}

void save(QObject &plot, const QString &path)
{
    //! [export]
    const bool called = QMetaObject::invokeMethod(&plot, "exportImage", Q_ARG(QVariant, path), Q_ARG(QVariant, 2));
    //! [export]
    if (!called)
        qFatal("exportImage() can't be called");
}

/// Looks at the window while the source goes on, says what it saw, and closes all windows.
class Check : public QObject
{
public:
    Check(QQuickWindow &window, Envelope &envelope) : m_window(window), m_envelope(envelope) {}

    void begin()
    {
        QObject::connect(&m_envelope, &Envelope::dataChanged, this, [this] {
            if (QThread::currentThread() != thread())
                qFatal("A series arrived on the wrong thread");
            if (++m_published < seriesCount || m_patience.isValid() || !isShown())
                return;
            m_patience.start();
            look();
        });
    }

private:
    /// A plot has no size before its window is shown, which the source doesn't wait for.
    bool isShown() const { return !plot()->size().isEmpty() && plot()->window()->isExposed(); }

    QQuickItem *plot() const { return m_window.findChild<QQuickItem *>("plot"); }

    void look()
    {
        constexpr int lookAgainMs = 20;
        m_filters = filtersItsInputAgain(m_envelope);
        save(*plot(), m_folder.filePath("plot.png"));
        QObject::connect(&m_timer, &QTimer::timeout, this, [this] { judge(); });
        m_timer.start(lookAgainMs);
    }

    /// The picture is saved after some frames, whose number the machine decides.
    void judge()
    {
        constexpr int patienceMs = 60'000;
        const bool saved = QImage(m_folder.filePath("plot.png")).size() == QSize(600, 400);
        const bool right = looksRight(m_window.grabWindow()); // unless a series has just come, and its range hasn't
        if (!(saved && right) && !m_patience.hasExpired(patienceMs))
            return;
        m_timer.stop();
        const bool embedded = m_window.openglContext()->isOpenGLES();
        qInfo() << m_published << "series published; picture" << right << "filter" << m_filters << "export" << saved
                << "OpenGL ES" << embedded;
        if (right && m_filters && saved && embedded)
            closeWindows();
        else
            QCoreApplication::exit(1);
    }

    /// As a user does it; the program ends.
    static void closeWindows()
    {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (QWindow *shown : windows)
            shown->close();
    }

    QQuickWindow &m_window;
    Envelope &m_envelope;
    QTemporaryDir m_folder;
    QTimer m_timer;
    QElapsedTimer m_patience;
    int m_published = 0;
    bool m_filters = false;
};

} // namespace

int main(int argc, char **argv)
{
    //! [format]
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGLES);
    QSurfaceFormat::setDefaultFormat(format);
    QGuiApplication application(argc, argv);
    //! [format]
    //! [register]
    qRegisterMetaType<QVector<double>>("QVector<double>"); // so that a queued connection can carry a series
    //! [register]
    //! [type]
    qmlRegisterType<Envelope>("Sample", 1, 0, "Envelope");
    //! [type]

    //! [path]
    QQmlApplicationEngine engine;
    engine.addImportPath(VORLIX_QML_IMPORT_PATH);
    engine.load(QUrl("qrc:/Main.qml"));
    //! [path]
    if (engine.rootObjects().isEmpty())
        return 2;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    auto *envelope = window->property("envelope").value<Envelope *>();

    //! [plotter]
    BarPlotterDx marks;
    marks.setProperty("chartArea", QVariant::fromValue(window->findChild<QObject *>("chart")));
    marks.setProperty("color", QColor(Qt::darkGray));
    marks.setProperty("data", QVariant::fromValue(QVector<double>{100.0, 0.0, 200.0, 5.0})); // pairs: width, value
    //! [plotter]
    if (!marks.property("chartArea").value<QObject *>())
        return 3;

    //! [connect]
    QThread thread;
    Sampler sampler;
    sampler.moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, &sampler, &Sampler::run);
    QObject::connect(&sampler, &Sampler::produced, envelope, &Envelope::setData, Qt::QueuedConnection);
    thread.start();
    //! [connect]

    Check check(*window, *envelope);
    if (application.arguments().contains("--check"))
        check.begin();
    //! [stop]
    const int status = application.exec(); // until the last window is closed
    thread.requestInterruption();          // run() looks at this and returns
    thread.quit();                         // and so does the thread's event loop
    thread.wait();                         // a QThread that is destroyed before would abort the program
    //! [stop]
    return status;
}
