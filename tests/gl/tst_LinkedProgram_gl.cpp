// SPDX-License-Identifier: MIT
#include "gl/LinkedProgram.h"
#include "gl/PerContext.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/QuietTest.h"

#include <QtTest>

#include <QOpenGLExtraFunctions>

#include <memory>

namespace {

const QString vertexSource = QStringLiteral("void main() { gl_Position = vec4(0.0); }");
const QString fragmentSource = QStringLiteral("void main() { gl_FragColor = vec4(1.0); }");
const QString undefinedFunction = QStringLiteral("vec4 nowhere(); void main() { gl_FragColor = nowhere(); }");

LinkedProgram::Sources sources(const QString &vertex, const QString &fragment)
{
    return {{QOpenGLShader::Vertex, vertex}, {QOpenGLShader::Fragment, fragment}};
}

} // namespace

class tst_LinkedProgram_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void itLinksOnce();
    void aFailureIsReportedOnceHoweverOftenItIsTried_data();
    void aFailureIsReportedOnceHoweverOftenItIsTried();
    void sourcesDoNotPileUp();
    void aFailureIsOvercomeWhenTheSourcesAreGood();
    void aGeometryStageIsTriedQuietly();
    void eachContextHasItsOwnAndItGoesWithTheContext();
};

void tst_LinkedProgram_gl::itLinksOnce()
{
    OffscreenGL offscreen;
    LinkedProgram own;
    QVERIFY(!own.isLinked());
    QVERIFY(own.ensureLinked(sources(vertexSource, fragmentSource), "Test"));
    const GLuint id = own.program().programId();
    QVERIFY(own.ensureLinked(sources("nonsense", "nonsense"), "Test")); // not even looked at
    QVERIFY(own.isLinked());
    QCOMPARE(own.program().programId(), id);
}

void tst_LinkedProgram_gl::aFailureIsReportedOnceHoweverOftenItIsTried_data()
{
    QTest::addColumn<QString>("vertex");
    QTest::addColumn<QString>("fragment");
    QTest::newRow("a vertex stage that does not compile") << QStringLiteral("nonsense %s %n") << fragmentSource;
    QTest::newRow("a fragment stage that does not compile") << vertexSource << QStringLiteral("void main() { bar(); }");
    QTest::newRow("stages that do not link") << vertexSource << undefinedFunction;
}

void tst_LinkedProgram_gl::aFailureIsReportedOnceHoweverOftenItIsTried()
{
    QFETCH(QString, vertex);
    QFETCH(QString, fragment);
    OffscreenGL offscreen;
    LinkedProgram own;
    QVERIFY(!own.ensureLinked(sources(vertex, fragment), "Test"));
    const int qtsOwn = m_log->ofType(QtWarningMsg).size();
    constexpr int further = 4;
    for (int i = 0; i < further; ++i)
        QVERIFY(!own.ensureLinked(sources(vertex, fragment), "Test"));
    QCOMPARE(m_log->ofType(QtWarningMsg).size(), qtsOwn);
    const QStringList failures = m_log->ofType(QtCriticalMsg);
    QCOMPARE(failures.size(), 1);
    const QString &failure = failures.first();
    QVERIFY2(failure.startsWith("Link shader program for Test failed with log:\n \""), qPrintable(failure));
    QVERIFY(failure.endsWith('"'));
    QVERIFY(failure.contains("error"));
    QCOMPARE(offscreen.gl().glGetError(), GLenum(GL_NO_ERROR));
    m_log->clear();
}

void tst_LinkedProgram_gl::sourcesDoNotPileUp()
{
    OffscreenGL offscreen;
    LinkedProgram own;
    for (int i = 0; i < 5; ++i)
        QVERIFY(!own.ensureLinked(sources(vertexSource, undefinedFunction), "Test"));
    m_log->clear();
    GLint attached = 0;
    GLint left = 0;
    offscreen.gl().glGetProgramiv(own.program().programId(), GL_ATTACHED_SHADERS, &attached);
    QVERIFY(attached <= 2);
    for (GLuint name = 1; name < 100; ++name)
        left += offscreen.gl().glIsShader(name) || offscreen.gl().glIsProgram(name);
    QVERIFY(left <= 3);
}

void tst_LinkedProgram_gl::aFailureIsOvercomeWhenTheSourcesAreGood()
{
    OffscreenGL offscreen;
    LinkedProgram own;
    QVERIFY(!own.ensureLinked(sources(vertexSource, "nonsense"), "Test"));
    QVERIFY(!own.ensureLinked(sources(vertexSource, undefinedFunction), "Test"));
    m_log->clear();
    QVERIFY(own.ensureLinked(sources(vertexSource, fragmentSource), "Test"));
    QVERIFY(own.program().bind());
    own.program().release();
}

void tst_LinkedProgram_gl::aGeometryStageIsTriedQuietly()
{
    const auto geometry = [](const QString &lines) {
        return qMakePair(QOpenGLShader::ShaderType(QOpenGLShader::Geometry),
                         "#version 150\nlayout (points) in;\nlayout (points, max_vertices = 1) out;\n" + lines);
    };
    const auto vertex = qMakePair(QOpenGLShader::ShaderType(QOpenGLShader::Vertex), "#version 150\n" + vertexSource);
    const auto fragment = qMakePair(QOpenGLShader::ShaderType(QOpenGLShader::Fragment),
                                    QStringLiteral("#version 150\nout vec4 color; void main() { color = vec4(1.0); }"));
    OffscreenGL offscreen;
    LinkedProgram own;
    QVERIFY(!own.ensureLinked({vertex, geometry("nonsense"), fragment}, "Test"));
    const int said = m_log->messages().size();
    QVERIFY(!own.ensureLinked({vertex, geometry("nonsense"), fragment}, "Test"));
    QCOMPARE(m_log->messages().size(), said);
    const QString good = "void main() { gl_Position = gl_in[0].gl_Position; EmitVertex(); EndPrimitive(); }";
    QVERIFY(own.ensureLinked({vertex, geometry(good), fragment}, "Test"));
    QCOMPARE(m_log->messages().size(), said);
    QCOMPARE(offscreen.gl().glGetError(), GLenum(GL_NO_ERROR));
    m_log->clear();
}

void tst_LinkedProgram_gl::eachContextHasItsOwnAndItGoesWithTheContext()
{
    PerContext<LinkedProgram> programs;
    auto first = std::make_unique<OffscreenGL>();
    QCOMPARE(programs.find(), nullptr);
    LinkedProgram *inFirst = &programs.current();
    QVERIFY(inFirst->ensureLinked(sources(vertexSource, fragmentSource), "Test"));
    const QPointer<QOpenGLShaderProgram> firstProgram(&inFirst->program());
    {
        OffscreenGL second;
        QCOMPARE(programs.find(), nullptr);
        LinkedProgram *inSecond = &programs.current();
        QVERIFY(inSecond != inFirst);
        QVERIFY(!inSecond->isLinked());
        QVERIFY(inSecond->ensureLinked(sources(vertexSource, fragmentSource), "Test"));
        QCOMPARE(programs.find(), inSecond);
        const QPointer<QOpenGLShaderProgram> secondProgram(&inSecond->program());
        first->makeCurrent();
        QCOMPARE(programs.find(), inFirst);
        second.makeCurrent();
        first.reset();
        QVERIFY(!firstProgram);
        QVERIFY(secondProgram);
        second.makeCurrent();
        QCOMPARE(programs.find(), inSecond);
    }
}

QTEST_MAIN(tst_LinkedProgram_gl)
#include "tst_LinkedProgram_gl.moc"
