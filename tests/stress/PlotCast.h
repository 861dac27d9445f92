// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

/// The objects of a play with plots of the companion module and what they can do to each other, all through the
/// meta-object system. Whatever is destroyed is forgotten. GUI thread.
class PlotCast
{
public:
    /// Makes an object of a QML type, null for a type that there is not.
    using Creator = std::function<QObject *(const QByteArray &type)>;

    PlotCast(Chance &chance, Creator creator);
    /// Destroys who is left.
    ~PlotCast();
    PlotCast(const PlotCast &) = delete;
    PlotCast &operator=(const PlotCast &) = delete;

    static const QVector<QByteArray> &types();

    QObject *add(const QByteArray &type);
    /// One object of each type, two of views, series and stores.
    void addEverybody();
    /// Somebody who is still there and inherits the class; null if nobody does.
    QObject *any(const char *className);
    bool isEmpty();

    /// One link between two of them, or one taken away.
    void link();
    void unlink();
    /// One ordinary thing: values, a zoom, a key, a switch.
    void act();
    /// One property or invokable with arguments that make no sense.
    void mistreat();
    /// Destroys one of them, at once or by way of the event loop.
    void destroyOne();

private:
    QVector<QObject *> living();
    void appendTo(QObject *store);
    void mistreatProperty(QObject &object);
    void mistreatView(QObject *view);
    void mistreatSeries(QObject *series);

    Chance &m_chance;
    Creator m_creator;
    QVector<QPointer<QObject>> m_objects;
};
