// SPDX-License-Identifier: MIT

// Destroying things in every order and at every moment.

#include "stress/Cast.h"
#include "stress/MetaCalls.h"
#include "stress/Plays.h"
#include "stress/Scenario.h"

namespace {

/// Linked at random, nodes form cycles; each node says so once.
void expectCycles(Stage &stage)
{
    stage.messages.expect("^Filter1D: the tree of nodes has a cycle", 10000);
}

/// Links everybody in random ways, then destroys them one by one while the others go on.
class DestroyOrders : public Scenario
{
    void prepare(Stage &stage) override { expectCycles(stage); }
    void round(Stage &stage) override
    {
        if (!m_window || stage.chance.oneIn(10))
            m_window = stage.open();
        Cast cast(stage.chance, castIn(stage, *m_window));
        cast.addEverybody();
        linkOften(cast, 40);
        for (int i = 0; i < 20; ++i)
            cast.act();
        if (stage.chance.oneIn(2))
            stage.frames(*m_window, 1);
        destroyOneByOne(stage, cast);
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(DestroyOrders, "destroy-orders", 8192)

/// Objects that are destroyed inside the handlers of their own signals, or destroy others there.
class DestroyInHandlers : public Scenario
{
    void prepare(Stage &stage) override { expectCycles(stage); }
    void round(Stage &stage) override
    {
        if (!m_window || stage.chance.oneIn(10))
            m_window = stage.open();
        Cast cast(stage.chance, castIn(stage, *m_window));
        cast.addEverybody();
        linkOften(cast, 30);
        Trigger trigger([&] { cast.destroyOne(); });
        for (int i = 0; i < 3; ++i) {
            QObject *sender = cast.any("QObject");
            trigger.on(*sender, stage.chance.pick(Trigger::signalsOf(*sender)));
        }
        for (int i = 0; i < 60 && !cast.isEmpty(); ++i) {
            cast.act();
            if (stage.chance.oneIn(4))
                stage.frames(*m_window, 1);
        }
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(DestroyInHandlers, "destroy-in-handlers", 8192)

/// The rectangles are fitted while a frame is being prepared; handlers of that do away with what the frame is made of.
class DestroyWhileFitting : public Scenario
{
    void round(Stage &stage) override
    {
        auto window = stage.open();
        QPointer<QQuickItem> area = stage.makeIn(*window, "ChartArea { width: 100; height: 100; updateIntervalMs: 0 }");
        const QPointer<QObject> plotter = stage.make("BarPlotter { plotterArea: Qt.rect(0, 0, 10, 1) }");
        const int way = m_ways++;
        Trigger trigger([&] { strike(way / 2 % 6, area, plotter, window); });
        callWith(area, "addPlotter", "IPlotter*", plotter);
        plotter->setProperty("data", QVariant::fromValue(stage.chance.series(50)));
        trigger.on(*area, way % 2 ? "chartRectChanged()" : "zoomRectChanged()");
        stage.spin(40); // the first frame finds the height of the data
        delete plotter;
        delete area;
    }

    static void strike(int way, const QPointer<QQuickItem> &area, const QPointer<QObject> &plotter,
                       std::unique_ptr<QQuickWindow> &window)
    {
        if (!area)
            return;
        switch (way) {
        case 0:
            delete area;
            break;
        case 1:
            area->deleteLater();
            break;
        case 2:
            area->setParentItem(nullptr);
            break;
        case 3:
            delete plotter;
            break;
        case 4:
            area->setVisible(false);
            break;
        default:
            window->close();
        }
    }

    int m_ways = 0;
};
STRESS_SCENARIO(DestroyWhileFitting, "destroy-while-fitting", 8192)

/// Pictures that are asked for again before they are ready, and areas that go before theirs is.
class PendingGrabs : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_window || stage.chance.oneIn(20))
            m_window = stage.open();
        const std::unique_ptr<QQuickItem> area(stage.makeIn(*m_window, "ChartArea { width: 30; height: 30 }"));
        for (int i = 0; i < 10; ++i) {
            QMetaObject::invokeMethod(area.get(), "exportImage", Q_ARG(QString, QStringLiteral("/nowhere")));
            m_window->update();
            stage.spin(stage.chance.below(4));
        }
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(PendingGrabs, "pending-grabs", 8192)

} // namespace
