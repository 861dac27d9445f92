// SPDX-License-Identifier: MIT
#include "Reading.h"

#include "views/reading/FileFormat.h"
#include "views/reading/InputFile.h"

#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <functional>
#include <vector>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// Called once, behind a read of a file from some bytes on, with what was read.
std::function<void(char *, qint64)> behindRead;
std::atomic<bool> isToBeCalled{false};
constexpr size_t manyBytes = 4096; // other reads of this program are smaller

} // namespace

/// Stands in for the system's: what others do to a file while it's read happens when a test wants it to.
extern "C" ssize_t read(int descriptor, void *bytes, size_t most)
{
    const ssize_t got = syscall(SYS_read, descriptor, bytes, most);
    if (got > 0 && most >= manyBytes && isToBeCalled.exchange(false))
        behindRead(static_cast<char *>(bytes), got);
    return got;
}

/// A single read that gives a part of an old file and a part of the new one, as it does when the file is written anew
/// meanwhile.
class tst_TornRead : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isNoticed();
    void isNotShown();

private:
    void tearNextRead();

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("torn"));
    const QByteArray m_head = QByteArray("0\n").repeated(tellingBytes / 2); // what is read first, and always the same
    const QByteArray m_old = m_head + QByteArray("1\n").repeated(10'000);
    const QByteArray m_new = m_head + QByteArray("2\n").repeated(10'000);
};

/// Behind the next read of what follows the head, the file is the new one. So is the second half of what was read.
void tst_TornRead::tearNextRead()
{
    writeFile(m_path, m_old);
    behindRead = [this](char *bytes, qint64 count) {
        writeFile(m_path, m_new);
        std::copy_n(m_new.constData() + m_head.size() + count / 2, count - count / 2, bytes + count / 2);
    };
    isToBeCalled = true;
}

void tst_TornRead::initTestCase()
{
    QVERIFY(m_folder.isValid());
}

void tst_TornRead::isNoticed()
{
    Wakeup wakeup;
    wakeup.follow(true);
    InputFile file(wakeup);
    tearNextRead();
    QVERIFY(file.open(m_path));
    std::vector<char> bytes(size_t(m_old.size()));
    qint64 count = 0;
    QCOMPARE(file.read(bytes.data(), m_head.size(), count), InputFile::Got::Bytes);
    QVERIFY(isToBeCalled);
    QCOMPARE(file.read(bytes.data(), qint64(bytes.size()), count), InputFile::Got::End);
    QVERIFY(!isToBeCalled);
    QCOMPARE(count, qint64(0));
    QCOMPARE(file.change(), InputFile::Change::Shrunk);
}

void tst_TornRead::isNotShown()
{
    tearNextRead();
    SeriesReader reader;
    reader.setFollow(true);
    reader.setSource(m_path);
    QTRY_VERIFY(!isToBeCalled);
    const QByteArray expected = QByteArray(m_new).replace('\n', ' ').trimmed();
    QTRY_COMPARE(shownStores(reader), expected);
    QCOMPARE(reader.errorString(), QString());
}

QTEST_GUILESS_MAIN(tst_TornRead)
#include "tst_TornRead.moc"
