// SPDX-License-Identifier: MIT

// Values that make no sense.

#include "stress/Cast.h"
#include "stress/Plays.h"
#include "stress/Scenario.h"

namespace {

/// Through the meta-object system: any value into any property, while everything is drawn.
class HostileValues : public Scenario
{
    void prepare(Stage &stage) override
    {
        stage.messages.expect("^Filter1D: the tree of nodes has a cycle", 10000);
        stage.messages.expect("^MovingAvarangeU64: no average of", 100000); // a depth of 2^31 - 1
        // A fit never settles when bars are infinitely wide together, because what their extent shares with a view
        // isn't a number: it differs from itself. Each chart says so once.
        stage.messages.expect("^IChartArea: chartRect never settles", 10000);
        stage.messages.expect("Timers cannot have negative intervals", 100000);
    }

    void round(Stage &stage) override
    {
        if (!m_window)
            m_window = stage.open();
        Cast cast(stage.chance, castIn(stage, *m_window));
        cast.addEverybody();
        linkOften(cast, 30);
        mistreatOften(stage, *m_window, cast, 60);
    }

    std::unique_ptr<QQuickWindow> m_window;
};
STRESS_SCENARIO(HostileValues, "hostile-values", 4096)

/// From a script: null, undefined and wrong types for everything.
class HostileScript : public Scenario
{
    void prepare(Stage &stage) override
    {
        constexpr int perArgument = 1000000; // Qt explains each argument of a wrong type in four lines
        for (const char *line : {"Passing incompatible arguments to C", "This will throw a JavaScript TypeError",
                                 "Could not convert argument", "Could not convert array value", "strike@qrc:"})
            stage.messages.expect(QString::fromLatin1(line), perArgument);
        stage.messages.expect("^Filter1D: the tree of nodes has a cycle", 10000);
        stage.messages.expect("^MovingAvarangeU64: no average of", 100000);
        stage.messages.expect("Timers cannot have negative intervals", 100000);
    }

    void round(Stage &stage) override
    {
        const auto window = stage.open();
        const std::unique_ptr<QQuickItem> root(qobject_cast<QQuickItem *>(stage.scene("Hostile")));
        root->setParentItem(window->contentItem());
        QVariant done;
        while (!done.toBool()) {
            QMetaObject::invokeMethod(root.get(), "strike", Q_RETURN_ARG(QVariant, done), Q_ARG(QVariant, 20));
            stage.frames(*window, 1);
        }
    }
};
STRESS_SCENARIO(HostileScript, "hostile-script", 8192)

} // namespace
