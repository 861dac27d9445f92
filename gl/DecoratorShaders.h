// SPDX-License-Identifier: MIT
#pragma once

#include <QOpenGLShader>
#include <QPair>
#include <QString>
#include <QVector>

// The source variants of the highlight program.

/// How the highlight is drawn in a context.
enum class DecoratorDialect {
    NotDrawn = 0,   ///< desktop OpenGL 4 and later
    ByLocation = 1, ///< "#version 330", attributes by location
    Legacy = 2,     ///< without a version, attributes by name
};

DecoratorDialect decoratorDialect(int majorVersion, int minorVersion, bool isOpenGLES);

/// The stages of a dialect in the order in which they are added to the program.
QVector<QPair<QOpenGLShader::ShaderType, QString>> decoratorShaderSources(DecoratorDialect dialect);
