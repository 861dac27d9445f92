// SPDX-License-Identifier: MIT
#pragma once

#include <QOpenGLShader>
#include <QString>

/// Whether the current context is one of the core profile, which has no shading language as old as our shaders' own.
bool isCoreProfile();

/// `source` as a context of the core profile takes it: with the words that have changed since GLSL 1.10 given their
/// newer meanings. A source that names its own version is returned as it is. (A geometry shader always names one.)
QString coreProfileSource(QOpenGLShader::ShaderType type, const QString &source);

/// `source` as the current context takes it.
QString sourceForContext(QOpenGLShader::ShaderType type, const QString &source);

/// The widest line up to `width` pixels that the current context draws without an error: contexts of the core profile
/// may know no wide lines.
float lineWidthForContext(float width);
