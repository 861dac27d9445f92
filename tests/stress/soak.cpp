// SPDX-License-Identifier: MIT

// What a long night is made of: three windows in which everything streams, is zoomed, created and destroyed.

#include "stress/FreshChart.h"
#include "stress/Scenario.h"

#include <cstdio>

namespace {

class Soak : public Scenario
{
public:
    ~Soak() override
    {
        std::printf("soak: %d pictures checked, %d windows opened, %d scenes and %d charts made\n", m_pictures,
                    m_windows, m_scenes, m_charts);
    }

private:
    /// A window with a known chart and a busy scene below it.
    struct SShow
    {
        std::unique_ptr<QQuickWindow> window;
        QQuickItem *scene = nullptr; ///< owned by the window's root
    };

    void round(Stage &stage) override
    {
        disturb(stage, m_shows[stage.chance.below(3)]);
        for (SShow &show : m_shows)
            complete(stage, show);
        for (int i = 0; i < 8; ++i) {
            for (const SShow &show : m_shows)
                QMetaObject::invokeMethod(show.scene, "zoom");
            stage.spin(10);
        }
        passing(stage);
        ++m_pictures;
        QQuickWindow &window = *m_shows[m_pictures % 3].window;
        stage.judge(QStringLiteral("picture %1").arg(m_pictures), windowFaults(stage, window));
    }

    void rest() override
    {
        for (SShow &show : m_shows)
            show = {};
    }

    /// Unloads and loads parts, hides and shows, or does away with the scene, or rarely with the whole window: each one
    /// that was ever opened leaves most of a kibibyte resident, also when it is Qt's own and empty.
    void disturb(Stage &stage, SShow &show)
    {
        static const char *const parts[] = {"withArea",    "withBars",      "withExact",
                                            "withFilters", "withDecorator", "withSource"};
        if (!show.window)
            return;
        const int what = stage.chance.below(200);
        if (what < 140) {
            const char *part = stage.chance.pick(parts);
            show.scene->setProperty(part, !show.scene->property(part).toBool());
        } else if (what < 160) {
            show.window->hide();
            show.window->show();
        } else if (what < 199) {
            delete show.scene;
            show.scene = nullptr;
        } else {
            show = {};
        }
    }

    void complete(Stage &stage, SShow &show)
    {
        if (!show.window) {
            show.window = stage.open({320, 320});
            placeKnownChart(stage, *show.window);
            ++m_windows;
        }
        if (!show.scene) {
            show.scene = qobject_cast<QQuickItem *>(stage.scene("Streaming"));
            show.scene->setParent(show.window->contentItem());
            show.scene->setParentItem(show.window->contentItem());
            show.scene->setPosition(QPointF(0, 110));
            ++m_scenes;
        }
    }

    /// Charts that are there for a frame or two.
    void passing(Stage &stage)
    {
        QQuickWindow &window = *m_shows[stage.chance.below(3)].window;
        QVector<QQuickItem *> charts;
        for (int i = 0; i < 5; ++i) {
            charts.append(placeKnownChart(stage, window));
            charts.last()->setPosition(QPointF(20 * i, 150));
        }
        stage.spin(10);
        qDeleteAll(charts);
        m_charts += charts.size();
    }

    SShow m_shows[3];
    int m_pictures = 0;
    int m_windows = 0;
    int m_scenes = 0;
    int m_charts = 0;
};

constexpr int residentGrowth = 2048; // KiB
constexpr double warmUp = 300.0;     // seconds
static const ScenarioRegistration registeredSoak(
    {"soak", []() -> std::unique_ptr<Scenario> { return std::make_unique<Soak>(); }, residentGrowth, nullptr, warmUp});

} // namespace
