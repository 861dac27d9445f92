// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

/// Objects that do things to each other, all through the meta-object system; what they do is for the derived classes to
/// say. It forgets objects that are destroyed. GUI thread.
class Troupe
{
public:
    /// Makes an object of a QML type. Returns null if it doesn't know the type.
    using Creator = std::function<QObject *(const QByteArray &type)>;

    Troupe(Chance &chance, Creator creator);
    /// Destroys what is left, in any order.
    virtual ~Troupe();
    Troupe(const Troupe &) = delete;
    Troupe &operator=(const Troupe &) = delete;

    QObject *add(const QByteArray &type);
    /// Any of the objects that inherit the class; null if there is none.
    QObject *any(const char *className);
    bool isEmpty();

    /// One object of each type, and a second one of some.
    virtual void addEverybody() = 0;
    /// Makes one link between two objects, in one of the possible ways.
    virtual void link() = 0;
    /// Takes one link away.
    virtual void unlink() = 0;
    /// One ordinary thing: new data, a zoom, a switch.
    virtual void act() = 0;
    /// One property or invokable with arguments that make no sense.
    virtual void mistreat() = 0;
    /// Destroys one of them, at once or by way of the event loop.
    void destroyOne();

protected:
    /// Any value into any property that the object doesn't have from Qt.
    void mistreatProperty(QObject &object);

    Chance &m_chance;

private:
    QVector<QObject *> living();

    Creator m_creator;
    QVector<QPointer<QObject>> m_objects;
};
