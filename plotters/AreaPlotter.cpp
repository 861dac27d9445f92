// SPDX-License-Identifier: MIT
#include "plotters/AreaPlotter.h"

#include "common/Change.h"

#include <QDebug>

namespace {

constexpr uint borderDataDirty = 0x100000; // beside the framework's bits

} // namespace

AreaPlotter::AreaPlotter(QObject *parent) : IPlotter1D(parent)
{
    m_color.setAlphaF(0.5);
    m_offsetSubtracts = false;
}

AreaPlotter::~AreaPlotter()
{
    withdraw();
}

void AreaPlotter::setBorderWidth(double borderWidth)
{
    if (change(m_borderWidth, borderWidth))
        emitAndRequestUpdate(static_cast<Signal>(&AreaPlotter::borderWidthChanged));
}

void AreaPlotter::setBorderColor(const QColor &borderColor)
{
    if (change(m_borderColor, borderColor))
        emitAndRequestUpdate(static_cast<Signal>(&AreaPlotter::borderColorChanged));
}

void AreaPlotter::setBorderEnable(bool borderEnable)
{
    if (change(m_borderEnable, borderEnable))
        emitAndRequestUpdate(static_cast<Signal>(&AreaPlotter::borderEnableChanged));
}

void AreaPlotter::setEnableGradient(bool enableGradient)
{
    if (change(m_enableGradient, enableGradient))
        emit enableGradientChanged(); // Deliberate: without a request for a frame.
}

void AreaPlotter::setGradientColor(const QColor &gradientColor)
{
    if (change(m_gradientColor, gradientColor))
        emit gradientColorChanged(); // Deliberate: without a request for a frame.
}

void AreaPlotter::setPlotterArea(const QRectF &area)
{
    QRectF adjusted = area;
    if (m_initialized)
        adjusted.setHeight(m_plotterArea.height());
    storePlotterArea(adjusted);
}

const QVector<SAttributeDefinition> AreaPlotter::declareArributeArray()
{
    // Deliberate: the same name twice. Each layer binds one of the two, and both programs call their input so.
    const QString name = QStringLiteral("vertex");
    return {
        {name, vertexDataDirty, QOpenGLBuffer::DynamicDraw, QOpenGLBuffer::VertexBuffer, GL_FLOAT, 0, 2, 0,
         &m_dataMutex},
        {name, borderDataDirty, QOpenGLBuffer::DynamicDraw, QOpenGLBuffer::VertexBuffer, GL_FLOAT, 0, 2, 0,
         &m_dataMutex},
    };
}

// arrays: GUI thread, or render thread while the GUI thread is blocked

bool AreaPlotter::__update_vertex()
{
    if (m_data.size() > maximumPoints)
        qWarning() << "AreaPlotter draws at most" << maximumPoints << "points, not" << m_data.size();
    const int count = m_data.size() <= maximumPoints ? m_data.size() : 0;
    if (m_fillVertices.size() != 4 * count) {
        m_fillVertices.clear();
        m_fillVertices.resize(4 * count);
    } // at equal length the half that is never drawn is zero already
    m_borderVertices.resize(count);

    const double *values = m_data.constData();
    QVector2D *fill = m_fillVertices.data();
    QVector2D *border = m_borderVertices.data();
    double maximum = 0.0;
    for (int i = 0; i < count; ++i) {
        const float x = float(i);
        const float value = float(values[i]);
        fill[2 * i] = QVector2D(x, 0.0f);
        fill[2 * i + 1] = QVector2D(x, value);
        border[i] = QVector2D(x, value);
        maximum = values[i] > maximum ? values[i] : maximum; // a NaN never is
    }
    m_plotterArea.setHeight(maximum); // Deliberate: without a signal.
    m_dirtyFlags |= borderDataDirty;
    return true;
}

const SAttributePointer AreaPlotter::_fetch_attribute_data(const int &attribute) const
{
    static_assert(sizeof(QVector2D) == 8, "two floats");
    switch (attribute) {
    case 0:
        return {m_fillVertices.constData(), m_fillVertices.size() * int(sizeof(QVector2D))};
    case 1:
        return {m_borderVertices.constData(), m_borderVertices.size() * int(sizeof(QVector2D))};
    default:
        return {};
    }
}
