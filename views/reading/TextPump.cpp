// SPDX-License-Identifier: MIT
#include "views/reading/TextPump.h"

#include "common/HelperThreads.h"
#include "views/reading/TextRows.h"

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
        std::unique_lock order(m_order);
        m_next.wait(order, [&] { return m_delivered == number; });
        if (!m_outOfMemory && !m_sink.take(rows))
            m_outOfMemory = true;
        m_appended();
        ++m_delivered;
        m_next.notify_all();
    }
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
