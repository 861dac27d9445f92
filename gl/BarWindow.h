// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/SIndexRange.h"

#include <QOpenGLBuffer>
#include <QVector>

class QOpenGLFunctions;
class QOpenGLShaderProgram;

/// Draws bars of a long series without holding the corners of all of them: writes, uploads and draws those of as many
/// bars at a time as fit into its buffers. What was drawn last is not uploaded again. Render thread, one context.
class BarWindow
{
public:
    /// Bars per draw call: their corners stay in the second-level cache on their way to the driver.
    static constexpr int portion = 16384;

    /// Draws the bars in `ranges` with the bound program, whose uniforms are set.
    void draw(const QVector<double> &series, const QVector<SIndexRange> &ranges, QOpenGLShaderProgram &program,
              QOpenGLFunctions &gl);

private:
    void createBuffers();
    void write(const double *values, SIndexRange bars);
    void upload();
    void drawUploaded(QOpenGLShaderProgram &program, QOpenGLFunctions &gl);
    bool isUploaded(const QVector<double> &series, const QVector<SIndexRange> &ranges) const;

    QVector<float> m_heights; ///< four per bar
    QVector<float> m_numbers; ///< four per bar
    QOpenGLBuffer m_heightBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_numberBuffer{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_indexBuffer{QOpenGLBuffer::IndexBuffer};
    QVector<double> m_series;      ///< what the buffers were filled from,
    QVector<SIndexRange> m_ranges; ///< none when they hold the last portion only
};
