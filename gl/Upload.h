// SPDX-License-Identifier: MIT
#pragma once

#include <QOpenGLBuffer>
#include <QVector>

// The one way up to the GPU. Render thread, current context.

/// Replaces what `buffer` holds. A full re-allocation: what the GPU still draws from the old storage needs no waiting
/// for.
inline void upload(QOpenGLBuffer &buffer, const void *data, int bytes)
{
    buffer.bind();
    buffer.allocate(data, bytes);
    buffer.release();
}

template <class T>
void upload(QOpenGLBuffer &buffer, const QVector<T> &elements)
{
    upload(buffer, elements.constData(), int(elements.size()) * int(sizeof(T)));
}
