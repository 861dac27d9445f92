// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlExtensionPlugin>

/// The module's entry: registers its types and shader programs. The QML engine makes and calls it, GUI thread.
class VorlixExtensionPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.sadrim.VorlixExtensionPlugin/1.0")

public:
    /// Registers under "VorlixPlugin" 1.0, whatever `uri` the engine passes.
    void registerTypes(const char *uri) override;
};
