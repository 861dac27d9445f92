// SPDX-License-Identifier: MIT
#pragma once

#include "views/reading/TextFeeder.h"
#include "views/reading/TextLayout.h"
#include "views/reading/TextRows.h"
#include "views/reading/TextSink.h"

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

/// Reads, converts and appends a text as long as there is some. Helping threads convert; pieces are appended in the
/// order of the text.
class TextPump
{
public:
    /// `appended` is called after every piece, by any thread, but by one at a time.
    TextPump(TextFeeder &feeder, const STextLayout &layout, TextSink &sink, std::function<void()> appended)
        : m_feeder(feeder),
          m_layout(layout),
          m_sink(sink),
          m_appended(std::move(appended))
    {
    }

    enum class Stop {
        Nothing, ///< there is nothing more now
        End,
        Error,
        Memory,
        Told ///< somebody wants it to stop, or to hold
    };
    /// Works until it must stop, with `threads` of them, the calling one included.
    Stop run(Wakeup &wakeup, int threads);

private:
    void work(Wakeup &wakeup);
    void deliver(qint64 number, TextRows &rows);
    bool take(Wakeup &wakeup, STextPiece &piece, qint64 &number);
    void stop(Stop why);

    TextFeeder &m_feeder;
    const STextLayout &m_layout;
    TextSink &m_sink;
    const std::function<void()> m_appended;

    std::mutex m_turn; ///< of the thread that reads
    Stop m_stop = Stop::Nothing;
    bool m_stopped = false;
    qint64 m_taken = 0; ///< pieces

    std::mutex m_order; ///< of what follows; the sink is the appending thread's own meanwhile
    std::condition_variable m_next;
    std::map<qint64, TextRows> m_waiting; ///< by the number of their piece
    std::vector<TextRows> m_spare;        ///< whose memory is used again
    bool m_isAppending = false;
    qint64 m_delivered = 0; ///< pieces
    std::atomic<bool> m_outOfMemory{false};
};
