// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QGenericPlugin>
#include <QImage>
#include <QObject>
#include <QTimer>

class QQuickWindow;

/// Looks at the first window of the program that loads it, compares it with a picture, and ends the program: with 0
/// when the two are alike and nothing was warned about. GUI thread. The environment says what to do:
///
///   SNAPSHOT_PICTURE    the picture that is expected; without it, any will do
///   SNAPSHOT_TOLERANCE  the share of blocks that may differ, 0 to 1 (see Pictures.h)
///   SNAPSHOT_RESULT     where to write what was seen
///   SNAPSHOT_UNTIL      a QML expression on the window; nothing is done or looked at before it is true
///   SNAPSHOT_DO         a QML expression to evaluate then
///   SNAPSHOT_AFTER      milliseconds to wait then; without it, until two looks in a row see the same
///   SNAPSHOT_MOUSE      a mouse gesture to make then: "hover X Y" or "wheel X Y DELTA"; several are joined by ",".
///   It's
///                       waited once more thereafter
///   SNAPSHOT_RECORD     "FOLDER COUNT INTERVAL": write COUNT pictures, one every INTERVAL ms, and evaluate SNAPSHOT_DO
///                       after each; nothing is compared
class Snapshot : public QObject
{
    Q_OBJECT

public:
    Snapshot();
    ~Snapshot() override;

private:
    void step();
    bool gesture();
    bool isReady();
    void lookAgain();
    void record();
    void finish(const QImage &seen);

    enum class Stage { Opening, Waiting, Appearing, Settling };

    QTimer m_timer;
    QElapsedTimer m_elapsed;
    Stage m_stage = Stage::Opening;
    QQuickWindow *m_window = nullptr;
    QImage m_last;
    bool m_hasGestured = false;
    int m_recorded = 0;
};

/// Makes Snapshot loadable by any Qt program: QT_QPA_GENERIC_PLUGINS=vorlixsnapshot.
class SnapshotPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "snapshot.json")

public:
    QObject *create(const QString &name, const QString &spec) override;
};
