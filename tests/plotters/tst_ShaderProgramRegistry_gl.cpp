// SPDX-License-Identifier: MIT
#include "plotters/SProgramShaderDefinition.h"
#include "plotters/ShaderProgramRegistry.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/QuietTest.h"
#include "tests/support/VirtualSlot.h"

#include <QtTest>

#include <QOpenGLShaderProgram>
#include <QPointer>

#include <memory>

namespace {

class Definition : public SProgramShaderDefinition
{
public:
    explicit Definition(const QString &name,
                        const QString &fragment = QStringLiteral("void main() { gl_FragColor = vec4(1.0); }"))
        : m_name(name),
          m_fragment(fragment)
    {
    }
    QString name() const override { return m_name; }
    QVector<QPair<QOpenGLShader::ShaderType, QString>> sources() const override
    {
        ++compilations;
        return {{QOpenGLShader::Vertex, "void main() { gl_Position = vec4(0.0); }"},
                {QOpenGLShader::Fragment, m_fragment}};
    }
    mutable int compilations = 0;

private:
    QString m_name;
    QString m_fragment;
};

} // namespace

class tst_ShaderProgramRegistry_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void definitionsAnswerTheirLaterQueries();
    void theFirstOfTwoDefinitionsWithOneNameStays();
    void nothingIsCompiledBeforeItIsAskedFor();
    void anUnknownNameYieldsNothingAndNoMessage();
    void aDefinitionThatDoesNotLinkIsReported();
    void aFailureDoesNotKeepTheOthersFromCompiling();
    void compilingAgainWarnsAndReplacesWithoutDeleting();
    void everyContextHasItsOwnPrograms();
    void programsGoWithTheirContext();
    void withoutAContextThereIsNothing();
};

void tst_ShaderProgramRegistry_gl::definitionsAnswerTheirLaterQueries()
{
    const Definition definition("a");
    QCOMPARE(int(definition.interfaceVersion()), 1);
    QCOMPARE(int(definition.isOptional()), 0);
    QCOMPARE(virtualSlot(&SProgramShaderDefinition::name), std::ptrdiff_t(0));
    QCOMPARE(virtualSlot(&SProgramShaderDefinition::sources), std::ptrdiff_t(1));
    QCOMPARE(virtualSlot(&SProgramShaderDefinition::interfaceVersion), std::ptrdiff_t(2));
    QCOMPARE(virtualSlot(&SProgramShaderDefinition::isOptional), std::ptrdiff_t(3));
    QCOMPARE(sizeof(SProgramShaderDefinition), sizeof(void *)); // nothing but its table
}

void tst_ShaderProgramRegistry_gl::theFirstOfTwoDefinitionsWithOneNameStays()
{
    OffscreenGL offscreen;
    ShaderProgramRegistry registry;
    Definition first("same"), second("same");
    registry.registerProgram(&first);
    registry.registerProgram(&second);
    registry.registerProgram(&first);
    registry.compileAllPrograms();
    QCOMPARE(first.compilations, 1);
    QCOMPARE(second.compilations, 0);
    QVERIFY(registry.program("same")->isLinked());
}

void tst_ShaderProgramRegistry_gl::nothingIsCompiledBeforeItIsAskedFor()
{
    OffscreenGL offscreen;
    ShaderProgramRegistry registry;
    Definition definition("a");
    registry.registerProgram(&definition);
    QVERIFY(!registry.hasPrograms());
    QCOMPARE(registry.program("a"), nullptr);
    QCOMPARE(definition.compilations, 0);
    registry.compileAllPrograms();
    QVERIFY(registry.hasPrograms());
    QVERIFY(registry.program("a")->bind());
}

void tst_ShaderProgramRegistry_gl::anUnknownNameYieldsNothingAndNoMessage()
{
    OffscreenGL offscreen;
    ShaderProgramRegistry registry;
    QCOMPARE(registry.program("never"), nullptr);
    registry.compileAllPrograms();
    QVERIFY(!registry.hasPrograms());
    QCOMPARE(registry.program(QString()), nullptr);
}

