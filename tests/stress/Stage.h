// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"
#include "stress/Messages.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSet>

#include <functional>
#include <memory>

/// What a scenario plays on: a QML engine with the module as an application would load it, windows, chance and time.
class Stage
{
public:
    Stage(quint32 seed, Messages &messages);
    ~Stage();

    Chance chance;
    Messages &messages;

    /// Notes what is wrong, if anything is, and where.
    void judge(const QString &where, const QStringList &faults);
    const QStringList &faults() const { return m_faults; }

    QQmlEngine &engine() { return *m_engine; }
    /// Deletes the engine, with everything that QML owns, and starts a new one.
    void replaceEngine();

    /// An object of QML text, for example "ChartArea { width: 10 }"; imports are added. Owned by the caller.
    QObject *make(const QString &text);
    /// An item of QML text in a window.
    QQuickItem *makeIn(QQuickWindow &window, const QString &text);
    /// A scene of the resources, with the properties given. Owned by the caller.
    QObject *scene(const QString &name, const QVariantMap &properties = {});

    /// A visible window, black.
    std::unique_ptr<QQuickWindow> open(const QSize &size = {320, 200});
    /// Runs the event loop, at least once round.
    void spin(int milliseconds = 0);
    /// Runs the event loop as an application does: asleep while there's nothing to do.
    void wait(int milliseconds);
    /// Runs the event loop until the window has swapped `count` more frames (or two seconds have passed, if it isn't
    /// shown).
    void frames(QQuickWindow &window, int count);
    /// Removes what waits for removal: deferred deletions, JavaScript garbage, cached components.
    void settle();

private:
    QQmlComponent &component(const QString &text);

    std::unique_ptr<QQmlEngine> m_engine;
    QHash<QString, QQmlComponent *> m_components; ///< owned by the engine
    QStringList m_faults;
};

/// Calls a function whenever the signal it is connected to is emitted.
class Trigger : public QObject
{
    Q_OBJECT

public:
    explicit Trigger(std::function<void()> action, QObject *parent = nullptr)
        : QObject(parent),
          m_action(std::move(action))
    {
    }
    /// Every signal that the object's own classes declare (not those of QObject and QQuickItem); their names.
    static QList<QByteArray> signalsOf(const QObject &object);
    /// `signal` as in "dataChanged()".
    bool on(QObject &sender, const QByteArray &signal);

public slots:
    void fire() { m_action(); }

private:
    std::function<void()> m_action;
};
