// SPDX-License-Identifier: MIT
#pragma once

#include "plotters/IPlotter1D.h"

#include <QRectF>

#include <atomic>
#include <functional>
#include <mutex>

/// A plotter that draws nothing and counts what it is asked for. The hooks run on the thread that calls them; set them
/// before the plotter is in a scene.
class ProbePlotter : public IPlotter1D
{
public:
    explicit ProbePlotter(QObject *parent = nullptr) : IPlotter1D(parent) {}
    ~ProbePlotter() override;

    void sync_buffers() override;
    void draw(const QRectF &viewArea) override;
    double max_in(const QRectF &area) const override;

    int syncs() const { return m_syncs; }
    int draws() const { return m_draws; }
    /// The rectangle of the last draw.
    QRectF drawnView() const;
    /// How often max_in() was asked, and about what last.
    int queries() const { return m_queries; }
    QRectF queriedArea() const { return m_queriedArea; }

    std::function<void()> onSync;
    std::function<void()> onDraw;
    std::function<double(const QRectF &)> maximum; ///< the answer of max_in(); without it the base's

private:
    std::atomic<int> m_syncs{0};
    std::atomic<int> m_draws{0};
    mutable std::atomic<int> m_queries{0};
    mutable QRectF m_queriedArea;
    mutable std::mutex m_mutex;
    QRectF m_drawnView;
};
