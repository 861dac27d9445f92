// SPDX-License-Identifier: MIT
#pragma once

// Fragment shader texts that several programs share.

/// One colour for all, the uniform "color".
constexpr char flatColorFragmentSource[] =
    "#ifdef GL_ES\n"
    "precision mediump float;\n"
    "#endif\n"
    "uniform vec4 color;\n"
    "void main()\n"
    "{\n"
    "    gl_FragColor = color;\n"
    "}";

/// The colour that the vertex stage hands over.
constexpr char vertexColorFragmentSource[] =
    "#ifdef GL_ES\n"
    "precision mediump float;\n"
    "#endif\n"
    "varying vec4 vColor;\n"
    "void main()\n"
    "{\n"
    "    gl_FragColor = vColor;\n"
    "}";
