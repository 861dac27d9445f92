// SPDX-License-Identifier: MIT
// How smoothly a plot of a long recording is zoomed, panned and followed while it grows, beside a short one: prints the
// distribution of the times of its frames, and the longest time for which the GUI thread was kept.
#include "benchmarks/frames/PlotDriver.h"
#include "benchmarks/frames/Recording.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace {

double quantile(std::vector<double> values, double part)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    return values[size_t(std::lround(part * double(values.size() - 1)))];
}

/// The gestures of all rounds of one recording.
class Figures
{
public:
    void add(const std::vector<SGesture> &gestures)
    {
        for (const SGesture &gesture : gestures) {
            SGesture &all = gestureOf(gesture.name);
            all.frames.insert(all.frames.end(), gesture.frames.begin(), gesture.frames.end());
            all.takeovers.insert(all.takeovers.end(), gesture.takeovers.begin(), gesture.takeovers.end());
            all.longestKept = std::max(all.longestKept, gesture.longestKept);
            all.longestWork = std::max(all.longestWork, gesture.longestWork);
        }
    }
    void print(const QString &name) const
    {
        for (const SGesture &gesture : m_gestures)
            std::printf("| %s | %s | %d | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f | %.1f |\n", gesture.name,
                        qPrintable(name), int(gesture.frames.size()), quantile(gesture.frames, 0.5),
                        quantile(gesture.frames, 0.95), quantile(gesture.frames, 1.0), quantile(gesture.takeovers, 0.5),
                        quantile(gesture.takeovers, 1.0), gesture.longestKept, gesture.longestWork);
    }

private:
    SGesture &gestureOf(const char *name)
    {
        for (SGesture &known : m_gestures) {
            if (qstrcmp(known.name, name) == 0)
                return known;
        }
        m_gestures.emplace_back();
        m_gestures.back().name = name;
        return m_gestures.back();
    }

    std::vector<SGesture> m_gestures;
};

std::vector<qint64> countsOf(const QString &list)
{
    std::vector<qint64> counts;
    for (const QString &text : list.split(QLatin1Char(','), Qt::SkipEmptyParts))
        counts.push_back(qint64(text.toDouble()));
    return counts;
}

} // namespace

int main(int argc, char *argv[])
{
    WatchedApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({{QStringLiteral("growing"), QStringLiteral("Lengths that grow by 1000 a second."),
                        QStringLiteral("counts"), QStringLiteral("1e4,1e8")},
                       {QStringLiteral("mapped"), QStringLiteral("Lengths of mapped files, of four bytes a value."),
                        QStringLiteral("counts"), QStringLiteral("1e9")},
                       {QStringLiteral("folder"), QStringLiteral("Where the files lie meanwhile."),
                        QStringLiteral("folder"), QDir::tempPath()},
                       {QStringLiteral("cold"), QStringLiteral("Has files read from the disk again in each round.")},
                       {QStringLiteral("rounds"), QStringLiteral("How often all is done, by turns."),
                        QStringLiteral("number"), QStringLiteral("3")}});
    parser.process(application);

    std::vector<std::unique_ptr<Recording>> recordings;
    for (const qint64 count : countsOf(parser.value(QStringLiteral("growing"))))
        recordings.push_back(std::make_unique<Recording>(count));
    for (const qint64 count : countsOf(parser.value(QStringLiteral("mapped"))))
        recordings.push_back(std::make_unique<Recording>(count, parser.value(QStringLiteral("folder")),
                                                         parser.isSet(QStringLiteral("cold"))));

    std::map<const Recording *, Figures> figures;
    PlotDriver driver(application);
    for (int round = 0; round < parser.value(QStringLiteral("rounds")).toInt(); ++round) {
        for (const auto &recording : recordings)
            figures[recording.get()].add(driver.drive(*recording));
    }

    std::printf(
        "Milliseconds. A frame: from an event to its picture, or from picture to picture. Columns, and of the "
        "GUI thread's work: processor time.\n\n"
        "| gesture | values | frames | median | 95 %% | longest | columns, median | longest "
        "| GUI thread kept, longest | its work, longest |\n|---|---|--:|--:|--:|--:|--:|--:|--:|--:|\n");
    for (const auto &recording : recordings)
        figures[recording.get()].print(recording->name());
    return 0;
}
