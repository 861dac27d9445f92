// SPDX-License-Identifier: MIT

// Sources at full speed, and things that come and go while they run.

#include "stress/FreshChart.h"
#include "stress/Scenario.h"

namespace {

/// A scene in a window.
struct SShow
{
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<QQuickItem> root;

    void begin(Stage &stage, const QString &scene)
    {
        window = stage.open();
        root.reset(qobject_cast<QQuickItem *>(stage.scene(scene)));
        root->setParentItem(window->contentItem());
    }
};

void zoom(QQuickItem &root)
{
    QMetaObject::invokeMethod(&root, "zoom");
}

/// One source at 0 ms and every kind of consumer.
class EveryConsumer : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_show.window)
            m_show.begin(stage, "Streaming");
        for (int i = 0; i < 5; ++i) {
            zoom(*m_show.root);
            stage.spin(10);
        }
    }

    SShow m_show;
};
STRESS_SCENARIO(EveryConsumer, "every-consumer", 2048)

/// The same, with kinds that are unloaded and loaded again all the time.
class ToggledLoaders : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_show.window)
            m_show.begin(stage, "Streaming");
        static const char *const switches[] = {"withArea",    "withBars",      "withExact",
                                               "withFilters", "withDecorator", "withSource"};
        for (int i = 0; i < 10; ++i) {
            const char *name = stage.chance.pick(switches);
            m_show.root->setProperty(name, !m_show.root->property(name).toBool());
            zoom(*m_show.root);
            stage.spin(stage.chance.below(5));
        }
    }

    SShow m_show;
};
STRESS_SCENARIO(ToggledLoaders, "toggled-loaders", 4096)

class ChangingModels : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_show.window)
            m_show.begin(stage, "Repeaters");
        static const char *const counts[] = {"charts", "plotters", "nodes"};
        for (int i = 0; i < 10; ++i) {
            m_show.root->setProperty(stage.chance.pick(counts), stage.chance.below(8));
            QMetaObject::invokeMethod(m_show.root.get(), "feed",
                                      Q_ARG(QVariant, QVariant::fromValue(stage.chance.series(50))));
            stage.spin(stage.chance.below(5));
        }
        for (const char *name : counts)
            m_show.root->setProperty(name, 3);
    }

    SShow m_show;
};
STRESS_SCENARIO(ChangingModels, "changing-models", 4096)

/// Windows and engines that go in the middle of it, in every order.
class TornDown : public Scenario
{
    void round(Stage &stage) override
    {
        SShow show;
        show.begin(stage, "Streaming");
        zoom(*show.root);
        stage.spin(stage.chance.below(40));
        QVector<int> steps{0, 1, 2};
        stage.chance.shuffle(steps);
        for (const int step : qAsConst(steps)) {
            switch (step) {
            case 0:
                show.root.reset();
                break;
            case 1:
                tearWindow(stage, show);
                break;
            default:
                stage.replaceEngine();
                break;
            }
            if (stage.chance.oneIn(2))
                stage.spin(stage.chance.below(5));
        }
    }

    static void tearWindow(Stage &stage, SShow &show)
    {
        if (stage.chance.oneIn(2))
            show.window->close();
        if (stage.chance.oneIn(2))
            stage.spin(stage.chance.below(5));
        show.window.reset();
    }
};
STRESS_SCENARIO(TornDown, "torn-down", 8192)

/// Charts by the thousand; a window shows some of each batch.
class ManyCharts : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_window)
            m_window = stage.open();
        QVector<QQuickItem *> charts;
        for (int i = 0; i < 50; ++i)
            charts.append(placeKnownChart(stage, *m_window));
        stage.frames(*m_window, 1);
        stage.chance.shuffle(charts);
        for (QQuickItem *chart : qAsConst(charts)) {
            if (stage.chance.oneIn(2))
                delete chart;
            else
                chart->deleteLater();
        }
        stage.spin();
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(ManyCharts, "many-charts", 2048)

} // namespace
