// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Troupe.h"

class QQuickWindow;
class Stage;

/// Charts, plotters and nodes.
class Cast : public Troupe
{
public:
    using Troupe::Troupe;

    /// Names of the types that can be drawn on, that draw, and that hold series.
    static const QVector<QByteArray> &areaTypes();
    static const QVector<QByteArray> &plotterTypes();
    static const QVector<QByteArray> &nodeTypes();

    void addEverybody() override;
    void link() override;
    void unlink() override;
    void act() override;
    void mistreat() override;

private:
    void mistreatInvokable(QObject &object);
};

/// A creator on a stage: items go into the window.
Cast::Creator castIn(Stage &stage, QQuickWindow &window);
