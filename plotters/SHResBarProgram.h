// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/SProgramShaderDefinition.h"

/// The program "hresbar": bars whose x positions are the sum of two floats, subtracted from the view's part by part.
class SHResBarProgram : public SProgramShaderDefinition
{
public:
    QString name() const override { return QStringLiteral("hresbar"); }
    QVector<QPair<QOpenGLShader::ShaderType, QString>> sources() const override;
};
