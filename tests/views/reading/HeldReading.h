// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/ReadingJob.h"
#include "views/store/SeriesData.h"

#include <atomic>
#include <thread>

/// A reading that holds at each thing it tells, the first time when the series are there and most of the file isn't
/// read yet. It does so in its own thread, so however slow or fast the machine is.
class HeldReading
{
public:
    HeldReading(const QString &path, FileFormat format)
    {
        SReadingRequest request;
        request.path = path;
        request.format = format;
        request.isHeld = true; // until m_job is set
        m_job = ReadingJob::start(request, [this] {
            if (!m_goesOn)
                m_job->wakeup().hold(true);
        });
        m_goesOn = false; // whoever sees that sees m_job
        do
            step();
        while (state().series.isEmpty());
    }
    ~HeldReading() { m_job->forget(); }

    /// Waits until it has told something else.
    void step() const
    {
        m_job->wakeup().hold(false);
        while (!m_job->wakeup().isHeld())
            std::this_thread::yield();
    }
    void goOn()
    {
        m_goesOn = true;
        m_job->wakeup().hold(false);
    }
    SReadingState state() const { return m_job->state(); }

private:
    std::shared_ptr<ReadingJob> m_job;
    std::atomic<bool> m_goesOn{true};
};
