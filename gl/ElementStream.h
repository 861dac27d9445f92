// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"

#include <QOpenGLBuffer>
#include <QVector>

#include <functional>

class QOpenGLFunctions;
class QOpenGLShaderProgram;

/// How the corners of one element (a bar, a span of an area, a segment of a line) lie in a buffer, all of them floats,
/// and how they are drawn.
struct SElementLayout
{
    struct SInput
    {
        const char *name; ///< in the shader
        int offset;       ///< of its first float within a corner
        int floats;
    };

    int corners = 0;       ///< of an element
    int floats = 0;        ///< of a corner
    uint primitive = 0;    ///< OpenGL's number
    QVector<uint> indices; ///< of the corners of an element as they are drawn; none when they are drawn in order
    QVector<SInput> inputs;
};

/// What decides what corners are drawn.
struct SDrawnElements
{
    QVector<double> series;      ///< shared, never copied
    QVector<SIndexRange> ranges; ///< which elements
    QVector<double> place;       ///< whatever else the corners depend on

    friend bool operator==(const SDrawnElements &a, const SDrawnElements &b)
    {
        return a.series.constData() == b.series.constData() && a.series.size() == b.series.size()
            && a.ranges == b.ranges && a.place == b.place;
    }
};

/// The way of a long series to the screen: writes, uploads and draws the corners of those elements that are to be
/// drawn, as many at a time as fit into buffers that are kept. What was drawn last is not written again. The arrays of
/// a short series, which hold everything, are not its business. Render thread, one context.
class ElementStream
{
public:
    /// Elements per draw call: their corners stay in the second-level cache on their way to the driver.
    static constexpr int portion = 16384;

    /// Writes the corners of a range of elements.
    using Write = std::function<void(const SIndexRange &elements, float *corners)>;
    using Take = std::function<void(const SIndexRange &elements)>;
    /// Hands the elements to be drawn to `take`, range by range.
    using Choose = std::function<void(const Take &take)>;

    explicit ElementStream(const SElementLayout &layout) : m_layout(layout) {}

    /// Forgets the buffers of the last context.
    void restart();
    /// Draws elements.ranges with the bound program, whose uniforms are set.
    void draw(const SDrawnElements &elements, const Write &write, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    /// The same, but what is drawn is chosen only when it is not the same as last time.
    void draw(const SDrawnElements &elements, const Choose &choose, const Write &write, QOpenGLShaderProgram &program,
              QOpenGLFunctions &gl);

private:
    void createBuffers();
    void add(SIndexRange elements, const Write &write, QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void drawPortion(QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    void drawBuffers(QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    int floatsPerElement() const { return m_layout.corners * m_layout.floats; }

    SElementLayout m_layout;
    QVector<float> m_corners; ///< of the portion being written
    int m_written = 0;        ///< elements of it
    int m_uploaded = 0;       ///< elements in the buffer
    int m_portions = 0;       ///< of the last draw
    SDrawnElements m_drawn;   ///< by the last draw
    QOpenGLBuffer m_cornerBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_indexBuffer{QOpenGLBuffer::IndexBuffer};
};
