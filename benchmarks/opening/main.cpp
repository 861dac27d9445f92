// SPDX-License-Identifier: MIT
// What it takes until a file that's opened in a window has its first picture and is all there, and the memory for that.
#include "benchmarks/frames/FrameWatch.h"
#include "benchmarks/opening/NumberFile.h"
#include "sources/SCSVReader.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <thread>

#include <unistd.h>

namespace {

constexpr double mebi = 1 << 20;

/// The process's own memory, without what belongs to files.
double residentMebibytes()
{
    QFile statm(QStringLiteral("/proc/self/statm")); // pages: size, resident, of which shared, ...
    if (!statm.open(QIODevice::ReadOnly))
        qFatal("What a process needs isn't told here");
    const QList<QByteArray> pages = statm.readAll().split(' ');
    return double(pages.value(1).toLongLong() - pages.value(2).toLongLong()) * double(sysconf(_SC_PAGESIZE)) / mebi;
}

/// Looks now and then how much memory there is.
class MemoryWatch
{
public:
    ~MemoryWatch()
    {
        m_isDone = true;
        m_thread.join();
    }
    double grown() const { return m_most - m_before; }

private:
    void look()
    {
        while (!m_isDone) {
            m_most = std::max(m_most.load(), residentMebibytes());
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    const double m_before = residentMebibytes();
    std::atomic<double> m_most{m_before};
    std::atomic<bool> m_isDone{false};
    std::thread m_thread{[this] { look(); }};
};

struct SContents
{
    const char *word; ///< on the command line
    const char *name;
    NumberFile::Kind kind;
    double bytesEach; ///< of the values of a line
};

constexpr SContents allContents[] = {
    {"column", "a column", NumberFile::Kind::Column, 8.0},
    {"columns", "three columns with decimal comma", NumberFile::Kind::ThreeColumns, 24.0},
    {"floats", "raw floats", NumberFile::Kind::Floats, 4.0}};

struct SOpening
{
    double firstPicture = 0.0; ///< milliseconds
    double allThere = 0.0;     ///< milliseconds
    double guiThread = 0.0;    ///< milliseconds for which it was kept at most
    double memory = 0.0;       ///< MiB
};

double millisecondsSince(qint64 began)
{
    return double(clockTime() - began) * 1e-6;
}

/// Opens the file in the plot of a window that is there, and waits until a picture has the `wanted` number of values.
SOpening openIn(QQuickView &window, WatchedApplication &application, const QString &path, double wanted)
{
    QQuickItem &plot = *window.rootObject();
    auto *const reader = plot.property("reader").value<QObject *>();
    // Asked while a frame takes over what is to be drawn, with the GUI thread blocked.
    std::atomic<double> synchronised{0.0};
    std::atomic<double> shown{0.0};
    QObject scope;
    QObject::connect(
        &window, &QQuickWindow::afterSynchronizing, &scope, [&] { synchronised = plot.property("count").toDouble(); },
        Qt::DirectConnection);
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &scope, [&] { shown = synchronised.load(); }, Qt::DirectConnection);
    const MemoryWatch memory;
    SOpening opening;
    application.takeLongest();
    const qint64 began = clockTime();
    reader->setProperty("source", path);
    while (shown < wanted) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        if (opening.firstPicture == 0.0 && shown > 0.0)
            opening.firstPicture = millisecondsSince(began);
        if (!reader->property("errorString").toString().isEmpty())
            qFatal("%s", qPrintable(reader->property("errorString").toString()));
    }
    opening.allThere = millisecondsSince(began);
    opening.guiThread = double(application.takeLongest().clock) * 1e-6;
    opening.memory = memory.grown();
    return opening;
}

void printRow(const char *what, qint64 count, const SOpening &opening, double valueBytes)
{
    std::printf("| %s | %lld | %.0f | %.0f | %.1f | %.0f | %.0f |\n", what, static_cast<long long>(count),
                opening.firstPicture, opening.allThere, opening.guiThread, opening.memory, valueBytes / mebi);
    std::fflush(stdout);
}

void printPlot(WatchedApplication &application, const SContents &contents, const QString &folder, qint64 count)
{
    const NumberFile file(contents.kind, count, folder);
    QQuickView window;
    window.engine()->addImportPath(QStringLiteral(VORLIX_IMPORT_PATH));
    window.resize(1000, 600);
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.setSource(QUrl(QStringLiteral("qrc:/opening.qml")));
    if (!window.rootObject())
        qFatal("The plot can't be loaded");
    window.rootObject()->setProperty("hasSamples", contents.kind == NumberFile::Kind::Floats);
    FrameWatch watch(window);
    window.show();
    if (!watch.waitForFrame(1))
        qFatal("No frame came");
    printRow(contents.name, count, openIn(window, application, file.path(), double(count)),
             contents.bytesEach * double(count));
}

/// The first module's reader, which shows nothing before it has read all.
void printReader(const QString &folder, qint64 count)
{
    const NumberFile file(NumberFile::Kind::Column, count, folder);
    const MemoryWatch memory;
    SOpening opening;
    SCSVReader reader;
    const qint64 began = clockTime();
    reader.setFile(file.path());
    opening.firstPicture = opening.allThere = opening.guiThread = millisecondsSince(began);
    opening.memory = memory.grown();
    printRow("a column, by SCSVReader alone", count, opening, 4.0 * double(count));
}

} // namespace

int main(int argc, char *argv[])
{
    WatchedApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("kind"), QStringLiteral("column, columns, floats or reader"));
    parser.addPositionalArgument(QStringLiteral("count"), QStringLiteral("How many lines or samples there are"));
    parser.addOptions({{QStringLiteral("folder"), QStringLiteral("Where the file lies meanwhile."),
                        QStringLiteral("folder"), QDir::tempPath()}});
    parser.process(application);
    const QStringList words = parser.positionalArguments();
    const auto count = qint64(words.value(1).toDouble());
    if (words.size() != 2 || count < 1)
        parser.showHelp(1);

    const QString folder = parser.value(QStringLiteral("folder"));
    if (words.first() == QLatin1String("reader")) {
        printReader(folder, count);
        return 0;
    }
    const auto *const contents =
        std::find_if(std::begin(allContents), std::end(allContents),
                     [&](const SContents &some) { return words.first() == QLatin1String(some.word); });
    if (contents == std::end(allContents))
        parser.showHelp(1);
    printPlot(application, *contents, folder, count);
    return 0;
}
