// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "gl/BarShaders.h"
#include "plotters/BarPlotter.h"
#include "tests/support/CountingArea.h"
#include "tests/support/MetaTable.h"
#include "tests/support/QuietTest.h"

#include <QtTest>

#include <limits>
#include <memory>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The lines as one text; the last one ends as `ending` says.
QString lines(const QStringList &texts, const char *ending = "\n")
{
    return texts.join(QLatin1Char('\n')) + QLatin1String(ending);
}

} // namespace

class tst_BarPlotter : public QuietTest
{
    Q_OBJECT

private slots:
    void itDeclaresNothingOfItsOwn();
    void itTakesDataWithoutAChartArea();
    void itTakesDataWhileTheRenderLockIsHeld();
    void dataRequestsAFrameOncePerChange();
    void beforeTheFirstFrameItsAreaIsWhatWasSet();
    void theBarUnderAPoint();
    void noBarOutsideOnTheRightEdgeOrAtNotANumber();
    void everyModeHasItsSources();
    void everyModeHasItsAttributes();
};

void tst_BarPlotter::itDeclaresNothingOfItsOwn()
{
    const QMetaObject &meta = BarPlotter::staticMetaObject;
    QCOMPARE(ownProperties(meta), QStringList());
    QCOMPARE(ownSignals(meta), QStringList());
    QCOMPARE(ownMethods(meta), QStringList());
    QCOMPARE(meta.superClass(), &IPlotter1D::staticMetaObject);
}

void tst_BarPlotter::itTakesDataWithoutAChartArea()
{
    BarPlotter plotter;
    QSignalSpy changed(&plotter, &IPlotter::dataChanged);
    plotter.setData({1.0, 2.0});
    QCOMPARE(plotter.data(), (QVector<double>{1.0, 2.0}));
    QCOMPARE(changed.count(), 1);
    plotter.setData({1.0, 2.0});
    QCOMPARE(changed.count(), 1);
    plotter.setData({1.0, notANumber});
    plotter.setData({1.0, notANumber});
    QCOMPARE(changed.count(), 3);
}

void tst_BarPlotter::itTakesDataWhileTheRenderLockIsHeld()
{
    CountingArea area;
    BarPlotter plotter;
    plotter.setChartArea(&area);
    area.lockRender();
    plotter.setData({1.0}); // would never return if it took the lock
    area.unlockRender();
    QCOMPARE(plotter.data().size(), 1);
}

void tst_BarPlotter::dataRequestsAFrameOncePerChange()
{
    CountingArea area;
    BarPlotter plotter;
    plotter.setChartArea(&area);
    area.requests = 0;
    const QVector<double> series{1.0, notANumber};
    plotter.setData(series);
    plotter.setData(series);
    QCOMPARE(area.requests, 1);
    QVERIFY(plotter.data().isSharedWith(series));
}

void tst_BarPlotter::beforeTheFirstFrameItsAreaIsWhatWasSet()
{
    CountingArea area;
    BarPlotter plotter;
    plotter.setChartArea(&area);
    plotter.setData({4.0, 9.0});
    QVERIFY(plotter.plotterArea().isNull());
    area.requests = 0;
    QSignalSpy changed(&plotter, &IPlotter::plotterAreaChanged);
    plotter.setPlotterArea({0.0, 0.0, 2.0, 3.0});
    plotter.setPlotterArea({0.0, 0.0, 2.0, 3.0});
    QCOMPARE(plotter.plotterArea(), QRectF(0.0, 0.0, 2.0, 3.0));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(area.requests, 1);
}

void tst_BarPlotter::theBarUnderAPoint()
{
    BarPlotter plotter;
    plotter.setData({4.0, 9.0, -2.0, 1.0});
    plotter.setPlotterArea({10.0, 0.0, 8.0, 9.0});
    QCOMPARE(plotter.area_at({12.5, 100.0}), QRectF(12.0, 0.0, 2.0, 9.0)); // whatever the height of the point
    QCOMPARE(plotter.area_at({14.0, 0.0}), QRectF(14.0, 0.0, 2.0, -2.0));
    plotter.setXOffset(10.0);
    QCOMPARE(plotter.area_at({0.0, 0.0}), QRectF(0.0, 0.0, 2.0, 4.0));
}

