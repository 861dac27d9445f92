// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

class QOpenGLContext;

/// The kind of OpenGL that VORLIX_TEST_DIALECT asks for: "4.5", "3.3", "3.0" or "2.1" for the desktop's compatibility
/// profile, "3.3core" or "4.5core", "es2", "es3" or "es3.3" (which there is none of); empty for what the machine gives
/// by itself.
///
/// Mesa gives older versions only to processes whose environment says so, hence one kind per process.
QByteArray testDialect();

/// To be called before the application object exists.
void useTestDialect();

/// Whether the context is of the test's kind, as far as one that was asked for.
bool isOfTestDialect(const QOpenGLContext &context);
