// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Troupe.h"

/// Plots of the companion module, and what belongs to them.
class PlotCast : public Troupe
{
public:
    using Troupe::Troupe;

    static const QVector<QByteArray> &types();

    void addEverybody() override;
    void link() override;
    void unlink() override;
    void act() override;
    void mistreat() override;

private:
    QObject *anyStore();
    void appendTo(QObject *store);
    void mistreatView(QObject *view);
    void mistreatSeries(QObject *series);
};
