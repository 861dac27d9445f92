// SPDX-License-Identifier: MIT
#pragma once

class QOpenGLFunctions;

/// What becomes of a pixel when something is drawn on it. Constants are those of OpenGL.
struct SBlendState
{
    bool enabled = false;
    int sourceColor = 0;
    int pixelColor = 0;
    int colorEquation = 0;
    int sourceAlpha = 0;
    int pixelAlpha = 0;
    int alphaEquation = 0;
    float constantAlpha = 0.0f;

    /// Of the current context. Render thread.
    static SBlendState current(QOpenGLFunctions &gl);

    /// Whether a fragment of full opacity replaces the colour of the pixel.
    bool replacesColor() const;
    /// Whether the opacity of the pixel stays, whatever is drawn.
    bool keepsAlpha() const;
};
