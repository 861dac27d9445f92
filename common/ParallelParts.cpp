// SPDX-License-Identifier: MIT
#include "common/ParallelParts.h"

#include <utility>

ParallelParts::ParallelParts(int count, std::function<void(int)> doPart) : m_count(count), m_doPart(std::move(doPart))
{
}

ParallelParts::~ParallelParts()
{
    m_next = m_count;
}

void ParallelParts::begin(int threads)
{
    if (!m_helpers)
        m_helpers.emplace(threads, [this] { work(); });
}

void ParallelParts::finish()
{
    work();
    m_helpers.reset();
}

void ParallelParts::work()
{
    for (int part = m_next++; part < m_count; part = m_next++)
        m_doPart(part);
}

void doParts(int count, std::function<void(int)> doPart)
{
    ParallelParts parts(count, std::move(doPart));
    parts.begin(HelperThreads::threadsFor(count) - 1);
    parts.finish();
}
