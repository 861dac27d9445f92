// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/SProgramShaderDefinition.h"

/// The program "area": vertices under a matrix in one colour.
class SAreaPlotterProgram : public SProgramShaderDefinition
{
public:
    QString name() const override { return QStringLiteral("area"); }
    /// Built from the two texts below.
    QVector<QPair<QOpenGLShader::ShaderType, QString>> sources() const override;
    virtual QString vertexSource() const;
    virtual QString fragmentSource() const;
};
