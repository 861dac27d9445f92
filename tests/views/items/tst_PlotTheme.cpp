// SPDX-License-Identifier: MIT
#include "views/items/Contrast.h"
#include "views/items/PlotTheme.h"

#include <QGuiApplication>
#include <QPalette>
#include <QtTest>

namespace {

constexpr double readable = 4.5;
constexpr double visible = 3.0;

void useWindowColor(const QColor &color)
{
    QPalette palette;
    palette.setColor(QPalette::Window, color);
    QGuiApplication::setPalette(palette);
}

} // namespace

class tst_PlotTheme : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { useWindowColor(Qt::white); }

    void contrastIsThatOfTheStandard();
    void textCanBeReadInBothSchemes_data();
    void textCanBeReadInBothSchemes();
    void textFollowsAnyBackground();
    void seriesStandOut();
    void automaticFollowsThePalette();
    void aColorThatWasSetStays();
    void aTransparentBackgroundCounts();
    void seriesColorsComeInTurn();
    void whatIsNoColorIsSaid();
    void theFontIsTheApplications();
};

void tst_PlotTheme::contrastIsThatOfTheStandard()
{
    QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(contrast(Qt::red, Qt::red), 1.0);
    QVERIFY(std::abs(contrast(QColor("#767676"), Qt::white) - 4.54) < 0.01); // the known border of gray text on white
}

void tst_PlotTheme::textCanBeReadInBothSchemes_data()
{
    QTest::addColumn<PlotTheme::ColorScheme>("scheme");
    QTest::newRow("light") << PlotTheme::Light;
    QTest::newRow("dark") << PlotTheme::Dark;
}

void tst_PlotTheme::textCanBeReadInBothSchemes()
{
    QFETCH(PlotTheme::ColorScheme, scheme);
    PlotTheme theme;
    theme.setColorScheme(scheme);
    QCOMPARE(theme.isDark(), scheme == PlotTheme::Dark);
    QVERIFY(contrast(theme.labelTextColor(), theme.backgroundColor()) >= readable);
    QVERIFY(contrast(theme.labelTextColor(), theme.plotAreaBackgroundColor()) >= readable);
    QVERIFY(contrast(theme.panelTextColor(), theme.panelColor()) >= readable);
    QVERIFY(contrast(theme.axisColor(), theme.plotAreaBackgroundColor()) >= visible);
    QVERIFY(contrast(theme.accentColor(), theme.plotAreaBackgroundColor()) >= readable);
    QVERIFY(contrast(theme.gridColor(), theme.plotAreaBackgroundColor()) < 2.0); // there, but quieter than any series
    QVERIFY(contrast(theme.gridColor(), theme.plotAreaBackgroundColor()) > 1.1);
    for (const QColor &color : theme.seriesColors())
        QVERIFY2(contrast(color, theme.plotAreaBackgroundColor()) >= readable, qPrintable(color.name()));
}

void tst_PlotTheme::textFollowsAnyBackground()
{
    PlotTheme theme;
    for (int hue = 0; hue < 360; hue += 15) {
        for (int value = 0; value < 256; value += 17) {
            theme.setBackgroundColor(QColor::fromHsv(hue, 200, value));
            QVERIFY(contrast(theme.labelTextColor(), theme.backgroundColor()) >= readable);
            QVERIFY(contrast(theme.accentColor(), theme.plotAreaBackgroundColor()) >= 1.0);
        }
    }
}

void tst_PlotTheme::seriesStandOut()
{
    PlotTheme theme;
    theme.setBackgroundColor(Qt::black); // of a light scheme
    for (const QColor &color : theme.seriesColors())
        QVERIFY(contrast(color, Qt::black) >= readable);
    for (int i = 0; i < theme.seriesColors().size(); ++i) {
        for (int k = 0; k < i; ++k)
            QVERIFY(theme.seriesColor(i) != theme.seriesColor(k));
    }
}

void tst_PlotTheme::automaticFollowsThePalette()
{
    PlotTheme theme;
    useWindowColor(Qt::white);
    QVERIFY(!theme.isDark());
    QSignalSpy spy(&theme, &PlotTheme::changed);
    useWindowColor(QColor(0x202020));
    QTRY_VERIFY(!spy.isEmpty());
    QVERIFY(theme.isDark());
    theme.setColorScheme(PlotTheme::Light);
    QVERIFY(!theme.isDark());
}

void tst_PlotTheme::aColorThatWasSetStays()
{
    PlotTheme theme;
    theme.setGridColor(Qt::red);
    theme.setLabelTextColor(Qt::green);
    theme.setColorScheme(PlotTheme::Dark);
    QCOMPARE(theme.gridColor(), QColor(Qt::red));
    QCOMPARE(theme.labelTextColor(), QColor(Qt::green));
    theme.resetGridColor();
    QVERIFY(theme.gridColor() != QColor(Qt::red));
    theme.setPlotAreaBackgroundColor(Qt::white);
    QVERIFY(theme.isDark()); // that of the view is still dark
}

void tst_PlotTheme::aTransparentBackgroundCounts()
{
    PlotTheme theme;
    theme.setColorScheme(PlotTheme::Light);
    theme.setBackgroundColor(Qt::transparent);
    QVERIFY(contrast(theme.labelTextColor(), Qt::white) >= readable);
    theme.setColorScheme(PlotTheme::Dark);
    QVERIFY(contrast(theme.labelTextColor(), Qt::black) >= readable);
}

void tst_PlotTheme::seriesColorsComeInTurn()
{
    PlotTheme theme;
    theme.setSeriesColors({Qt::red, Qt::blue});
    QCOMPARE(theme.seriesColor(0), QColor(Qt::red));
    QCOMPARE(theme.seriesColor(3), QColor(Qt::blue));
    theme.resetSeriesColors();
    QVERIFY(theme.seriesColors().size() >= 6);
}

void tst_PlotTheme::whatIsNoColorIsSaid()
{
    PlotTheme theme;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"nonsense\" isn't a color")));
    theme.setSeriesColorList({QStringLiteral("#123456"), QStringLiteral("nonsense")});
    QCOMPARE(theme.seriesColors(), QVector<QColor>{QColor("#123456")});
}

void tst_PlotTheme::theFontIsTheApplications()
{
    PlotTheme theme;
    QCOMPARE(theme.font(), QGuiApplication::font());
    QFont font;
    font.setPixelSize(31);
    theme.setFont(font);
    QCOMPARE(theme.font().pixelSize(), 31);
    theme.resetFont();
    QCOMPARE(theme.font(), QGuiApplication::font());
}

QTEST_MAIN(tst_PlotTheme)
#include "tst_PlotTheme.moc"
