// SPDX-License-Identifier: MIT
#pragma once

#include "views/store/SeriesStore.h"

/// A store that a calculation fills. When memory runs out it keeps what it has and says so, once until there's some
/// again. For the thread of its object.
class CalculatedStore
{
public:
    /// `who` fills it, as people are told it.
    explicit CalculatedStore(const char *who);

    SeriesStore &store() { return m_store; }
    qint64 end() const { return m_store.data()->end(); }

    /// Lets go of everything. The next value is that of `index`, rounded down to the beginning of a chunk.
    void begin(qint64 index = 0);
    /// False, after a part of them, if memory ran out. The rest may be tried again later.
    bool append(const double *values, qint64 count);
    void dropBefore(qint64 index) { m_store.data()->dropBefore(index); }

private:
    SeriesStore m_store;
    bool m_isShort = false; ///< of memory
};
