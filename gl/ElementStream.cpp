// SPDX-License-Identifier: MIT
#include "gl/ElementStream.h"

#include "common/Storage.h"
#include "gl/Upload.h"

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <algorithm>

void ElementStream::restart()
{
    m_cornerBuffer = QOpenGLBuffer(QOpenGLBuffer::VertexBuffer);
    m_indexBuffer = QOpenGLBuffer(QOpenGLBuffer::IndexBuffer);
    m_drawn = {};
    m_portions = 0;
}

void ElementStream::draw(const SDrawnElements &elements, const Write &write, QOpenGLShaderProgram &program,
                         QOpenGLFunctions &gl)
{
    const auto all = [&elements](const Take &take) {
        std::for_each(elements.ranges.cbegin(), elements.ranges.cend(), take);
    };
    draw(elements, all, write, program, gl);
}

void ElementStream::draw(const SDrawnElements &elements, const Choose &choose, const Write &write,
                         QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    createBuffers();
    if (m_portions == 1 && m_drawn == elements) {
        drawBuffers(program, gl);
        return;
    }
    m_drawn = elements;
    m_portions = 0;
    m_written = 0;
    choose([&](const SIndexRange &range) { add(range, write, program, gl); });
    if (m_written > 0)
        drawPortion(program, gl);
}

void ElementStream::createBuffers()
{
    if (m_cornerBuffer.isCreated())
        return;
    m_portions = 0;
    m_cornerBuffer.create();
    m_cornerBuffer.setUsagePattern(QOpenGLBuffer::StreamDraw);
    if (m_layout.indices.isEmpty())
        return;
    m_indexBuffer.create();
    m_indexBuffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
    QVector<uint> indices;
    indices.reserve(int(m_layout.indices.size()) * portion);
    for (int element = 0; element < portion; ++element) {
        for (const uint corner : qAsConst(m_layout.indices))
            indices.append(uint(element * m_layout.corners) + corner);
    }
    upload(m_indexBuffer, indices);
}

void ElementStream::add(SIndexRange elements, const Write &write, QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    while (elements.first < elements.end) {
        const int count = std::min(elements.end - elements.first, portion - m_written);
        const int written = m_written * floatsPerElement();
        write({elements.first, elements.first + count}, portionAt(m_corners, written, count * floatsPerElement()));
        m_written += count;
        elements.first += count;
        if (m_written == portion)
            drawPortion(program, gl);
    }
}

void ElementStream::drawPortion(QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    upload(m_cornerBuffer, m_corners.constData(), m_written * floatsPerElement() * int(sizeof(float)));
    m_uploaded = m_written;
    m_written = 0;
    ++m_portions;
    drawBuffers(program, gl);
}

void ElementStream::drawBuffers(QOpenGLShaderProgram &program, QOpenGLFunctions &gl)
{
    m_cornerBuffer.bind();
    for (const SElementLayout::SInput &input : qAsConst(m_layout.inputs)) {
        program.enableAttributeArray(input.name);
        program.setAttributeBuffer(input.name, GL_FLOAT, input.offset * int(sizeof(float)), input.floats,
                                   m_layout.floats * int(sizeof(float)));
    }
    m_cornerBuffer.release();
    if (m_layout.indices.isEmpty()) {
        gl.glDrawArrays(m_layout.primitive, 0, m_uploaded * m_layout.corners);
    } else {
        m_indexBuffer.bind();
        gl.glDrawElements(m_layout.primitive, m_uploaded * int(m_layout.indices.size()), GL_UNSIGNED_INT, nullptr);
        m_indexBuffer.release();
    }
    for (const SElementLayout::SInput &input : qAsConst(m_layout.inputs))
        program.disableAttributeArray(input.name);
}
