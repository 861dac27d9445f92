// SPDX-License-Identifier: MIT
#pragma once

class QQmlApplicationEngine;
class QQuickWindow;
struct SViewerOptions;

/// The viewer's window with the files that `options` names, not shown yet; they are read once events are handled. The
/// module is looked for beside the program, too. Null if the scene can't be loaded; Qt has said why. GUI thread.
QQuickWindow *loadViewerScene(QQmlApplicationEngine &engine, const SViewerOptions &options);
