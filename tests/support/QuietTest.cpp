// SPDX-License-Identifier: MIT
#include "tests/support/QuietTest.h"

#include <QtTest>

void QuietTest::init()
{
    m_log = std::make_unique<LogCatcher>();
}

void QuietTest::cleanup()
{
    const QStringList messages = m_log->messages();
    m_log.reset();
    QCOMPARE(messages, QStringList());
}
