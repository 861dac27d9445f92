// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/RenderRecords.h"

#include <QVector>

#include <mutex>

/// A plotter that writes down the layers it was drawn with last.
template <class Plotter>
class LayerRecorder : public Plotter
{
public:
    ~LayerRecorder() override { this->withdraw(); }

    void _fetch_render_layers(QVector<SRenderLayerDefinition> &layers, const QRectF &viewArea) override
    {
        Plotter::_fetch_render_layers(layers, viewArea);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_recorded = layers;
    }

    /// Any thread.
    QVector<SRenderLayerDefinition> layers() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_recorded;
    }

private:
    mutable std::mutex m_mutex;
    QVector<SRenderLayerDefinition> m_recorded;
};
