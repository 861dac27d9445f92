// SPDX-License-Identifier: MIT
#pragma once

#include <QOpenGLShader>
#include <QOpenGLShaderProgram>
#include <QPair>
#include <QString>
#include <QVector>

/// The shader program of a plotter class that does not use the registry; one per OpenGL context (see PerContext).
/// Render thread, in its context.
class LinkedProgram
{
public:
    using Sources = QVector<QPair<QOpenGLShader::ShaderType, QString>>;

    /// Links `sources` unless that is done. A failure is reported as "Link shader program for <owner> failed ..." with
    /// the log. Every further call tries again, without adding up sources; it reports a failure when the log is another
    /// one.
    bool ensureLinked(const Sources &sources, const char *owner);
    bool isLinked() const { return m_program.isLinked(); }
    QOpenGLShaderProgram &program() { return m_program; }

private:
    QOpenGLShaderProgram m_program;
    bool m_failedBefore = false;
    QString m_reportedLog;
};
