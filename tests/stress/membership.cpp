// SPDX-License-Identifier: MIT

// Plotters that change their chart areas all the time.

#include "stress/Cast.h"
#include "stress/FreshChart.h"
#include "stress/MetaCalls.h"
#include "stress/Scenario.h"

#include <functional>

namespace {

/// Two windows with three areas; plotters are in one of them, in two at once, or in none, and get data wherever they
/// are.
class Migrants : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_first)
            begin(stage);
        for (int i = 0; i < 100; ++i) {
            QObject *plotter = stage.chance.pick(m_plotters);
            QObject *area = stage.chance.pick(m_areas);
            const QVariant series = QVariant::fromValue(stage.chance.series(stage.chance.below(300)));
            const std::function<void()> moves[] = {
                [&] { callWith(area, "addPlotter", "IPlotter*", plotter); },
                [&] { callWith(area, "removePlotter", "IPlotter*", plotter); },
                [&] { writeObject(plotter, "chartArea", area); },
                [&] { writeObject(plotter, "chartArea", nullptr); },
                [&] {
                    writeObjects(area, "plotter", {plotter, stage.chance.pick(m_plotters)});
                },
                [&] { plotter->setProperty("data", series); },
                [&] { plotter->setProperty("data", series); },
            };
            stage.chance.pick(moves)();
            if (stage.chance.oneIn(10))
                stage.spin(stage.chance.below(3));
        }
        stage.judge("next to the migrants", windowFaults(stage, stage.chance.oneIn(2) ? *m_first : *m_second));
    }

    void begin(Stage &stage)
    {
        m_first = stage.open({320, 200});
        m_second = stage.open({320, 200});
        const QString text = "ChartArea { y: 110; width: 100; height: 90; updateIntervalMs: 0 }";
        m_areas = {stage.makeIn(*m_first, text), stage.makeIn(*m_second, text), stage.makeIn(*m_second, text)};
        for (const QByteArray &type : Cast::plotterTypes()) {
            QObject *plotter = stage.make(type + " { plotterArea: Qt.rect(0, 0, 10, 1) }");
            plotter->setParent(m_first->contentItem());
            m_plotters.append(plotter);
        }
        placeKnownChart(stage, *m_first);
        placeKnownChart(stage, *m_second);
    }

    std::unique_ptr<QQuickWindow> m_first;
    std::unique_ptr<QQuickWindow> m_second;
    QVector<QObject *> m_areas;
    QVector<QObject *> m_plotters;
};
STRESS_SCENARIO(Migrants, "migrants", 4096)

} // namespace