void tst_ShaderProgramRegistry_gl::aDefinitionThatDoesNotLinkIsReported()
{
    OffscreenGL offscreen;
    ShaderProgramRegistry registry;
    Definition broken("broken", "nonsense");
    registry.registerProgram(&broken);
    for (int i = 1; i <= 2; ++i) {
        registry.compileAllPrograms();
        QVERIFY(!registry.hasPrograms());
        QCOMPARE(registry.program("broken"), nullptr);
        QCOMPARE(broken.compilations, i);
    }
    QStringList ours;
    for (const QString &message : m_log->ofType(QtWarningMsg)) {
        if (message.startsWith(R"(Cannot compile "broken" program shader.)"))
            ours.append(message);
    }
    QCOMPARE(ours.size(), 2);
    QVERIFY2(ours.first().startsWith("Cannot compile \"broken\" program shader.\nLOG:\n \""), qPrintable(ours.first()));
    QVERIFY(ours.first().contains("error"));
    m_log->clear();
}

void tst_ShaderProgramRegistry_gl::aFailureDoesNotKeepTheOthersFromCompiling()
{
    OffscreenGL offscreen;
    ShaderProgramRegistry registry;
    Definition a("a"), broken("broken", "nonsense"), c("c");
    for (Definition *definition : {&a, &broken, &c})
        registry.registerProgram(definition);
    registry.compileAllPrograms();
    QVERIFY(registry.hasPrograms());
    QVERIFY(registry.program("a"));
    QVERIFY(registry.program("c"));
    QCOMPARE(registry.program("broken"), nullptr);
    QCOMPARE(m_log->count("Cannot compile"), 1);
    m_log->clear();
}

void tst_ShaderProgramRegistry_gl::compilingAgainWarnsAndReplacesWithoutDeleting()
{
    OffscreenGL offscreen;
    ShaderProgramRegistry registry;
    Definition definition("a");
    registry.registerProgram(&definition);
    registry.compileAllPrograms();
    const QPointer<QOpenGLShaderProgram> first(registry.program("a"));
    registry.compileAllPrograms();
    QCOMPARE(m_log->messages(),
             QStringList{R"(Skipping "a" program shader because already exist another program with that name.)"});
    m_log->clear();
    QVERIFY(registry.program("a") != first);
    QVERIFY(first);
    QVERIFY(first->bind());
    QCOMPARE(definition.compilations, 2);
}

void tst_ShaderProgramRegistry_gl::everyContextHasItsOwnPrograms()
{
    OffscreenGL first;
    ShaderProgramRegistry registry;
    Definition definition("a");
    registry.registerProgram(&definition);
    registry.compileAllPrograms();
    QOpenGLShaderProgram *inFirst = registry.program("a");
    OffscreenGL second;
    QVERIFY(!registry.hasPrograms());
    QCOMPARE(registry.program("a"), nullptr);
    registry.compileAllPrograms();
    QVERIFY(registry.program("a") != inFirst);
    QVERIFY(registry.program("a")->bind());
    first.makeCurrent();
    QCOMPARE(registry.program("a"), inFirst);
    QVERIFY(inFirst->bind());
}

void tst_ShaderProgramRegistry_gl::programsGoWithTheirContext()
{
    ShaderProgramRegistry registry;
    Definition definition("a");
    registry.registerProgram(&definition);
    for (int i = 1; i <= 3; ++i) {
        QPointer<QOpenGLShaderProgram> program;
        {
            OffscreenGL offscreen;
            QVERIFY(!registry.hasPrograms());
            registry.compileAllPrograms();
            program = registry.program("a");
            QVERIFY(program);
        }
        QVERIFY(!program);
        QCOMPARE(definition.compilations, i);
    }
}

void tst_ShaderProgramRegistry_gl::withoutAContextThereIsNothing()
{
    ShaderProgramRegistry registry;
    Definition definition("a");
    registry.registerProgram(&definition);
    {
        OffscreenGL offscreen;
        registry.compileAllPrograms();
        offscreen.context().doneCurrent();
        QVERIFY(!registry.hasPrograms());
        QCOMPARE(registry.program("a"), nullptr);
    }
}

QTEST_MAIN(tst_ShaderProgramRegistry_gl)
#include "tst_ShaderProgramRegistry_gl.moc"