void tst_BarPlotter::noBarOutsideOnTheRightEdgeOrAtNotANumber()
{
    BarPlotter plotter;
    plotter.setPlotterArea({0.0, 0.0, 2.0, 9.0});
    QVERIFY(plotter.area_at({1.0, 0.0}).isNull()); // no data
    plotter.setData({4.0, 9.0});
    QVERIFY(plotter.area_at({-0.1, 0.0}).isNull());
    QVERIFY(plotter.area_at({2.1, 0.0}).isNull());
    QVERIFY(plotter.area_at({2.0, 0.0}).isNull());
    QVERIFY(plotter.area_at({notANumber, 0.0}).isNull());
}

// shaders

void tst_BarPlotter::everyModeHasItsSources()
{
    const QString attributes = lines({"attribute float point;", "attribute float vertexID;", "uniform float screen_x;",
                                      "uniform float screen_dx;", "uniform float screen_dy;", "void main()", "{",
                                      "   float x\t\t= vertexID * screen_dx + screen_x;",
                                      "   gl_Position\t= vec4( x, -point/screen_dy + 1.0, 1.0, 1.0);", "}"});
    const QString version130 = lines({"#version 130", "in float point;", "uniform float screen_x;",
                                      "uniform float screen_dx;", "uniform float screen_dy;", "void main()", "{",
                                      "   float index\t= trunc( gl_VertexID / 4 ) + mod( gl_VertexID, 2 );",
                                      "   float x\t\t= index * screen_dx + screen_x;",
                                      "   gl_Position\t= vec4( x, -point/screen_dy + 1, 1.0, 1.0);", "}"});
    const QString version150 = lines(
        {"#version 150", "in float point;", "uniform float screen_x;", "uniform float screen_dx;",
         "uniform float screen_dy;", "void main()", "{",
         "   float x1    = gl_VertexID * screen_dx + screen_x;   float x2    = (gl_VertexID+1) * screen_dx + screen_x;   "
         "gl_Position = vec4(x1, -point/screen_dy + 1, x2, 1.0);",
         "}"});
    const QString geometry =
        lines({"#version 150", "layout (points) in;", "layout (triangle_strip, max_vertices = 4) out;", "void main()",
               "{", "   gl_Position = vec4(gl_in[0].gl_Position.x, 1.0, 0.0, 1.0);", "    EmitVertex();",
               "   gl_Position = vec4(gl_in[0].gl_Position.z, 1.0, 0.0, 1.0);", "   EmitVertex();",
               "   gl_Position = vec4(gl_in[0].gl_Position.x, gl_in[0].gl_Position.y, 0.0, 1.0);", "   EmitVertex();",
               "   gl_Position = vec4(gl_in[0].gl_Position.z, gl_in[0].gl_Position.y, 0.0, 1.0);", "   EmitVertex();",
               "   EndPrimitive();", "}"});
    const QString guarded = lines({"#ifdef GL_ES", "precision mediump float;", "#endif", "uniform vec4 bar_color;",
                                   "void main()", "{", "    gl_FragColor = bar_color;", "}"},
                                  "");
    const QString fragment130 = lines({"#version 130", "out vec4 FragColor;", "uniform vec4 bar_color;", "void main()",
                                       "{", "    FragColor = bar_color;", "}"},
                                      "");
    using Sources = QVector<QPair<QOpenGLShader::ShaderType, QString>>;
    const Sources attributeBased{{QOpenGLShader::Vertex, attributes}, {QOpenGLShader::Fragment, guarded}};
    const Sources numbered{{QOpenGLShader::Vertex, version130}, {QOpenGLShader::Fragment, fragment130}};
    const Sources expanded{{QOpenGLShader::Vertex, version150},
                           {QOpenGLShader::Geometry, geometry},
                           {QOpenGLShader::Fragment, fragment130}};
    QCOMPARE(barShaderSources(0), attributeBased);
    QCOMPARE(barShaderSources(1), numbered);
    QCOMPARE(barShaderSources(2), expanded);
    QCOMPARE(barShaderSources(3), attributeBased);
    QCOMPARE(barShaderSources(4), numbered);
}

void tst_BarPlotter::everyModeHasItsAttributes()
{
    const bool vertexIds[] = {true, false, false, true, false};
    const bool indices[] = {true, true, false, true, true};
    for (int mode = 0; mode < 5; ++mode) {
        QCOMPARE(barModeHasVertexIds(mode), vertexIds[mode]);
        QCOMPARE(barModeHasIndices(mode), indices[mode]);
    }
}

QTEST_MAIN(tst_BarPlotter)
#include "tst_BarPlotter.moc"
