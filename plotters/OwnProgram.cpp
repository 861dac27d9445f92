// SPDX-License-Identifier: MIT
#include "plotters/OwnProgram.h"

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

bool stageCompiles(QOpenGLFunctions &gl, QOpenGLShader::ShaderType type, const QByteArray &source)
{
    const GLuint shader = gl.glCreateShader(glType(type));
    if (!shader)
        return false;
    const char *text = source.constData();
    GLint compiled = 0;
    gl.glShaderSource(shader, 1, &text, nullptr);
    gl.glCompileShader(shader);
    gl.glGetShaderiv(shader, GL_COMPILE_STATUS, &compiled);
    gl.glDeleteShader(shader);
    return compiled != 0;
}

} // namespace

bool OwnProgram::ensureLinked(const Sources &sources, const char *owner)
{
    Q_ASSERT(QOpenGLContext::currentContext());
    if (m_program.isLinked())
        return true;
    if (m_failedBefore && !stagesCompile(sources))
        return false; // Qt would say the same again, at length
    m_program.removeAllShaders();
    for (const auto &stage : sources)
        m_program.addCacheableShaderFromSourceCode(stage.first, stage.second);
    if (m_program.link())
        return true;
    if (!m_failedBefore || m_program.log() != m_reportedLog) {
        m_reportedLog = m_program.log();
        qCritical().noquote() << QStringLiteral("Link shader program for %1 failed with log:\n").arg(QLatin1String(owner))
                              << m_reportedLog;
    }
    m_failedBefore = true;
    return false;
}

bool OwnProgram::stagesCompile(const Sources &sources)
{
    QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
    for (const auto &stage : sources) {
        if (!stageCompiles(gl, stage.first, stage.second.toUtf8()))
            return false;
    }
    return true;
}
