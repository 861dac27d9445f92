// SPDX-License-Identifier: MIT

// The ready-made plot under an impatient user.

#include "stress/Scenario.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QWheelEvent>

namespace {

class ImpatientUser : public Scenario
{
    void prepare(Stage &stage) override
    {
        stage.messages.expect("^SPlotQML: cannot write", 1000); // the plot was unloaded before its picture was taken
    }

    void round(Stage &stage) override
    {
        if (!m_window) {
            m_window = stage.open();
            m_root.reset(qobject_cast<QQuickItem *>(stage.scene("Plots")));
            m_root->setParentItem(m_window->contentItem());
        }
        for (int i = 0; i < 6; ++i)
            drag(stage, stage.chance.oneIn(2) ? Qt::LeftButton : Qt::RightButton);
        turn(stage);
        QMetaObject::invokeMethod(m_root.get(), "rearrange", Q_ARG(QVariant, stage.chance.below(60)));
        m_root->setSize(QSizeF(10 + stage.chance.below(400), 10 + stage.chance.below(300)));
        if (stage.chance.oneIn(4)) {
            m_root->setProperty("picture", m_folder.filePath("picture.png"));
            QMetaObject::invokeMethod(m_root.get(), "exportPicture");
        }
        if (stage.chance.oneIn(6)) {
            m_root->setProperty("loaded", false);
            stage.spin(stage.chance.below(3));
        }
        m_root->setProperty("loaded", true);
        stage.spin(stage.chance.below(10));
    }

    QPointF somewhere(Chance &chance) const
    {
        return {chance.between(0, m_root->width()), chance.between(0, m_root->height())};
    }

    void send(QEvent::Type type, const QPointF &at, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, at, at, m_window->mapToGlobal(at.toPoint()), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &event);
    }

    void drag(Stage &stage, Qt::MouseButton button)
    {
        send(QEvent::MouseMove, somewhere(stage.chance), Qt::NoButton, Qt::NoButton);
        send(QEvent::MouseButtonPress, somewhere(stage.chance), button, button);
        for (int i = 0; i < 4; ++i) {
            send(QEvent::MouseMove, somewhere(stage.chance), Qt::NoButton, button);
            stage.spin(stage.chance.below(3));
        }
        send(QEvent::MouseButtonRelease, somewhere(stage.chance), button, Qt::NoButton);
    }

    void turn(Stage &stage)
    {
        const QPointF at = somewhere(stage.chance);
        const QPoint angle(0, 120 * (stage.chance.below(5) - 2));
        QWheelEvent event(at, m_window->mapToGlobal(at.toPoint()), {}, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_window.get(), &event);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_root;
};
STRESS_SCENARIO(ImpatientUser, "impatient-user", 8192)

} // namespace
