// SPDX-License-Identifier: MIT
#include "chart/IChartArea.h"
#include "plotters/IPlotter.h"
#include "plotters/SProgramShaderDefinition.h"
#include "plotters/ShaderProgramRegistry.h"
#include "tests/support/LogCatcher.h"
#include "tests/support/OffscreenGL.h"

#include <QtTest>

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <functional>
#include <memory>

namespace {

const QColor black(0, 0, 0);
const QRectF unit(0.0, 0.0, 1.0, 1.0);

/// A program that paints what the uniform says; its attribute is the corner in device coordinates.
class PaintProgram : public SProgramShaderDefinition
{
public:
    QString name() const override { return QStringLiteral("paint"); }
    QVector<QPair<QOpenGLShader::ShaderType, QString>> sources() const override
    {
        return {{QOpenGLShader::Vertex, "attribute vec2 corner; void main() { gl_Position = vec4(corner, 0.0, 1.0); }"},
                {QOpenGLShader::Fragment, "uniform vec4 paint; void main() { gl_FragColor = paint; }"}};
    }
};

constexpr uint arrays = 0x1000;
constexpr uint elements = 0x2000;

/// Eight triangles of which each pair covers a quarter of the width; every layer paints in a colour of its own.
class PaintPlotter : public IPlotter
{
public:
    PaintPlotter()
    {
        m_programName = QStringLiteral("paint");
        for (int quarter = 0; quarter < 4; ++quarter) {
            const float left = -1.0f + 0.5f * float(quarter);
            const float right = left + 0.5f;
            corners += {left, -1.0f, right, -1.0f, left, 1.0f, right, -1.0f, left, 1.0f, right, 1.0f};
            for (int corner = 0; corner < 6; ++corner)
                indices.append(uint(6 * quarter + corner));
        }
    }
    ~PaintPlotter() override { withdraw(); }

    using IPlotter::m_attributes;
    using IPlotter::m_buffers;
    using IPlotter::m_dataMutex;
    using IPlotter::m_dirtyFlags;
    using IPlotter::m_initialized;

    const QVector<SAttributeDefinition> declareArributeArray() override
    {
        if (!declares)
            return {};
        SAttributeDefinition corner;
        corner.name = QStringLiteral("corner");
        corner.updateFlag = 0x1000;
        corner.usagePattern = QOpenGLBuffer::DynamicDraw;
        corner.bufferType = QOpenGLBuffer::VertexBuffer;
        corner.dataType = GL_FLOAT;
        corner.tupleSize = 2;
        corner.mutex = &m_dataMutex;
        SAttributeDefinition index;
        index.name = QStringLiteral("index");
        index.updateFlag = 0x4000;
        index.bufferType = QOpenGLBuffer::IndexBuffer;
        index.dataType = GL_UNSIGNED_INT;
        return {corner, index};
    }
    bool __update_vertex() override { return vertexChanges; }
    bool __update_index() override { return false; }
    const SAttributePointer _fetch_attribute_data(const int &attribute) const override
    {
        fetched.append(attribute);
        if (attribute == 0) {
            lockedWhileFetching = !const_cast<QMutex &>(m_dataMutex).tryLock();
            if (!lockedWhileFetching)
                const_cast<QMutex &>(m_dataMutex).unlock();
            return {corners.constData(), corners.size() * int(sizeof(float))};
        }
        return {indices.constData(), indices.size() * int(sizeof(uint))};
    }
    void _fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea) override
    {
        ++fetches;
        fetchedFor = viewArea;
        layers = next;
    }
    void _update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer) override
    {
        drawnOrders.append(layer.order);
        program.setUniformValue("paint", QColor(layer.order, 0, 0));
    }

    QVector<float> corners;
    QVector<uint> indices;
    QVector<SRenderLayerDefinition> next;
    bool declares = true;
    bool vertexChanges = true;
    mutable QVector<int> fetched;
    mutable bool lockedWhileFetching = false;
    QVector<int> drawnOrders;
    int fetches = 0;
    QRectF fetchedFor;
};

