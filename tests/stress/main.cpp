// SPDX-License-Identifier: MIT

// stress SCENARIO [--seconds N] [--rounds N] [--seed N]: mistreats the module for a while, then asks for a correct
// picture, a quiet log and unchanged memory. One process per scenario, so that a crash is one failure.

#include "stress/FreshChart.h"
#include "stress/Memory.h"
#include "stress/Scenario.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <random>

namespace {

QVector<SScenarioEntry> &registered()
{
    static QVector<SScenarioEntry> entries;
    return entries;
}

const SScenarioEntry *find(const QString &name)
{
    for (const SScenarioEntry &entry : scenarios()) {
        if (name == QLatin1String(entry.name))
            return &entry;
    }
    return nullptr;
}

QStringList names()
{
    QStringList all;
    for (const SScenarioEntry &entry : scenarios())
        all.append(QString::fromLatin1(entry.name));
    all.sort();
    return all;
}

int list(const QString &expected)
{
    std::printf("%s\n", qPrintable(names().join(QLatin1Char('\n'))));
    return expected.isEmpty() || expected == names().join(QLatin1Char(',')) ? 0 : 1;
}

struct SOutcome
{
    int rounds = 0;
    SMemory before; ///< after the warm-up
    SMemory after;
    QStringList faults;
};

/// How long a scenario is played: at least so long, and so often.
struct SLength
{
    double seconds = 0.0;
    int rounds = 0;
    double warmUp = 0.0; ///< seconds at most; 0 for half of the time
};

/// A line a minute, for those who wait.
class Diary
{
public:
    void write(const SOutcome &outcome)
    {
        if (m_minute.isValid() && m_minute.elapsed() < 60000)
            return;
        if (m_minute.isValid()) {
            const SMemory memory = SMemory::now();
            std::printf("%3d min: %d rounds, resident %lld KiB, anonymous %lld KiB, heap %lld KiB\n", ++m_minutes,
                        outcome.rounds, memory.resident, memory.anonymous, memory.heap);
            std::fflush(stdout);
        }
        m_minute.start();
    }

private:
    QElapsedTimer m_minute;
    int m_minutes = 0;
};

void play(Scenario &scenario, Stage &stage, const SLength &length, SOutcome &outcome)
{
    const auto reached = [&](const QElapsedTimer &clock, double part) {
        return clock.elapsed() >= length.seconds * 1000.0 * part && outcome.rounds >= length.rounds * part;
    };
    const double warmUp = length.warmUp > 0.0 ? std::min(length.warmUp / length.seconds, 0.5) : 0.5;
    bool warm = false;
    Diary diary;
    scenario.prepare(stage);
    QElapsedTimer clock;
    clock.start();
    while (!reached(clock, 1.0)) {
        scenario.round(stage);
        ++outcome.rounds;
        diary.write(outcome);
        if (warm || !reached(clock, warmUp))
            continue;
        warm = true;
        scenario.rest();
        stage.settle();
        outcome.before = SMemory::now();
    }
    scenario.rest();
    stage.settle();
    outcome.after = SMemory::now();
}

void judge(const SScenarioEntry &entry, const Stage &stage, SOutcome &outcome)
{
    const qint64 grown = outcome.after.resident - outcome.before.resident;
    if (memoryIsMeasurable() && grown > entry.residentGrowth)
        outcome.faults
            << QStringLiteral("the memory grew by %1 KiB, more than %2").arg(grown).arg(entry.residentGrowth);
    outcome.faults << stage.faults() << stage.messages.faults();
}

int run(const SScenarioEntry &entry, const SLength &length, quint32 seed)
{
    Messages messages;
    SOutcome outcome;
    {
        Stage stage(seed, messages);
        {
            const std::unique_ptr<Scenario> scenario = entry.create();
            play(*scenario, stage, length, outcome);
        }
        stage.spin();
        stage.judge(QStringLiteral("fresh chart"), freshChartFaults(stage));
        judge(entry, stage, outcome);
    }
    std::printf(
        "%s: seed %u, %d rounds, resident %lld KiB (%+lld), anonymous %lld KiB (%+lld), heap %lld KiB (%+lld)\n",
        entry.name, seed, outcome.rounds, outcome.after.resident, outcome.after.resident - outcome.before.resident,
        outcome.after.anonymous, outcome.after.anonymous - outcome.before.anonymous, outcome.after.heap,
        outcome.after.heap - outcome.before.heap);
    for (const QString &fault : qAsConst(outcome.faults))
        std::fprintf(stderr, "FAIL %s: %s\n", entry.name, qPrintable(fault));
    return outcome.faults.isEmpty() ? 0 : 1;
}

} // namespace

const QVector<SScenarioEntry> &scenarios()
{
    return registered();
}

ScenarioRegistration::ScenarioRegistration(const SScenarioEntry &entry)
{
    registered().append(entry);
}

int main(int argc, char **argv)
{
    const SScenarioEntry *early = argc > 1 ? find(QString::fromLocal8Bit(argv[1])) : nullptr;
    if (early && early->prepare)
        early->prepare();
    QGuiApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument("scenario", "What to do; one of --list.");
    const QCommandLineOption seconds("seconds", "How long.", "N", "2");
    const QCommandLineOption rounds("rounds", "How often at least.", "N", "5");
    const QCommandLineOption seed("seed", "The seed of chance, or random.", "N", "1");
    const QCommandLineOption lists("list", "The scenarios.");
    const QCommandLineOption expects("expect-list", "Fail unless these are the scenarios.", "A,B");
    parser.addOptions({seconds, rounds, seed, lists, expects});
    parser.process(application);
    if (parser.isSet(lists) || parser.isSet(expects))
        return list(parser.value(expects));
    const SScenarioEntry *entry = find(parser.positionalArguments().value(0));
    if (!entry)
        parser.showHelp(2);
    const quint32 wanted =
        parser.value(seed) == QLatin1String("random") ? std::random_device()() : parser.value(seed).toUInt();
    constexpr int fewestRounds = 5;
    return run(*entry, {parser.value(seconds).toDouble(), std::max(parser.value(rounds).toInt(), fewestRounds)},
               wanted);
}
