// SPDX-License-Identifier: MIT
#include "views/reading/TextPump.h"

#include "common/HelperThreads.h"

TextPump::Stop TextPump::run(Wakeup &wakeup, int threads)
{
    m_stopped = false;
    {
        const HelperThreads helpers(threads - 1, [&] { work(wakeup); });
        work(wakeup);
    }
    return m_outOfMemory ? Stop::Memory : m_stop;
}

/// May be called by several threads at once. Returns when there is nothing left to do.
void TextPump::work(Wakeup &wakeup)
{
    STextPiece piece;
    TextRows rows;
    qint64 number = 0;
    while (take(wakeup, piece, number)) {
        convertText(piece.begin(), piece.end(), m_layout, rows);
        deliver(number, rows);
    }
}

/// Appends rows, or leaves them to the thread that is appending, and gives others to be filled. Whoever appends goes on
/// as long as the next ones are there.
void TextPump::deliver(qint64 number, TextRows &rows)
{
    constexpr size_t mostWaiting = 2; // pieces; more are no use and take memory
    std::unique_lock order(m_order);
    m_waiting.emplace(number, std::move(rows));
    rows = m_spare.empty() ? TextRows() : std::move(m_spare.back());
    if (!m_spare.empty())
        m_spare.pop_back();
    if (m_isAppending || number != m_delivered) {
        m_next.wait(order, [&] { return m_waiting.size() < mostWaiting; });
        return;
    }
    m_isAppending = true;
    for (auto next = m_waiting.begin(); next != m_waiting.end() && next->first == m_delivered;
         next = m_waiting.begin()) {
        TextRows appended = std::move(next->second);
        m_waiting.erase(next);
        order.unlock();
        if (!m_outOfMemory && !m_sink.take(appended))
            m_outOfMemory = true;
        m_appended();
        order.lock();
        ++m_delivered;
        m_spare.push_back(std::move(appended));
        m_next.notify_all();
    }
    m_isAppending = false;
}

/// Reads the next piece. False if there is none.
bool TextPump::take(Wakeup &wakeup, STextPiece &piece, qint64 &number)
{
    const std::lock_guard turn(m_turn);
    if (m_stopped || m_outOfMemory)
        return false;
    if (!wakeup.mayRead()) {
        stop(Stop::Told);
        return false;
    }
    switch (m_feeder.next(piece)) {
    case InputFile::Got::Bytes:
        number = m_taken++;
        return true;
    case InputFile::Got::Nothing:
        stop(Stop::Nothing);
        return false;
    case InputFile::Got::End:
        stop(Stop::End);
        return false;
    case InputFile::Got::Error:
        stop(Stop::Error);
        return false;
    }
    return false;
}

void TextPump::stop(Stop why)
{
    m_stop = why;
    m_stopped = true;
}