SRenderLayerDefinition layer(int order, int first, int count, uint mode = arrays | GL_TRIANGLES)
{
    SRenderLayerDefinition definition;
    definition.order = order;
    definition.first = first;
    definition.count = count;
    definition.mode = mode;
    definition.programName = QStringLiteral("paint");
    definition.attributes = {0};
    return definition;
}

} // namespace

/// The pipeline of the plotter base, called as a chart area does.
class tst_IPlotter_gl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void recordsStartWithTheirDefaults();
    void initialisationDeclaresBuildsAndUploadsEverything();
    void anUnchangedPlotterUploadsNothing();
    void changedDataUploadsOnlyItsAttribute();
    void anInvisiblePlotterUploadsOnceItIsShown();
    void aNullMutexLocksNothing();

    void layersAreDrawnInTheirOrder();
    void arraysAndElementsDrawTheirRange();
    void layersWithoutCountModeOrProgramAreSkipped_data();
    void layersWithoutCountModeOrProgramAreSkipped();
    void elementsWithoutAnIndexBufferAreSkipped();
    void aModeWithoutAFlagDrawsNothing();
    void attributesThatWereNotDeclaredAreLeftOut();
    void aPlotterWithoutAttributesStillRunsItsLayers();
    void attributeArraysAreDisabledAfterwards();
    void theLineWidthIsSetOnlyWhenAboveZero();
    void outsideTheViewNoLayersAreFetched();
    void theViewIsComparedWithPlotterAreaNotWithModArea();
    void theBaseKeepsTheLayersItHas();
    void anErrorIsReportedOnceUntilItChanges();

    void notBeforeTheFirstSynchronisationAndNotInAnotherContext();
    void anotherContextBuildsTheBuffersAgain();

private:
    std::unique_ptr<LogCatcher> m_log;
    std::unique_ptr<OffscreenGL> m_gl;
    std::unique_ptr<IChartArea> m_area;
    std::unique_ptr<PaintPlotter> m_plotter;
};

void tst_IPlotter_gl::initTestCase()
{
    ShaderProgramRegistry::instance().registerProgram(new PaintProgram);
}

void tst_IPlotter_gl::init()
{
    m_log = std::make_unique<LogCatcher>();
    m_gl = std::make_unique<OffscreenGL>();
    QVERIFY(m_gl->isValid());
    ShaderProgramRegistry::instance().compileAllPrograms();
    m_area = std::make_unique<IChartArea>();
    m_plotter = std::make_unique<PaintPlotter>();
    m_plotter->setPlotterArea(unit);
    m_plotter->setChartArea(m_area.get());
}

void tst_IPlotter_gl::cleanup()
{
    m_plotter.reset();
    m_area.reset();
    m_gl.reset();
    const QStringList messages = m_log->messages();
    m_log.reset();
    QCOMPARE(messages, QStringList());
}

void tst_IPlotter_gl::recordsStartWithTheirDefaults()
{
    const SRenderLayerDefinition layerRecord;
    QCOMPARE(layerRecord.order, 0);
    QCOMPARE(layerRecord.first, 0);
    QCOMPARE(layerRecord.count, 0);
    QCOMPARE(layerRecord.lineWidth, -1.0f);
    QCOMPARE(layerRecord.secondWidth, -1.0f);
    QVERIFY(layerRecord.programName.isEmpty());
    QCOMPARE(layerRecord.mode, 0u);
    QVERIFY(layerRecord.attributes.isEmpty());
    QCOMPARE(layerRecord.indexBuffer, -1);
    const SAttributeDefinition attribute;
    QCOMPARE(attribute.offset, 0);
    QCOMPARE(attribute.tupleSize, 1);
    QCOMPARE(attribute.stride, 0);
    QCOMPARE(attribute.mutex, nullptr);
    const SAttributePointer pointer;
    QCOMPARE(pointer.data, nullptr);
    QCOMPARE(pointer.size, 0);
}

// uploads

