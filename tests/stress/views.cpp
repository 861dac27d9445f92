// SPDX-License-Identifier: MIT

// Plots of the companion module: destroyed in every order, fed by another thread, given values that make no sense.

#include "stress/Plays.h"
#include "stress/PlotCast.h"
#include "stress/Scenario.h"
#include "views/store/SeriesStore.h"

#include <QQuickItem>

#include <atomic>
#include <thread>

namespace {

PlotCast::Creator plotsIn(Stage &stage, QQuickWindow &window)
{
    return [&](const QByteArray &type) -> QObject * {
        const bool isItem = type == "PlotView" || type == "OverviewStrip" || type == "PlotStack";
        const QString size = isItem ? QStringLiteral(" width: 160; height: 100 ") : QString();
        const QString text =
            QStringLiteral("import VorlixPlugin.Views 1.0\n%1 {%2}").arg(QString::fromUtf8(type), size);
        return isItem ? stage.makeIn(window, text) : stage.make(text);
    };
}

/// What views say of what they don't take.
void expectRefusals(Stage &stage)
{
    constexpr int often = 1'000'000;
    for (const char *line :
         {"isn't a finite number", "isn't above 0", "can't be", "would close a circle", "isn't a format for one number",
          "QFont::fromString: Invalid description", "isn't a color", "go back or aren't numbers",
          "a number or a list of numbers was expected", "of the list is not a number", "is not a value type",
          "the store isn't empty", "doesn't fit into", "/nowhere/values: No such file or directory",
          "no values are in view", "is outside the range of dates, so the axis shows seconds"})
        stage.messages.expect(QString::fromLatin1(line), often);
}

/// A thread that appends to some stores while they're there, and to what is left of them afterwards.
class Feeder
{
public:
    explicit Feeder(PlotCast &cast)
    {
        for (int i = 0; i < 3; ++i) {
            if (auto *store = qobject_cast<SeriesStore *>(cast.any("SeriesStore")))
                m_writers.append(store->writer());
        }
        m_thread = std::thread([this] { feed(); });
    }
    ~Feeder()
    {
        m_isDone = true;
        m_thread.join();
    }

private:
    void feed()
    {
        double value = 0.0;
        while (!m_isDone) {
            for (SeriesWriter &writer : m_writers)
                writer.append(value);
            value = value < 100.0 ? value + 1.0 : -1.0;
            std::this_thread::yield();
        }
    }

    QVector<SeriesWriter> m_writers;
    std::atomic<bool> m_isDone{false};
    std::thread m_thread;
};

/// Links everybody in random ways, then destroys them one by one while the others are fed and drawn.
class PlotsInAnyOrder : public Scenario
{
    void prepare(Stage &stage) override { expectRefusals(stage); }
    void round(Stage &stage) override
    {
        if (!m_window || stage.chance.oneIn(10))
            m_window = stage.open();
        PlotCast cast(stage.chance, plotsIn(stage, *m_window));
        cast.addEverybody();
        linkOften(cast, 40);
        const Feeder feeder(cast);
        for (int i = 0; i < 20; ++i)
            cast.act();
        stage.frames(*m_window, 1);
        destroyOneByOne(stage, cast);
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(PlotsInAnyOrder, "plots-in-any-order", 16384)

/// Any value into any property, while everything is drawn.
class HostilePlots : public Scenario
{
    void prepare(Stage &stage) override { expectRefusals(stage); }
    void round(Stage &stage) override
    {
        if (!m_window)
            m_window = stage.open();
        PlotCast cast(stage.chance, plotsIn(stage, *m_window));
        cast.addEverybody();
        linkOften(cast, 40);
        mistreatOften(stage, *m_window, cast, 80);
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(HostilePlots, "hostile-plots", 16384)

/// Views that go from window to window, and windows that go.
class MovedPlots : public Scenario
{
    void prepare(Stage &stage) override { expectRefusals(stage); }
    void round(Stage &stage) override
    {
        auto first = stage.open();
        auto second = stage.open();
        PlotCast cast(stage.chance, plotsIn(stage, *first));
        cast.addEverybody();
        linkOften(cast, 40);
        for (int i = 0; i < 6; ++i) {
            auto *view = qobject_cast<QQuickItem *>(cast.any("PlotView"));
            QQuickItem *const homes[] = {first->contentItem(), second->contentItem(), nullptr};
            view->setParentItem(stage.chance.pick(homes));
            cast.act();
            stage.frames(stage.chance.oneIn(2) ? *first : *second, 1);
        }
        first->close();
        stage.spin(1);
        (stage.chance.oneIn(2) ? first : second).reset();
        stage.spin(1);
    }
};
STRESS_SCENARIO(MovedPlots, "moved-plots", 16384)

} // namespace
