// SPDX-License-Identifier: MIT
#include "common/Parts.h"

#include <utility>

Parts::Parts(int count, std::function<void(int)> doPart) : m_count(count), m_doPart(std::move(doPart)) {}

Parts::~Parts()
{
    m_next = m_count;
}

void Parts::begin(int threads)
{
    if (!m_helpers)
        m_helpers.emplace(threads, [this] { work(); });
}

void Parts::finish()
{
    work();
    m_helpers.reset();
}

void Parts::work()
{
    for (int part = m_next++; part < m_count; part = m_next++)
        m_doPart(part);
}

void doParts(int count, std::function<void(int)> doPart)
{
    Parts parts(count, std::move(doPart));
    parts.begin(Helpers::threadsFor(count) - 1);
    parts.finish();
}
