// SPDX-License-Identifier: MIT
// Runs tests written in QML in an application without widgets.
#include "tests/qml/TestTools.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

#include <memory>

class Setup : public QObject
{
    Q_OBJECT

public slots:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        m_tools = std::make_unique<TestTools>();
        engine->rootContext()->setContextProperty(QStringLiteral("tools"), m_tools.get());
    }

    void cleanupTestCase() { m_tools.reset(); }

private:
    std::unique_ptr<TestTools> m_tools;
};

QUICK_TEST_MAIN_WITH_SETUP(qml, Setup)

#include "tst_qml.moc"
