// SPDX-License-Identifier: MIT

// Windows that come, go, change their size and pass their items on.

#include "stress/FreshChart.h"
#include "stress/Scenario.h"

namespace {

/// Three windows with charts that get new data all the time; windows are hidden, shown, closed and opened meanwhile.
class ThreeWindows : public Scenario
{
    void round(Stage &stage) override
    {
        if (std::unique_ptr<QQuickWindow> &window = m_windows[stage.chance.below(3)]) {
            switch (stage.chance.below(4)) {
            case 0:
                window->hide();
                stage.spin();
                window->show();
                break;
            case 1:
                window->close();
                window->show();
                break;
            case 2:
                window.reset();
                break;
            default:
                break;
            }
        }
        for (std::unique_ptr<QQuickWindow> &window : m_windows) {
            if (!window) {
                window = stage.open({220, 120});
                stage.makeIn(*window,
                             "ChartArea { objectName: 'busy'; y: 105; width: 100; height: 15; updateIntervalMs: 0\n"
                             "  property var bars: BarPlotter { objectName: 'bars' }\n"
                             "  Component.onCompleted: addPlotter(bars) }");
                placeKnownChart(stage, *window);
            }
        }
        for (int i = 0; i < 10; ++i) {
            for (const std::unique_ptr<QQuickWindow> &window : m_windows) {
                auto *busy = window->contentItem()->findChild<QQuickItem *>("busy");
                busy->property("bars").value<QObject *>()->setProperty("data",
                                                                       QVariant::fromValue(stage.chance.series(500)));
            }
            stage.spin(stage.chance.below(4));
        }
        stage.judge("one of three windows", windowFaults(stage, *m_windows[stage.chance.below(3)]));
    }

    std::unique_ptr<QQuickWindow> m_windows[3];
};
STRESS_SCENARIO(ThreeWindows, "three-windows", 4096)

/// A chart that is moved from window to window, or to none for a while.
class MovedItem : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_first || stage.chance.oneIn(8))
            renew(stage);
        QQuickWindow *target = m_chart->window() == m_first.get() ? m_second.get() : m_first.get();
        if (stage.chance.oneIn(2)) {
            m_chart->setParentItem(nullptr);
            stage.spin(stage.chance.below(20));
        }
        m_chart->setParentItem(target->contentItem());
        if (stage.chance.oneIn(3)) { // and back at once
            m_chart->setParentItem(m_first->contentItem());
            m_chart->setParentItem(target->contentItem());
        }
        stage.judge("moved chart", windowFaults(stage, *target));
    }

    void renew(Stage &stage)
    {
        m_chart.reset();
        m_first = stage.open({200, 105});
        m_second = stage.open({200, 105});
        m_chart.reset(placeKnownChart(stage, *m_first));
        m_chart->setParent(nullptr);
    }

    std::unique_ptr<QQuickWindow> m_first;
    std::unique_ptr<QQuickWindow> m_second;
    std::unique_ptr<QQuickItem> m_chart;
};
STRESS_SCENARIO(MovedItem, "moved-item", 4096)

/// The only window is closed and another one opened; or hidden with everything of its scene graph given up, and shown
/// again. Either way the plotters come into a context that they do not know.
class ReopenedWindow : public Scenario
{
    void round(Stage &stage) override
    {
        if (stage.chance.oneIn(2)) {
            const auto window = stage.open({200, 105});
            window->setPersistentOpenGLContext(false);
            window->setPersistentSceneGraph(false);
            placeKnownChart(stage, *window);
            stage.judge("first shown", windowFaults(stage, *window));
            window->hide();
            stage.spin(stage.chance.below(20));
            window->show();
            stage.judge("shown again", windowFaults(stage, *window));
            return;
        }
        std::unique_ptr<QQuickWindow> window = stage.open({200, 105});
        const std::unique_ptr<QQuickItem> chart(placeKnownChart(stage, *window));
        stage.frames(*window, 1);
        chart->setParent(nullptr);
        if (stage.chance.oneIn(2))
            chart->setParentItem(nullptr);
        window->close();
        window.reset(); // the last one
        stage.spin();
        window = stage.open({200, 105});
        chart->setParentItem(window->contentItem());
        stage.judge("in the next window", windowFaults(stage, *window));
    }
};
STRESS_SCENARIO(ReopenedWindow, "reopened-window", 4096)

/// Sizes that change faster than frames are drawn: ordinary ones, none, negative, fractions, and now and then 8192.
class ResizeStorm : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_window) {
            m_window = stage.open({200, 105});
            m_chart = placeKnownChart(stage, *m_window);
        }
        static const double sizes[] = {0.0, 0.4, 1.0, 1.5, 17.0, 100.0, 333.3, 640.0, -1.0};
        for (int i = 0; i < 40; ++i) {
            m_chart->setSize(QSizeF(stage.chance.pick(sizes), stage.chance.pick(sizes)));
            if (stage.chance.oneIn(4))
                m_window->resize(1 + stage.chance.below(500), 1 + stage.chance.below(300));
            if (stage.chance.oneIn(4))
                stage.spin(stage.chance.below(5));
        }
        if (++m_rounds % 20 == 3) {
            m_chart->setSize(stage.chance.oneIn(2) ? QSizeF(8192, 16) : QSizeF(8192, 8192));
            stage.frames(*m_window, 1);
        }
        m_chart->setSize(QSizeF(200, 105));
        m_window->resize(200, 105);
        stage.judge("after resizing", faultsOfFinalSize(stage));
    }

    /// The X server confirms sizes late, one after the other; the picture must be right once it has the last one.
    QStringList faultsOfFinalSize(Stage &stage)
    {
        constexpr int attempts = 40;
        QStringList faults = windowFaults(stage, *m_window);
        for (int attempt = 0; attempt < attempts && !faults.isEmpty(); ++attempt) {
            stage.spin(25);
            faults = windowFaults(stage, *m_window);
        }
        return faults;
    }

    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_chart = nullptr;
    int m_rounds = 0;
};
STRESS_SCENARIO(ResizeStorm, "resize-storm", 8192)

/// Two device pixels per pixel.
class PixelRatio : public Scenario
{
    void round(Stage &stage) override
    {
        const auto window = stage.open({200, 105});
        QQuickItem *chart = placeKnownChart(stage, *window);
        stage.judge("at ratio 2", windowFaults(stage, *window));
        chart->setSize(QSizeF(100, 50));
        stage.frames(*window, 1);
        chart->setSize(QSizeF(200, 105));
        const QImage picture = window->grabWindow();
        stage.judge("resized at ratio 2", pictureFaults(picture));
        if (picture.size() != QSize(400, 210))
            stage.judge("at ratio 2", {QStringLiteral("the picture has not twice the size")});
    }
};
static const ScenarioRegistration registeredPixelRatio(
    {"pixel-ratio", []() -> std::unique_ptr<Scenario> { return std::make_unique<PixelRatio>(); }, 4096,
     [] { qputenv("QT_SCALE_FACTOR", "2"); }});

} // namespace
