// SPDX-License-Identifier: MIT
#include "gl/LinkedProgram.h"

#include "gl/CoreProfile.h"

#include <QDebug>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

namespace {

GLenum glType(QOpenGLShader::ShaderType type)
{
    switch (int(type)) {
    case QOpenGLShader::Vertex:
        return GL_VERTEX_SHADER;
    case QOpenGLShader::Geometry:
        return 0x8DD9; // GL_GEOMETRY_SHADER, not in the OpenGL ES 2 headers
    default:
        return GL_FRAGMENT_SHADER;
    }
}

/// Compiles one stage into `program`. Without Qt, which would log a failure at length.
bool attachStage(QOpenGLFunctions &gl, GLuint program, QOpenGLShader::ShaderType type, const QByteArray &source)
{
    const GLuint shader = gl.glCreateShader(glType(type));
    if (!shader)
        return false;
    const char *text = source.constData();
    GLint compiled = 0;
    gl.glShaderSource(shader, 1, &text, nullptr);
    gl.glCompileShader(shader);
    gl.glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    gl.glAttachShader(program, shader);
    gl.glDeleteShader(shader); // goes with the program
    return compiled != 0;
}

/// Whether the sources link; logs nothing.
bool linksSilently(const LinkedProgram::Sources &sources)
{
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    const GLuint program = gl.glCreateProgram();
    bool compiled = program != 0;
    for (const auto &stage : sources)
        compiled =
            compiled && attachStage(gl, program, stage.first, sourceForContext(stage.first, stage.second).toUtf8());
    GLint linked = 0;
    if (compiled) {
        gl.glLinkProgram(program);
        gl.glGetProgramiv(program, GL_LINK_STATUS, &linked);
    }
    gl.glDeleteProgram(program);
    return linked != 0;
}

} // namespace

bool LinkedProgram::ensureLinked(const Sources &sources, const char *owner)
{
    Q_ASSERT(QOpenGLContext::currentContext());
    if (m_program.isLinked())
        return true;
    if (m_failedBefore && !linksSilently(sources))
        return false; // Qt would say the same again, at length
    m_program.removeAllShaders();
    for (const auto &stage : sources)
        m_program.addCacheableShaderFromSourceCode(stage.first, sourceForContext(stage.first, stage.second));
    if (m_program.link())
        return true;
    if (!m_failedBefore || m_program.log() != m_reportedLog) {
        m_reportedLog = m_program.log();
        qCritical() << qPrintable(
            QStringLiteral("Link shader program for %1 failed with log:\n").arg(QLatin1String(owner)))
                    << m_reportedLog;
    }
    m_failedBefore = true;
    return false;
}
