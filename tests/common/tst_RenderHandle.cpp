// SPDX-License-Identifier: MIT
#include "common/RenderHandle.h"

#include <QSemaphore>
#include <QtTest>

#include <atomic>
#include <thread>

class tst_RenderHandle : public QObject
{
    Q_OBJECT

private slots:
    void useReachesTheObject();
    void nothingReachesARevokedObject();
    void revokeWaitsForAUseInProgress();
};

void tst_RenderHandle::useReachesTheObject()
{
    int object = 1;
    RenderHandle<int> handle(&object);
    handle.use([](int &number) { number = 2; });
    QCOMPARE(object, 2);
}

void tst_RenderHandle::nothingReachesARevokedObject()
{
    int object = 1;
    RenderHandle<int> handle(&object);
    handle.revoke();
    handle.revoke();
    handle.use([](int &number) { number = 2; });
    QCOMPARE(object, 1);
}

void tst_RenderHandle::revokeWaitsForAUseInProgress()
{
    int object = 1;
    RenderHandle<int> handle(&object);
    QSemaphore inUse;
    std::atomic<bool> left{false};
    std::thread user([&] {
        handle.use([&](int &) {
            inUse.release();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            left = true;
        });
    });
    inUse.acquire();
    handle.revoke();
    QVERIFY(left);
    user.join();
}

QTEST_APPLESS_MAIN(tst_RenderHandle)
#include "tst_RenderHandle.moc"
