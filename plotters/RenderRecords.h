// SPDX-License-Identifier: MIT
#pragma once

#include <QMutex>
#include <QOpenGLBuffer>
#include <QString>
#include <QVector>

#include <functional>

class QOpenGLFunctions;
class QOpenGLShaderProgram;

// What a plotter tells the render pipeline: its vertex attributes, their bytes, its draw calls.

/// Bits of a plotter's dirty flags: which buffers the next synchronisation uploads.
constexpr uint vertexDataDirty = 0x1000;
constexpr uint indexDataDirty = 0x4000;

/// Bits of SRenderLayerDefinition::mode beside the OpenGL primitive: how a layer is drawn.
constexpr uint drawWithArrays = 0x1000;
constexpr uint drawWithElements = 0x2000;

/// One vertex attribute and the buffer that holds it. Its position in the declaration is the attribute's number.
struct SAttributeDefinition
{
    QString name;        ///< in the shader
    uint updateFlag = 0; ///< the dirty bit that asks for an upload of this buffer
    QOpenGLBuffer::UsagePattern usagePattern = QOpenGLBuffer::StaticDraw;
    QOpenGLBuffer::Type bufferType = QOpenGLBuffer::VertexBuffer;
    GLenum dataType = 0;     ///< component type, or index type of an index buffer
    int offset = 0;          ///< bytes
    int tupleSize = 1;       ///< components per vertex
    int stride = 0;          ///< bytes
    QMutex *mutex = nullptr; ///< held while the bytes are fetched and uploaded; null: without a lock
};

/// The bytes of one attribute; valid until the plotter rebuilds them.
struct SAttributePointer
{
    const void *data = nullptr;
    int size = 0; ///< bytes
};

/// One draw call.
struct SRenderLayerDefinition
{
    int order = 0;           ///< layers are drawn in ascending order
    int first = 0;           ///< first vertex (arrays) or byte offset into the index buffer (elements)
    int count = 0;           ///< vertices or indices; below 1 the layer is skipped
    float lineWidth = -1.0f; ///< pixels; set only when above 0
    float secondWidth = -1.0f;
    QString programName;     ///< key into the shader-program registry; an unknown name skips the layer
    uint mode = 0;           ///< OpenGL primitive and one of the two draw bits above; 0 skips the layer
    QVector<int> attributes; ///< numbers of the attributes to bind
    int indexBuffer = -1;    ///< number of the attribute that holds the indices; -1 without one
    /// Draws in place of what mode, first and count say; program, uniforms and width are set, and no attribute is
    /// bound. Render thread.
    std::function<void(QOpenGLShaderProgram &, QOpenGLFunctions &)> draw;
};
