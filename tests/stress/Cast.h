// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Chance.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

class QQuickWindow;
class Stage;

/// The objects of a play and what they can do to each other, all through the meta-object system. Whatever is destroyed
/// is forgotten. GUI thread.
class Cast
{
public:
    /// Makes an object of a QML type, null for a type that there is not.
    using Creator = std::function<QObject *(const QByteArray &type)>;

    Cast(Chance &chance, Creator creator);
    /// Destroys who is left.
    ~Cast();
    Cast(const Cast &) = delete;
    Cast &operator=(const Cast &) = delete;

    /// Names of the types that can be drawn on, that draw, and that hold series.
    static const QVector<QByteArray> &areaTypes();
    static const QVector<QByteArray> &plotterTypes();
    static const QVector<QByteArray> &nodeTypes();

    QObject *add(const QByteArray &type);
    /// One object of each type, two of each area.
    void addEverybody();
    /// Somebody who is still there and inherits the class; null if there is none.
    QObject *any(const char *className);
    bool isEmpty();

    /// One link between two of them, made in one of the possible ways.
    void link();
    /// Takes one link away.
    void unlink();
    /// One ordinary thing: new data, a zoom, a switch.
    void act();
    /// One property or invokable with arguments that make no sense.
    void mistreat();
    /// Destroys one of them, at once or by way of the event loop.
    void destroyOne();

private:
    QVector<QObject *> living();
    void mistreatProperty(QObject &object);
    void mistreatInvokable(QObject &object);

    Chance &m_chance;
    Creator m_creator;
    QVector<QPointer<QObject>> m_objects;
};

/// A creator on a stage: items go into the window.
Cast::Creator castIn(Stage &stage, QQuickWindow &window);

// Nothing happens, and the answer is false, when there is no object, or none with such a member.

/// Calls an invokable that takes one object.
bool callWith(QObject *object, const char *method, const char *argumentType, QObject *argument);
/// Writes a property whose type is a pointer to an object.
bool writeObject(QObject *object, const char *property, QObject *value);
/// Writes a property whose type is a list of pointers to objects.
bool writeObjects(QObject *object, const char *property, const QList<QObject *> &values);
