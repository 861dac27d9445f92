// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/BarShaderMode.h"

#include <QOpenGLShader>
#include <QPair>
#include <QString>
#include <QVector>

// The source variants of the bar program.

/// The stages of a mode in the order in which they are added to the program.
QVector<QPair<QOpenGLShader::ShaderType, QString>> barShaderSources(int mode);
