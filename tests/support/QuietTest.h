// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/LogCatcher.h"

#include <QObject>

#include <memory>

/// A test whose functions leave an empty log. One that expects a message looks at it in m_log and clears it.
class QuietTest : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<LogCatcher> m_log; ///< of the present function

private slots:
    void init();
    void cleanup();
};
