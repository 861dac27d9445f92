// SPDX-License-Identifier: MIT
#pragma once

#include "gl/PerContext.h"

#include <QHash>
#include <QOpenGLShaderProgram>
#include <QString>

#include <memory>
#include <vector>

class SProgramShaderDefinition;

/// The process-wide table of shader programs, by name. Definitions are registered on the GUI thread before the first
/// frame; programs are compiled, looked up and dropped per OpenGL context, on that context's render thread.
class ShaderProgramRegistry
{
public:
    static ShaderProgramRegistry &instance()
    {
        static auto *const registry = new ShaderProgramRegistry; // never destroyed, like its definitions
        return *registry;
    }

    ShaderProgramRegistry() = default;
    ~ShaderProgramRegistry() = default;
    ShaderProgramRegistry(const ShaderProgramRegistry &) = delete;
    ShaderProgramRegistry &operator=(const ShaderProgramRegistry &) = delete;

    /// Keeps `definition` for the life of the process; a second one of the same name is ignored, and not freed.
    void registerProgram(SProgramShaderDefinition *definition);
    /// Whether the current context has at least one linked program.
    bool hasPrograms() const;
    /// Compiles every definition for the current context and logs those that do not link.
    void compileAllPrograms();
    /// The current context's program of that name, or null. Lives as long as the context.
    QOpenGLShaderProgram *program(const QString &name) const;

private:
    struct Programs
    {
        QHash<QString, QOpenGLShaderProgram *> byName;
        std::vector<std::unique_ptr<QOpenGLShaderProgram>> owned; ///< also those that a later one replaced
    };

    static void compile(const SProgramShaderDefinition &definition, Programs &programs);

    QHash<QString, SProgramShaderDefinition *> m_definitions;
    PerContext<Programs> m_programs;
};
