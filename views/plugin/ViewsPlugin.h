// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlExtensionPlugin>

/// The entry of the companion module: registers its types. The QML engine makes and calls it, GUI thread.
class ViewsPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    /// Registers under "VorlixPlugin.Views" 1.0.
    void registerTypes(const char *uri) override;
};
