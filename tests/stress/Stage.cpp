// SPDX-License-Identifier: MIT
#include "stress/Stage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QMetaMethod>
#include <QQmlContext>
#include <QTimer>

#include <atomic>

namespace {

constexpr int patience = 60'000; // milliseconds; a busy machine takes long for a frame
constexpr char imports[] = "import QtQuick 2.15\nimport VorlixPlugin 1.0\n";

std::unique_ptr<QQmlEngine> newEngine()
{
    auto engine = std::make_unique<QQmlEngine>();
    engine->addImportPath(QStringLiteral(VORLIX_IMPORT_PATH));
    return engine;
}

/// Counts the frames of a window. Connected before the first one, while there is no other thread.
class FrameCounter : public QObject
{
    Q_OBJECT

public:
    explicit FrameCounter(QQuickWindow &window) : QObject(&window)
    {
        connect(
            &window, &QQuickWindow::frameSwapped, this, [this] { ++count; }, Qt::DirectConnection);
    }
    std::atomic<int> count{0};
};

} // namespace

Stage::Stage(quint32 seed, Messages &log) : chance(seed), messages(log), m_engine(newEngine()) {}

Stage::~Stage() = default;

void Stage::judge(const QString &where, const QStringList &faults)
{
    constexpr int kept = 20;
    for (const QString &fault : faults) {
        if (m_faults.size() < kept)
            m_faults.append(where + QStringLiteral(": ") + fault);
    }
}

void Stage::replaceEngine()
{
    m_components.clear();
    m_engine = newEngine();
}

QQmlComponent &Stage::component(const QString &text)
{
    QQmlComponent *&known = m_components[text];
    if (!known) {
        known = new QQmlComponent(m_engine.get(), m_engine.get());
        known->setData(imports + text.toUtf8(), QUrl(QStringLiteral("qrc:/stress/text.qml")));
    }
    if (known->isError())
        qFatal("%s\n%s", qPrintable(text), qPrintable(known->errorString()));
    return *known;
}

QObject *Stage::make(const QString &text)
{
    QObject *object = component(text).create();
    if (!object)
        qFatal("no object: %s", qPrintable(text));
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    return object;
}

QQuickItem *Stage::makeIn(QQuickWindow &window, const QString &text)
{
    auto *item = qobject_cast<QQuickItem *>(make(text));
    item->setParentItem(window.contentItem());
    item->setParent(window.contentItem());
    return item;
}

QObject *Stage::scene(const QString &name, const QVariantMap &properties)
{
    const QUrl url(QStringLiteral("qrc:/stress/scenes/%1.qml").arg(name));
    QQmlComponent *&known = m_components[name];
    if (!known)
        known = new QQmlComponent(m_engine.get(), url, m_engine.get());
    QObject *object = known->createWithInitialProperties(properties);
    if (!object)
        qFatal("no scene %s:\n%s", qPrintable(name), qPrintable(known->errorString()));
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    return object;
}

std::unique_ptr<QQuickWindow> Stage::open(const QSize &size)
{
    auto window = std::make_unique<QQuickWindow>();
    new FrameCounter(*window);
    window->setColor(Qt::black);
    window->resize(size);
    window->show();
    QElapsedTimer waited;
    waited.start();
    while (!window->isExposed() && waited.elapsed() < patience)
        spin(1);
    if (!window->isExposed())
        qWarning("a window did not appear");
    return window;
}

void Stage::spin(int milliseconds)
{
    QElapsedTimer spun;
    spun.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const qint64 left = milliseconds - spun.elapsed();
        if (left > 0)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
    } while (spun.elapsed() < milliseconds);
}

void Stage::wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void Stage::frames(QQuickWindow &window, int count)
{
    const auto *counter = window.findChild<FrameCounter *>();
    const int wanted = counter->count + count;
    QElapsedTimer waited;
    waited.start();
    const int longest = window.isVisible() ? patience : 2000; // one that was closed draws none
    while (counter->count < wanted && waited.elapsed() < longest) {
        window.update();
        spin(1);
    }
}

void Stage::settle()
{
    for (int i = 0; i < 3; ++i) {
        spin(5);
        m_engine->collectGarbage();
    }
    m_engine->trimComponentCache();
}

QList<QByteArray> Trigger::signalsOf(const QObject &object)
{
    QList<QByteArray> names;
    const QMetaObject &meta = *object.metaObject();
    const int first = object.inherits("QQuickItem") ? QQuickItem::staticMetaObject.methodCount()
                                                    : QObject::staticMetaObject.methodCount();
    for (int i = first; i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            names.append(meta.method(i).methodSignature());
    }
    return names;
}

bool Trigger::on(QObject &sender, const QByteArray &signal)
{
    const int emitted = sender.metaObject()->indexOfSignal(signal);
    const int slot = staticMetaObject.indexOfSlot("fire()");
    return emitted >= 0 && QMetaObject::connect(&sender, emitted, this, slot);
}

#include "Stage.moc"
