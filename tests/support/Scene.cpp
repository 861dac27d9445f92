// SPDX-License-Identifier: MIT
#include "tests/support/Scene.h"

#include "plugin/VorlixExtensionPlugin.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQmlComponent>
#include <QtTest>

void registerModule()
{
    static const bool registered = [] {
        VorlixExtensionPlugin().registerTypes("VorlixPlugin");
        return true;
    }();
    Q_UNUSED(registered)
}

bool isThreadedLoop()
{
    return qgetenv("QSG_RENDER_LOOP") != "basic";
}

Scene::Scene(const QSize &size, const QColor &ground) : m_window(std::make_unique<QQuickWindow>())
{
    registerModule();
    m_window->resize(size);
    m_window->setColor(ground);
    // In this order: the chart items' own connections to beforeRendering come later.
    QObject::connect(
        m_window.get(), &QQuickWindow::beforeRendering, m_window.get(), [this] { prepareFrame(); },
        Qt::DirectConnection);
    m_frames.follow(*m_window, *m_window);
}

Scene::~Scene()
{
    close();
}

void Scene::prepareFrame()
{
    if (QOpenGLContext *context = QOpenGLContext::currentContext()) // the software renderer has none
        context->functions()->glBlendColor(0.0f, 0.0f, 0.0f, m_blendAlpha);
}

QQuickItem *Scene::load(const QByteArray &source)
{
    QQmlComponent component(&m_engine);
    component.setData("import QtQuick 2.15\nimport VorlixPlugin 1.0\n" + source, QUrl());
    std::unique_ptr<QObject> object(component.create());
    auto *item = qobject_cast<QQuickItem *>(object.get());
    if (!item) {
        qWarning() << "the scene does not load:" << component.errors();
        return nullptr;
    }
    object.release();
    item->setParentItem(root());
    item->setParent(root());
    return item;
}

bool Scene::show()
{
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get(), patience))
        return false;
    return frames(2);
}

void Scene::settle()
{
    m_frames.settle(*m_window);
}

bool Scene::frames(int count)
{
    for (int i = 0; i < count; ++i) {
        const int before = frameCount();
        m_window->update();
        if (!QTest::qWaitFor([&] { return frameCount() > before; }, patience))
            return false;
    }
    return true;
}

QImage Scene::grab()
{
    settle();
    return m_window->grabWindow();
}

void Scene::close()
{
    m_window.reset();
}
