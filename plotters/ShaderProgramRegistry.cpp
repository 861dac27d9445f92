// SPDX-License-Identifier: MIT
#include "plotters/ShaderProgramRegistry.h"

#include "plotters/SProgramShaderDefinition.h"

void ShaderProgramRegistry::registerProgram(SProgramShaderDefinition *definition)
{
    const QString name = definition->name();
    if (!m_definitions.contains(name))
        m_definitions.insert(name, definition);
}
