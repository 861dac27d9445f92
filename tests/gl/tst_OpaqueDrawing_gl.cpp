// SPDX-License-Identifier: MIT
#include "gl/OpaqueDrawing.h"
#include "tests/support/OffscreenGL.h"

#include <QtTest>

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <functional>
#include <memory>

namespace {

using Settings = std::function<void(QOpenGLFunctions &)>;

void blendAsAChart(QOpenGLFunctions &gl)
{
    gl.glEnable(GL_BLEND);
    gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_CONSTANT_ALPHA, GL_ONE);
}

constexpr char vertexSource[] = "attribute vec2 point; void main() { gl_Position = vec4(point, 0.0, 1.0); }";
constexpr char fragmentSource[] = "uniform vec4 ink; void main() { gl_FragColor = ink; }";

/// Triangles over one another in several colours, all pixels with their alpha.
class Picture
{
public:
    Picture()
    {
        m_program.addShaderFromSourceCode(QOpenGLShader::Vertex, vertexSource);
        m_program.addShaderFromSourceCode(QOpenGLShader::Fragment, fragmentSource);
        m_program.link();
    }

    QByteArray draw(QOpenGLFunctions &gl, bool mayBeOpaque)
    {
        static const QColor inks[] = {"#ffd7a1", "#80123456", "#07cbf2", "#fe654321", "#000000", "#ffffff"};
        m_program.bind();
        m_program.enableAttributeArray("point");
        float shift = -1.0f;
        for (const QColor &ink : inks) {
            const float corners[] = {shift, -1.0f, shift + 1.5f, -0.3f, shift + 0.2f, 0.9f - 0.1f * shift};
            m_program.setUniformValue("ink", ink);
            m_program.setAttributeArray("point", corners, 2);
            std::unique_ptr<OpaqueDrawing> opaque;
            if (mayBeOpaque)
                opaque = std::make_unique<OpaqueDrawing>(gl, ink);
            gl.glDrawArrays(GL_TRIANGLES, 0, 3);
            shift += 0.2f;
        }
        m_program.disableAttributeArray("point");
        constexpr int side = 100;
        QByteArray pixels(4 * side * side, '\0');
        gl.glReadPixels(0, 0, side, side, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }

private:
    QOpenGLShaderProgram m_program;
};

bool writesAlpha(QOpenGLFunctions &gl)
{
    GLboolean mask[4] = {};
    gl.glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    return mask[3];
}

} // namespace

Q_DECLARE_METATYPE(Settings)

class tst_OpaqueDrawing_gl : public QObject
{
    Q_OBJECT

private slots:
    void anOpaqueColourIsDrawnWithoutBlending();
    void aTransparentOneIsBlended();
    void otherBlendStatesAreLeftAlone_data();
    void otherBlendStatesAreLeftAlone();
    void noPixelDiffers_data();
    void noPixelDiffers();
};

void tst_OpaqueDrawing_gl::anOpaqueColourIsDrawnWithoutBlending()
{
    OffscreenGL offscreen;
    QOpenGLFunctions &gl = offscreen.gl();
    offscreen.picture([&] {
        blendAsAChart(gl);
        {
            const OpaqueDrawing opaque(gl, Qt::red);
            QVERIFY(!gl.glIsEnabled(GL_BLEND));
            QVERIFY(!writesAlpha(gl));
        }
        QVERIFY(gl.glIsEnabled(GL_BLEND));
        QVERIFY(writesAlpha(gl));
    });
}

void tst_OpaqueDrawing_gl::aTransparentOneIsBlended()
{
    OffscreenGL offscreen;
    QOpenGLFunctions &gl = offscreen.gl();
    offscreen.picture([&] {
        blendAsAChart(gl);
        const OpaqueDrawing opaque(gl, QColor::fromRgba64(0xffff, 0, 0, 0xfffe));
        QVERIFY(gl.glIsEnabled(GL_BLEND));
        QVERIFY(writesAlpha(gl));
    });
}

void tst_OpaqueDrawing_gl::otherBlendStatesAreLeftAlone_data()
{
    QTest::addColumn<Settings>("set");
    QTest::newRow("no blending") << Settings([](QOpenGLFunctions &gl) { gl.glDisable(GL_BLEND); });
    QTest::newRow("addition") << Settings(
        [](QOpenGLFunctions &gl) { gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE, GL_CONSTANT_ALPHA, GL_ONE); });
    QTest::newRow("alpha of its own") << Settings(
        [](QOpenGLFunctions &gl) { gl.glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA); });
    QTest::newRow("subtraction") << Settings([](QOpenGLFunctions &gl) { gl.glBlendEquation(GL_FUNC_SUBTRACT); });
    QTest::newRow("constant alpha") << Settings([](QOpenGLFunctions &gl) { gl.glBlendColor(0, 0, 0, 0.25f); });
}

void tst_OpaqueDrawing_gl::otherBlendStatesAreLeftAlone()
{
    QFETCH(Settings, set);
    OffscreenGL offscreen;
    QOpenGLFunctions &gl = offscreen.gl();
    offscreen.picture([&] {
        blendAsAChart(gl);
        set(gl);
        const GLboolean blends = gl.glIsEnabled(GL_BLEND);
        const OpaqueDrawing opaque(gl, Qt::red);
        QCOMPARE(gl.glIsEnabled(GL_BLEND), blends);
        QVERIFY(writesAlpha(gl));
    });
}

void tst_OpaqueDrawing_gl::noPixelDiffers_data()
{
    QTest::addColumn<float>("constantAlpha");
    QTest::addColumn<float>("groundAlpha");
    for (const float constantAlpha : {0.0f, 0.3f, 1.0f}) {
        for (const float groundAlpha : {0.0f, 0.6f, 1.0f})
            QTest::addRow("constant %.1f, ground %.1f", double(constantAlpha), double(groundAlpha))
                << constantAlpha << groundAlpha;
    }
}

void tst_OpaqueDrawing_gl::noPixelDiffers()
{
    QFETCH(float, constantAlpha);
    QFETCH(float, groundAlpha);
    OffscreenGL offscreen;
    QOpenGLFunctions &gl = offscreen.gl();
    Picture picture;
    QByteArray pixels[2];
    for (const bool mayBeOpaque : {false, true}) {
        offscreen.picture([&] {
            blendAsAChart(gl);
            gl.glBlendColor(0, 0, 0, constantAlpha);
            gl.glClearColor(0.3f, 0.9f, 0.1f, groundAlpha);
            gl.glClear(GL_COLOR_BUFFER_BIT);
            pixels[mayBeOpaque] = picture.draw(gl, mayBeOpaque);
        });
    }
    QVERIFY(pixels[0].count('\x07') > 100); // something was drawn
    QVERIFY(pixels[0] == pixels[1]);
}

QTEST_MAIN(tst_OpaqueDrawing_gl)
#include "tst_OpaqueDrawing_gl.moc"
