// SPDX-License-Identifier: MIT
#pragma once

#include <QGenericPlugin>
#include <QObject>

/// Ends the program that loads it with its first picture, and prints when that was on the monotonic clock and how long
/// the program's processors worked until then, in nanoseconds. While a window has a property `reading` that is true, or
/// `hasNumbers` that is false, its pictures don't count.
class FirstPicture : public QObject
{
    Q_OBJECT

public:
    FirstPicture();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};

class FirstPicturePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "first-picture.json")

public:
    QObject *create(const QString &, const QString &) override { return new FirstPicture; }
};
