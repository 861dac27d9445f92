// SPDX-License-Identifier: MIT
#include "gl/BarWindow.h"

#include "common/Storage.h"
#include "geometry/Vertices.h"

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <algorithm>

namespace {

constexpr int cornersPerBar = 4;
constexpr int indicesPerBar = 6;

void bindAttribute(QOpenGLShaderProgram &program, const char *name, QOpenGLBuffer &buffer)
{
    buffer.bind();
    program.enableAttributeArray(name);
    program.setAttributeBuffer(name, GL_FLOAT, 0, 1, 0);
    buffer.release();
}

void fill(QOpenGLBuffer &buffer, const QVector<float> &numbers)
{
    buffer.bind();
    buffer.allocate(numbers.constData(), numbers.size() * int(sizeof(float)));
    buffer.release();
}

} // namespace

void BarWindow::draw(const QVector<double> &series, const QVector<SIndexRange> &ranges, QOpenGLShaderProgram &program,
                     QOpenGLFunctions &gl)
{
    if (isUploaded(series, ranges)) {
        drawUploaded(program, gl);
        return;
    }
    createBuffers();
    restart(m_heights, cornersPerBar * portion);
    restart(m_numbers, cornersPerBar * portion);
    int drawn = 0;
    for (SIndexRange bars : ranges) {
        while (bars.first < bars.end) {
            const int room = portion - m_heights.size() / cornersPerBar;
            const int end = std::min(bars.end, bars.first + room);
            write(series.constData(), {bars.first, end});
            bars.first = end;
            if (m_heights.size() < cornersPerBar * portion)
                continue;
            upload();
            drawUploaded(program, gl);
            m_heights.resize(0);
            m_numbers.resize(0);
            ++drawn;
        }
    }
    if (!m_heights.isEmpty()) {
        upload();
        drawUploaded(program, gl);
    }
    m_series = series;
    m_ranges = drawn == 0 ? ranges : QVector<SIndexRange>();
}

bool BarWindow::isUploaded(const QVector<double> &series, const QVector<SIndexRange> &ranges) const
{
    return !m_ranges.isEmpty() && m_heightBuffer.isCreated() && m_series.constData() == series.constData()
        && m_series.size() == series.size() && m_ranges == ranges;
}

void BarWindow::createBuffers()
{
    if (m_heightBuffer.isCreated())
        return;
    for (QOpenGLBuffer *buffer : {&m_heightBuffer, &m_numberBuffer, &m_indexBuffer})
        buffer->create();
    m_heightBuffer.setUsagePattern(QOpenGLBuffer::StreamDraw);
    m_numberBuffer.setUsagePattern(QOpenGLBuffer::StreamDraw);
    m_indexBuffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
    QVector<uint> indices;
    indices.reserve(indicesPerBar * portion);
    appendBarIndices(indices, 0, portion);
    m_indexBuffer.bind();
    m_indexBuffer.allocate(indices.constData(), indices.size() * int(sizeof(uint)));
    m_indexBuffer.release();
}

void BarWindow::write(const double *values, SIndexRange bars)
{
    const int count = bars.end - bars.first;
    writeBarHeights(values + bars.first, count, portionAt(m_heights, m_heights.size(), cornersPerBar * count));
    appendBarNumbers(m_numbers, bars.first, bars.end);
}

void BarWindow::upload()
{
    fill(m_heightBuffer, m_heights);
    fill(m_numberBuffer, m_numbers);
}

void BarWindow::drawUploaded(QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    bindAttribute(program, "point", m_heightBuffer);
    bindAttribute(program, "vertexID", m_numberBuffer);
    m_indexBuffer.bind();
    gl.glDrawElements(GL_TRIANGLES, m_heights.size() / cornersPerBar * indicesPerBar, GL_UNSIGNED_INT, nullptr);
    m_indexBuffer.release();
    program.disableAttributeArray("point");
    program.disableAttributeArray("vertexID");
}
