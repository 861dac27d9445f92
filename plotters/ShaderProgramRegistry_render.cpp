// SPDX-License-Identifier: MIT
#include "plotters/ShaderProgramRegistry.h"

#include "gl/CoreProfile.h"
#include "plotters/SProgramShaderDefinition.h"

#include <QDebug>

bool ShaderProgramRegistry::hasPrograms() const
{
    const Programs *programs = m_programs.find();
    return programs && !programs->byName.isEmpty();
}

void ShaderProgramRegistry::compileAllPrograms()
{
    Q_ASSERT(QOpenGLContext::currentContext());
    Programs &programs = m_programs.current();
    for (const SProgramShaderDefinition *definition : qAsConst(m_definitions))
        compile(*definition, programs);
}

void ShaderProgramRegistry::compile(const SProgramShaderDefinition &definition, Programs &programs)
{
    const QString name = definition.name();
    if (programs.byName.contains(name)) // Deliberate: it says "Skipping" and compiles all the same.
        qWarning() << "Skipping" << name << "program shader because already exist another program with that name.";
    // Without the application as parent: it lives on another thread. The context's table owns the program.
    auto program = std::make_unique<QOpenGLShaderProgram>();
    const auto stages = definition.sources();
    for (const auto &stage : stages)
        program->addCacheableShaderFromSourceCode(stage.first, sourceForContext(stage.first, stage.second));
    if (!program->link()) {
        qWarning() << "Cannot compile" << name << "program shader.\nLOG:\n" << program->log();
        return;
    }
    programs.byName.insert(name, program.get());
    programs.owned.push_back(std::move(program));
}

QOpenGLShaderProgram *ShaderProgramRegistry::program(const QString &name) const
{
    const Programs *programs = m_programs.find();
    return programs ? programs->byName.value(name) : nullptr;
}