void tst_IPlotter_gl::initialisationDeclaresBuildsAndUploadsEverything()
{
    QVERIFY(!m_plotter->m_initialized);
    m_plotter->synchronize();
    QVERIFY(m_plotter->m_initialized);
    QCOMPARE(m_plotter->m_attributes.size(), 2);
    QCOMPARE(m_plotter->m_buffers.size(), 2);
    QCOMPARE(m_plotter->m_buffers.at(0).usagePattern(), QOpenGLBuffer::DynamicDraw);
    QCOMPARE(m_plotter->m_buffers.at(0).type(), QOpenGLBuffer::VertexBuffer);
    QCOMPARE(m_plotter->m_buffers.at(1).type(), QOpenGLBuffer::IndexBuffer);
    QCOMPARE(m_plotter->fetched, (QVector<int>{0, 1}));
    QVERIFY(m_plotter->lockedWhileFetching);
    QCOMPARE(m_plotter->m_dirtyFlags, 0u);
    QCOMPARE(m_gl->bufferSizes(), (QVector<int>{24 * 4, 48 * 4}));
}

void tst_IPlotter_gl::anUnchangedPlotterUploadsNothing()
{
    m_plotter->synchronize();
    m_plotter->fetched.clear();
    m_plotter->synchronize();
    QCOMPARE(m_plotter->fetched, QVector<int>());
}

void tst_IPlotter_gl::changedDataUploadsOnlyItsAttribute()
{
    m_plotter->synchronize();
    m_plotter->fetched.clear();
    m_plotter->setData({1.0});
    QCOMPARE(m_plotter->m_dirtyFlags, 0x1000u);
    m_plotter->corners.resize(24);
    m_plotter->synchronize();
    QCOMPARE(m_plotter->fetched, QVector<int>{0});
    QCOMPARE(m_gl->bufferSizes(), (QVector<int>{24 * 4, 24 * 4})); // allocated anew, in its new size
}

void tst_IPlotter_gl::anInvisiblePlotterUploadsOnceItIsShown()
{
    m_plotter->setVisible(false);
    m_plotter->synchronize();
    m_plotter->setData({1.0});
    m_plotter->synchronize();
    m_plotter->setData({2.0});
    m_plotter->synchronize();
    QCOMPARE(m_plotter->fetched, QVector<int>());
    m_plotter->setVisible(true);
    m_plotter->synchronize();
    m_plotter->synchronize();
    QCOMPARE(m_plotter->fetched, (QVector<int>{0, 1}));
}

void tst_IPlotter_gl::aNullMutexLocksNothing()
{
    m_plotter->synchronize();
    m_plotter->m_attributes[0].mutex = nullptr;
    m_plotter->setData({1.0});
    m_plotter->synchronize();
    QVERIFY(!m_plotter->lockedWhileFetching);
}

// layers

void tst_IPlotter_gl::layersAreDrawnInTheirOrder()
{
    m_plotter->next = {layer(200, 0, 24), layer(100, 0, 24), layer(150, 0, 6)};
    m_plotter->synchronize();
    const QImage picture = m_gl->picture([&] { m_plotter->drawFrame(unit); });
    QCOMPARE(m_plotter->drawnOrders, (QVector<int>{100, 150, 200}));
    QCOMPARE(picture.pixelColor(10, 50), QColor(200, 0, 0)); // the last one covers the others
}

void tst_IPlotter_gl::arraysAndElementsDrawTheirRange()
{
    SRenderLayerDefinition indexed = layer(2, 18 * int(sizeof(uint)), 6, elements | GL_TRIANGLES); // the last quarter
    indexed.indexBuffer = 1;
    m_plotter->next = {layer(1, 6, 6), indexed};
    m_plotter->synchronize();
    const QImage picture = m_gl->picture([&] { m_plotter->drawFrame(unit); });
    for (int x = 0; x < 100; ++x) {
        const int expected = x / 25 == 1 ? 1 : x / 25 == 3 ? 2 : 0;
        QCOMPARE(picture.pixelColor(x, 50), QColor(expected, 0, 0));
    }
}

