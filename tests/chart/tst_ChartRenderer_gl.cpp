// SPDX-License-Identifier: MIT
#include "chart/ChartArea.h"
#include "chart/ChartRenderer.h"
#include "plotters/SProgramShaderDefinition.h"
#include "plotters/ShaderProgramRegistry.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/ProbePlotter.h"
#include "tests/support/QuietTest.h"
#include "tests/support/Scene.h"

#include <QtTest>

#include <QOpenGLFunctions>

#include <atomic>
#include <memory>

namespace {

/// Counts how often it is compiled.
class CountedProgram : public SProgramShaderDefinition
{
public:
    QString name() const override { return QStringLiteral("counted"); }
    QVector<QPair<QOpenGLShader::ShaderType, QString>> sources() const override
    {
        ++compilations;
        return {{QOpenGLShader::Vertex, "void main() { gl_Position = vec4(0.0); }"},
                {QOpenGLShader::Fragment, "void main() { gl_FragColor = vec4(1.0); }"}};
    }
    mutable std::atomic<int> compilations{0};
};

} // namespace

class tst_ChartRenderer_gl : public QuietTest
{
    Q_OBJECT

private slots:
    void initTestCase() { ShaderProgramRegistry::instance().registerProgram(&s_program); }
    void aChartWithoutPlottersIsTransparent();
    void theFramebufferHasNoDepthAndNoSamples();
    void aFrameStartsClearAndWithItsBlendState();
    void theFirstItemStaysTheRenderers();
    void anItemThatIsGoneIsNotDrawn();
    void programsAreCompiledOnceAndNotOnResize();
    void theAlphaFollowsTheConstantBlendAlpha();

private:
    static CountedProgram s_program;
};

CountedProgram tst_ChartRenderer_gl::s_program;

void tst_ChartRenderer_gl::aChartWithoutPlottersIsTransparent()
{
    const QColor ground(10, 200, 30);
    Scene scene({60, 40}, ground);
    scene.add(new ChartArea);
    scene.add(new IChartArea);
    QVERIFY(scene.show());
    const QImage picture = scene.grab();
    QCOMPARE(picture.size(), QSize(60, 40));
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            QCOMPARE(picture.pixelColor(x, y), ground);
    }
}

void tst_ChartRenderer_gl::theFramebufferHasNoDepthAndNoSamples()
{
    OffscreenGL offscreen;
    QVERIFY(offscreen.isValid());
    ChartRenderer renderer;
    const std::unique_ptr<QOpenGLFramebufferObject> target(renderer.createFramebufferObject({30, 20}));
    QVERIFY(target->isValid());
    QCOMPARE(target->size(), QSize(30, 20));
    QCOMPARE(target->format().attachment(), QOpenGLFramebufferObject::NoAttachment);
    QCOMPARE(target->format().samples(), 0);
}

void tst_ChartRenderer_gl::aFrameStartsClearAndWithItsBlendState()
{
    OffscreenGL offscreen;
    QOpenGLFunctions &gl = offscreen.gl();
    gl.glDisable(GL_BLEND);
    gl.glBlendFunc(GL_ZERO, GL_ZERO);
    gl.glBlendEquation(GL_FUNC_SUBTRACT);
    gl.glClearColor(1.0f, 1.0f, 1.0f, 1.0f);
    gl.glClear(GL_COLOR_BUFFER_BIT);
    ChartRenderer renderer;
    renderer.render(); // before any item
    const auto state = [&](GLenum name) {
        GLint value = -1;
        gl.glGetIntegerv(name, &value);
        return GLenum(value);
    };
    QVERIFY(gl.glIsEnabled(GL_BLEND));
    QCOMPARE(state(GL_BLEND_SRC_RGB), GLenum(GL_SRC_ALPHA));
    QCOMPARE(state(GL_BLEND_DST_RGB), GLenum(GL_ONE_MINUS_SRC_ALPHA));
    QCOMPARE(state(GL_BLEND_SRC_ALPHA), GLenum(GL_CONSTANT_ALPHA));
    QCOMPARE(state(GL_BLEND_DST_ALPHA), GLenum(GL_ONE));
    QCOMPARE(state(GL_BLEND_EQUATION_RGB), GLenum(GL_FUNC_ADD));
    QCOMPARE(state(GL_BLEND_EQUATION_ALPHA), GLenum(GL_FUNC_ADD));
    uchar pixel[4] = {9, 9, 9, 9};
    gl.glReadPixels(50, 50, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, pixel);
    QCOMPARE(QByteArray(reinterpret_cast<char *>(pixel), 4), QByteArray(4, '\0'));
}

void tst_ChartRenderer_gl::theFirstItemStaysTheRenderers()
{
    OffscreenGL offscreen;
    ChartArea first, second;
    ProbePlotter inFirst, inSecond;
    first.addPlotter(&inFirst);
    second.addPlotter(&inSecond);
    ChartRenderer renderer;
    renderer.synchronize(&first);
    renderer.synchronize(&second);
    QCOMPARE(inFirst.syncs(), 2);
    QCOMPARE(inSecond.syncs(), 0);
    renderer.render();
    QCOMPARE(inFirst.draws(), 1);
    QCOMPARE(inSecond.draws(), 0);
}

void tst_ChartRenderer_gl::anItemThatIsGoneIsNotDrawn()
{
    OffscreenGL offscreen;
    ProbePlotter plotter;
    ChartRenderer renderer;
    auto area = std::make_unique<ChartArea>();
    area->addPlotter(&plotter);
    renderer.synchronize(area.get());
    renderer.render();
    QCOMPARE(plotter.draws(), 1);
    area.reset();
    renderer.render();
    QCOMPARE(plotter.draws(), 1);
}

void tst_ChartRenderer_gl::programsAreCompiledOnceAndNotOnResize()
{
    s_program.compilations = 0;
    Scene scene({60, 40});
    ChartArea &area = scene.add(new ChartArea);
    scene.add(new ChartArea);
    QVERIFY(scene.show());
    for (int size = 20; size < 60; size += 10) {
        area.setSize({qreal(size), qreal(size)});
        QVERIFY(scene.frames(2));
    }
    QCOMPARE(s_program.compilations, 1);
    QCOMPARE(m_log->count("Skipping"), 0);
}

void tst_ChartRenderer_gl::theAlphaFollowsTheConstantBlendAlpha()
{
    const auto shown = [](float alpha) {
        Scene scene({20, 20}, Qt::white);
        scene.setBlendAlpha(alpha);
        scene.load(
            "ChartArea { anchors.fill: parent; BarPlotter { id: bars; color: '#0000ff' }"
            " Component.onCompleted: { addPlotter(bars); bars.plotterArea = Qt.rect(0, 0, 1, 1); bars.data = [1] } }");
        return scene.show() ? scene.grab().pixelColor(10, 15) : QColor();
    };
    QCOMPARE(shown(1.0f), QColor(0, 0, 255));
    QCOMPARE(shown(0.0f), QColor(255, 255, 255)); // blue is added to the white below
}

QTEST_MAIN(tst_ChartRenderer_gl)
#include "tst_ChartRenderer_gl.moc"
