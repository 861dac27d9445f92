// SPDX-License-Identifier: MIT
#pragma once

class QColor;
class QOpenGLFunctions;

/// Draws an opaque colour without blending for as long as it lives, which renderers in software profit from. Only where
/// no pixel differs: with the blend state of a chart, and with the constant alpha at 0, under which drawing leaves the
/// alpha channel as it is. Elsewhere it does nothing. Render thread, current context.
class OpaqueDrawing
{
public:
    OpaqueDrawing(QOpenGLFunctions &gl, const QColor &color);
    ~OpaqueDrawing();
    OpaqueDrawing(const OpaqueDrawing &) = delete;
    OpaqueDrawing &operator=(const OpaqueDrawing &) = delete;

private:
    QOpenGLFunctions &m_gl;
    unsigned char m_writtenChannels[4] = {}; ///< before, where m_withoutBlending
    bool m_withoutBlending;
};
