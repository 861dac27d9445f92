// SPDX-License-Identifier: MIT
#include "Pictures.h"

#include <QDir>
#include <QImageReader>
#include <QPainter>
#include <QtTest>

namespace {

QImage ground()
{
    QImage image(640, 360, QImage::Format_RGB32);
    image.fill(QColor("#10181f"));
    return image;
}

QImage withBar(const QColor &color, int height)
{
    QImage image = ground();
    QPainter(&image).fillRect(100, 360 - height, 80, height, color);
    return image;
}

} // namespace

/// The comparison that the pictures of the examples rely on.
class TestPictures : public QObject
{
    Q_OBJECT

private slots:
    void a_picture_equals_itself() { QCOMPARE(differingBlocks(withBar(Qt::red, 200), withBar(Qt::red, 200)), 0.0); }

    void a_missing_bar_is_seen() { QVERIFY(differingBlocks(withBar(Qt::red, 200), ground()) > 0.04); }

    void another_height_is_seen() { QVERIFY(differingBlocks(withBar(Qt::red, 200), withBar(Qt::red, 160)) > 0.01); }

    void another_color_is_seen()
    {
        QVERIFY(differingBlocks(withBar(QColor("#07cbf2"), 200), withBar(QColor("#07a0f2"), 200)) > 0.04);
    }

    void a_slightly_other_color_is_not_seen()
    {
        QCOMPARE(differingBlocks(withBar(QColor("#07cbf2"), 200), withBar(QColor("#0fc0f2"), 200)), 0.0);
    }

    void another_size_differs_altogether() { QCOMPARE(differingBlocks(ground(), ground().scaled(600, 360)), 1.0); }

    void no_picture_differs_altogether()
    {
        QCOMPARE(differingBlocks(QImage(), QImage()), 1.0);
        QCOMPARE(differingBlocks(ground(), QImage()), 1.0);
    }

    /// No example may pass for another one, not even with the widest tolerance in use.
    void pictures_of_different_examples_differ()
    {
        const QDir gallery(QStringLiteral(GALLERY));
        const QStringList names = gallery.entryList({"[0-9][0-9]-*.png"}, QDir::Files, QDir::Name);
        QVERIFY(names.size() >= 10);
        for (int i = 0; i < names.size(); ++i) {
            const QImage picture(gallery.filePath(names[i]));
            QVERIFY2(!picture.isNull(), qPrintable(names[i]));
            for (int j = i + 1; j < names.size(); ++j) {
                const double difference = differingBlocks(picture, QImage(gallery.filePath(names[j])));
                QVERIFY2(difference > 0.16, qPrintable(names[i] + " and " + names[j]));
            }
        }
    }

    /// What it begins with is compared with the viewer by a test of its own; it ends elsewhere.
    void the_moving_picture_moves()
    {
        QImageReader movie(QStringLiteral(GALLERY "/../pictures/zoom.gif"));
        const QImage first = movie.read();
        QVERIFY(!first.isNull());
        QVERIFY(movie.imageCount() > 30);
        QImage last;
        while (movie.canRead())
            last = movie.read();
        QVERIFY(differingBlocks(last, first) > 0.1);
    }
};

QTEST_GUILESS_MAIN(TestPictures)
#include "tst_Pictures.moc"