void tst_IPlotter_gl::layersWithoutCountModeOrProgramAreSkipped_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<uint>("mode");
    QTest::addColumn<QString>("program");
    const uint triangles = arrays | GL_TRIANGLES;
    QTest::newRow("count 0") << 0 << triangles << "paint";
    QTest::newRow("count below 0") << -6 << triangles << "paint";
    QTest::newRow("mode 0") << 24 << 0u << "paint";
    QTest::newRow("unknown program") << 24 << triangles << "nowhere";
    QTest::newRow("no program") << 24 << triangles << QString();
}

void tst_IPlotter_gl::layersWithoutCountModeOrProgramAreSkipped()
{
    QFETCH(int, count);
    QFETCH(uint, mode);
    QFETCH(QString, program);
    SRenderLayerDefinition skipped = layer(200, 0, count, mode);
    skipped.programName = program;
    m_plotter->next = {layer(1, 0, 6), skipped, layer(220, 18, 6)};
    m_plotter->synchronize();
    QCOMPARE(m_gl->primitives([&] { m_plotter->drawFrame(unit); }), 4);
    QCOMPARE(m_plotter->drawnOrders, (QVector<int>{1, 220}));
}

void tst_IPlotter_gl::elementsWithoutAnIndexBufferAreSkipped()
{
    for (const int indexBuffer : {-1, 2, -5, 1000}) {
        SRenderLayerDefinition indexed = layer(1, 0, 6, elements | GL_TRIANGLES);
        indexed.indexBuffer = indexBuffer;
        m_plotter->next = {indexed, layer(2, 0, 6)};
        m_plotter->synchronize();
        QCOMPARE(m_gl->primitives([&] { m_plotter->drawFrame(unit); }), 2);
    }
}

void tst_IPlotter_gl::aModeWithoutAFlagDrawsNothing()
{
    m_plotter->next = {layer(1, 0, 6, GL_TRIANGLES)};
    m_plotter->synchronize();
    QCOMPARE(m_gl->primitives([&] { m_plotter->drawFrame(unit); }), 0);
}

void tst_IPlotter_gl::attributesThatWereNotDeclaredAreLeftOut()
{
    SRenderLayerDefinition strange = layer(1, 0, 6);
    strange.attributes = {7, 0, -1};
    m_plotter->next = {strange};
    m_plotter->synchronize();
    QCOMPARE(m_gl->primitives([&] { m_plotter->drawFrame(unit); }), 2);
}

void tst_IPlotter_gl::aPlotterWithoutAttributesStillRunsItsLayers()
{
    m_plotter->declares = false;
    m_plotter->next = {layer(1, 0, 6)};
    m_plotter->synchronize();
    QCOMPARE(m_gl->bufferSizes(), QVector<int>());
    m_plotter->drawFrame(unit);
    QCOMPARE(m_plotter->drawnOrders, QVector<int>{1});
    m_log->clear(); // what the driver thinks of it
}

void tst_IPlotter_gl::attributeArraysAreDisabledAfterwards()
{
    m_plotter->next = {layer(1, 0, 6)};
    m_plotter->synchronize();
    m_plotter->drawFrame(unit);
    for (GLuint location = 0; location < 8; ++location) {
        GLint enabled = -1;
        m_gl->gl().glGetVertexAttribiv(location, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
        QCOMPARE(enabled, 0);
    }
    GLint bound = -1;
    m_gl->gl().glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &bound);
    QCOMPARE(bound, 0);
    m_gl->gl().glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &bound);
    QCOMPARE(bound, 0);
}

void tst_IPlotter_gl::theLineWidthIsSetOnlyWhenAboveZero()
{
    const auto width = [&](float lineWidth) {
        SRenderLayerDefinition lines = layer(1, 0, 6, arrays | GL_LINES);
        lines.lineWidth = lineWidth;
        m_plotter->next = {lines};
        m_gl->gl().glLineWidth(2.0f);
        m_plotter->drawFrame(unit);
        GLfloat value = 0.0f;
        m_gl->gl().glGetFloatv(GL_LINE_WIDTH, &value);
        return value;
    };
    m_plotter->synchronize();
    QCOMPARE(width(-1.0f), 2.0f);
    QCOMPARE(width(0.0f), 2.0f);
    QCOMPARE(width(1.0f), 1.0f);
}

