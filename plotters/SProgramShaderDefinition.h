// SPDX-License-Identifier: MIT
#pragma once

#include <QOpenGLShader>
#include <QPair>
#include <QString>
#include <QVector>

/// Describes one shader program of the registry. Without data; made once, never destroyed.
class SProgramShaderDefinition
{
public:
    /// The key under which plotters find the program.
    virtual QString name() const = 0;
    /// The stages in the order in which they are added to the program.
    virtual QVector<QPair<QOpenGLShader::ShaderType, QString>> sources() const = 0;
    /// The version of this interface that a definition is written for. Nothing asks yet.
    virtual int interfaceVersion() const { return 1; }
    /// Whether the program may be left out. Nothing asks yet.
    virtual bool isOptional() const { return false; }

protected:
    ~SProgramShaderDefinition() = default;
};
