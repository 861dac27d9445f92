// SPDX-License-Identifier: MIT
#include "tests/support/Dialect.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QSurfaceFormat>

namespace {

struct SDialect
{
    const char *name;
    QSurfaceFormat::RenderableType type;
    QSurfaceFormat::OpenGLContextProfile profile;
    int major;
    int minor;
    bool hasDeprecated;
    const char *mesaVersion; ///< null where the format alone is enough
    const char *mesaLanguage;
};

constexpr auto desktop = QSurfaceFormat::OpenGL;
constexpr auto embedded = QSurfaceFormat::OpenGLES;
constexpr auto compatible = QSurfaceFormat::CompatibilityProfile;
constexpr auto core = QSurfaceFormat::CoreProfile;
constexpr auto none = QSurfaceFormat::NoProfile;

constexpr SDialect dialects[] = {
    {"4.5", desktop, compatible, 4, 5, true, "4.5COMPAT", "450"},
    {"3.3", desktop, compatible, 3, 3, true, "3.3COMPAT", "330"},
    {"3.0", desktop, none, 3, 0, true, "3.0", "130"},
    {"2.1", desktop, none, 2, 1, true, "2.1", "120"},
    {"4.5core", desktop, core, 4, 5, false, nullptr, nullptr},
    {"3.3core", desktop, core, 3, 3, false, "3.3", "330"},
    {"es2", embedded, none, 2, 0, false, "2.0", nullptr},
    {"es3", embedded, none, 3, 0, false, "3.0", nullptr},
    {"es3.3", embedded, none, 3, 2, false, "3.3", nullptr},
};

const SDialect *wanted()
{
    for (const SDialect &dialect : dialects) {
        if (testDialect() == dialect.name)
            return &dialect;
    }
    return nullptr;
}

} // namespace

QByteArray testDialect()
{
    return qgetenv("VORLIX_TEST_DIALECT");
}

void useTestDialect()
{
    if (testDialect().isEmpty())
        return;
    const SDialect *dialect = wanted();
    if (!dialect)
        qFatal("unknown VORLIX_TEST_DIALECT: %s", testDialect().constData());
    const bool isEmbedded = dialect->type == embedded;
    if (dialect->mesaVersion)
        qputenv(isEmbedded ? "MESA_GLES_VERSION_OVERRIDE" : "MESA_GL_VERSION_OVERRIDE", dialect->mesaVersion);
    if (dialect->mesaLanguage)
        qputenv("MESA_GLSL_VERSION_OVERRIDE", dialect->mesaLanguage);
    QSurfaceFormat format;
    format.setRenderableType(dialect->type);
    format.setProfile(dialect->profile);
    format.setVersion(dialect->major, dialect->minor);
    if (dialect->hasDeprecated)
        format.setOption(QSurfaceFormat::DeprecatedFunctions);
    QSurfaceFormat::setDefaultFormat(format);
    QCoreApplication::setAttribute(isEmbedded ? Qt::AA_UseOpenGLES : Qt::AA_UseDesktopOpenGL);
}

bool isOfTestDialect(const QOpenGLContext &context)
{
    const SDialect *dialect = wanted();
    if (!dialect)
        return true;
    const QSurfaceFormat format = context.format();
    if (context.isOpenGLES() != (dialect->type == embedded))
        return false;
    if (!dialect->mesaVersion) // a driver gives the newest that is compatible
        return format.profile() == dialect->profile && format.version() >= qMakePair(dialect->major, dialect->minor);
    const QByteArray version =
        QByteArray::number(format.majorVersion()) + '.' + QByteArray::number(format.minorVersion());
    return (format.profile() == core) == (dialect->profile == core)
        && QByteArray(dialect->mesaVersion).startsWith(version);
}