void tst_IPlotter_gl::outsideTheViewNoLayersAreFetched()
{
    m_plotter->next = {layer(1, 0, 6)};
    m_plotter->synchronize();
    m_plotter->drawFrame({1.0, 0.0, 1.0, 1.0}); // touching is not intersecting
    m_plotter->drawFrame({5.0, 0.0, 1.0, 1.0});
    m_plotter->drawFrame({});
    QCOMPARE(m_plotter->fetches, 0);
    m_plotter->drawFrame({0.5, 0.5, 9.0, 9.0});
    QCOMPARE(m_plotter->fetches, 1);
    QCOMPARE(m_plotter->fetchedFor, QRectF(0.5, 0.5, 9.0, 9.0));
    m_plotter->setVisible(false);
    m_plotter->synchronize();
    m_plotter->drawFrame(unit);
    QCOMPARE(m_plotter->fetches, 1);
}

void tst_IPlotter_gl::theViewIsComparedWithPlotterAreaNotWithModArea()
{
    m_plotter->setXOffset(100.0);
    m_plotter->synchronize();
    m_plotter->drawFrame(unit);
    QCOMPARE(m_plotter->fetches, 1);
    m_plotter->drawFrame(m_plotter->modArea());
    QCOMPARE(m_plotter->fetches, 1);
}

void tst_IPlotter_gl::theBaseKeepsTheLayersItHas()
{
    IPlotter plain;
    plain.setPlotterArea(unit);
    plain.synchronize();
    QCOMPARE(m_log->messages(), QStringList{R"(None Attribute define for  ""  shader program)"}); // once
    m_log->clear();
    plain.synchronize();
    plain.drawFrame(unit);
}

void tst_IPlotter_gl::anErrorIsReportedOnceUntilItChanges()
{
    m_plotter->next = {layer(1, 0, 6), layer(2, 0, 6)};
    m_plotter->synchronize();
    for (int i = 0; i < 2; ++i) {
        m_gl->gl().glEnable(0x1234);
        m_plotter->drawFrame(unit);
    }
    QCOMPARE(m_log->messages(), QStringList{"WE GOT AN OPENGL ERROR CODE:  1280"});
    m_log->clear();
}

// contexts

void tst_IPlotter_gl::notBeforeTheFirstSynchronisationAndNotInAnotherContext()
{
    m_plotter->next = {layer(1, 0, 6)};
    m_plotter->drawFrame(unit);
    QCOMPARE(m_plotter->fetches, 0);
    m_plotter->synchronize();
    OffscreenGL other;
    m_plotter->drawFrame(unit);
    QCOMPARE(m_plotter->fetches, 0);
    m_gl->makeCurrent();
    m_plotter->drawFrame(unit);
    QCOMPARE(m_plotter->fetches, 1);
}

void tst_IPlotter_gl::anotherContextBuildsTheBuffersAgain()
{
    m_plotter->next = {layer(200, 0, 24)};
    m_plotter->synchronize();
    const QImage first = m_gl->picture([&] { m_plotter->drawFrame(unit); });
    QCOMPARE(first.pixelColor(50, 50), QColor(200, 0, 0));
    m_plotter->fetched.clear();
    {
        OffscreenGL other;
        ShaderProgramRegistry::instance().compileAllPrograms();
        m_plotter->synchronize();
        QCOMPARE(m_plotter->fetched, (QVector<int>{0, 1}));
        QCOMPARE(m_plotter->m_attributes.size(), 2);
        QCOMPARE(other.picture([&] { m_plotter->drawFrame(unit); }), first);
    }
    m_gl->makeCurrent();
    m_plotter->synchronize();
    QCOMPARE(m_gl->picture([&] { m_plotter->drawFrame(unit); }), first);
}

QTEST_MAIN(tst_IPlotter_gl)
#include "tst_IPlotter_gl.moc"
