// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/compare/Contender.h"

#include <QQuickView>

/// The window of the contenders that live in a Qt Quick scene.
class QuickStage
{
public:
    QuickStage();

    /// Fills the window with the root item of a QML file and shows it.
    QQuickItem *open(const QUrl &file, const QVariantMap &properties = {});
    /// Fills the window with an item that the view takes over, and shows it.
    void open(QQuickItem *item);
    QQuickView &view() { return m_view; }

private:
    QQuickView m_view;
};
