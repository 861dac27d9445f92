// SPDX-License-Identifier: MIT

// Handlers that change what has just changed.

#include "stress/Cast.h"
#include "stress/Plays.h"
#include "stress/Scenario.h"

namespace {

/// Written in QML, as an application would.
class ReentrantScript : public Scenario
{
    void round(Stage &stage) override
    {
        if (!m_window) {
            m_window = stage.open();
            m_root.reset(qobject_cast<QQuickItem *>(stage.scene("Reentrant")));
            m_root->setParentItem(m_window->contentItem());
        }
        for (int i = 0; i < 5; ++i) {
            const QVariant series = QVariant::fromValue(stage.chance.series(1 + stage.chance.below(30)));
            QMetaObject::invokeMethod(m_root.get(), "begin", Q_ARG(QVariant, series));
            stage.spin(stage.chance.below(8));
        }
    }

    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_root;
};
STRESS_SCENARIO(ReentrantScript, "reentrant-script", 4096)

/// Any signal of any object makes any other do something, three levels deep.
class ReentrantCast : public Scenario
{
    void prepare(Stage &stage) override
    {
        stage.messages.expect("^Filter1D: the tree of nodes has a cycle", 10000);
        // What a change of the rectangle sets off may be what changes it. Each chart says so once.
        stage.messages.expect("^IChartArea: chartRect never settles", 10000);
    }

    void round(Stage &stage) override
    {
        if (!m_window)
            m_window = stage.open();
        Cast cast(stage.chance, castIn(stage, *m_window));
        cast.addEverybody();
        linkOften(cast, 30);
        int depth = 0;
        Trigger trigger([&] {
            if (depth >= 3)
                return;
            ++depth;
            cast.act();
            cast.link();
            cast.unlink();
            --depth;
        });
        for (int i = 0; i < 20; ++i) {
            QObject *sender = cast.any("QObject");
            trigger.on(*sender, stage.chance.pick(Trigger::signalsOf(*sender)));
        }
        for (int i = 0; i < 20; ++i) {
            cast.act();
            if (stage.chance.oneIn(4))
                stage.spin(stage.chance.below(5));
        }
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(ReentrantCast, "reentrant-cast", 4096)

} // namespace
