// SPDX-License-Identifier: MIT
#include "views/items/PlotTheme.h"

#include "common/Change.h"
#include "views/items/Contrast.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <qqmlinfo.h>

namespace {

// Each stands out from its plot area by 3 : 1 at least, so that a thin line can be seen.
const QVector<QColor> seriesOnLight{0x1b6ca8, 0xc4471b, 0x2b7d3a, 0x7a3fb0, 0xb0306f, 0x0b7c86, 0x94650a, 0x53606e};
const QVector<QColor> seriesOnDark{0x5aa9f0, 0xf5935a, 0x63cf7c, 0xb98bf2, 0xf07bb4, 0x3fcad4, 0xe9bd45, 0xa3b0c0};

const QColor lightGround(0xfcfcfd);
const QColor lightPlot(0xff, 0xff, 0xff);
const QColor darkGround(0x17191d);
const QColor darkPlot(0x1e2126);
const QColor darkText(0x2b2f36);
const QColor brightText(0xd6dae0);
const QColor brightPanel(0xff, 0xff, 0xff);
const QColor darkPanel(0x2a2e35);

constexpr double readable = 4.5;

bool isDarkGround(const QColor &ground)
{
    return contrast(ground, Qt::white) > contrast(ground, Qt::black);
}

/// What text is written in on a ground: the softer one if it can be read, else black or white.
QColor textOn(const QColor &ground)
{
    const bool isDark = isDarkGround(ground);
    const QColor soft = isDark ? brightText : darkText;
    if (contrast(soft, ground) >= readable)
        return soft;
    return isDark ? QColor(Qt::white) : QColor(Qt::black);
}

/// `part` of a color laid over a ground.
QColor mixed(const QColor &color, const QColor &ground, double part)
{
    const auto mix = [part](double a, double b) { return a * part + b * (1.0 - part); };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

/// What can be seen behind a color that may be transparent.
QColor over(const QColor &color, const QColor &ground)
{
    return mixed(color, ground, color.alphaF());
}

} // namespace

PlotTheme::PlotTheme(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

PlotTheme::~PlotTheme()
{
    emit aboutToGo(this);
    emit changed();
}

bool PlotTheme::eventFilter(QObject *watched, QEvent *event)
{
    const bool isNews =
        event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ApplicationFontChange;
    if (isNews && watched == qApp)
        emit changed();
    return QObject::eventFilter(watched, event);
}

void PlotTheme::setColorScheme(ColorScheme colorScheme)
{
    if (!change(m_colorScheme, colorScheme))
        return;
    emit colorSchemeChanged();
    emit changed();
}

bool PlotTheme::schemeIsDark() const
{
    if (m_colorScheme != Automatic)
        return m_colorScheme == Dark;
    return luminance(QGuiApplication::palette().color(QPalette::Window)) < 0.18;
}

void PlotTheme::setColor(QColor &stored, const QColor &color)
{
    if (change(stored, color))
        emit changed();
}

void PlotTheme::setSeriesColors(const QVector<QColor> &colors)
{
    if (change(m_seriesColors, colors))
        emit changed();
}

void PlotTheme::setFont(const QFont &font)
{
    if (m_hasFont && m_font == font)
        return;
    m_hasFont = true;
    m_font = font;
    emit changed();
}

void PlotTheme::resetFont()
{
    if (change(m_hasFont, false))
        emit changed();
}

QFont PlotTheme::ownFont()
{
    return QFont(); // the application's, not chosen here: scripts that choose a pixel size aren't warned of its
                    // points
}

QColor PlotTheme::backgroundColor() const
{
    if (m_backgroundColor.isValid())
        return m_backgroundColor;
    return schemeIsDark() ? darkGround : lightGround;
}

QColor PlotTheme::plotAreaBackgroundColor() const
{
    if (m_plotAreaBackgroundColor.isValid())
        return m_plotAreaBackgroundColor;
    if (m_backgroundColor.isValid())
        return m_backgroundColor;
    return schemeIsDark() ? darkPlot : lightPlot;
}

/// What is seen behind the labels: a background may be transparent.
QColor PlotTheme::ground() const
{
    return over(backgroundColor(), schemeIsDark() ? darkGround : lightGround);
}

QColor PlotTheme::plotGround() const
{
    return over(plotAreaBackgroundColor(), ground());
}

QVariantList PlotTheme::seriesColorList() const
{
    QVariantList list;
    for (const QColor &color : seriesColors())
        list.append(color);
    return list;
}

void PlotTheme::setSeriesColorList(const QVariantList &colors)
{
    QVector<QColor> understood;
    for (const QVariant &entry : colors) {
        const QColor color = entry.value<QColor>();
        if (color.isValid())
            understood.append(color);
        else
            qmlWarning(this) << "seriesColors: \"" << entry.toString() << "\" isn't a color";
    }
    setSeriesColors(understood);
}

QVector<QColor> PlotTheme::seriesColors() const
{
    if (!m_seriesColors.isEmpty())
        return m_seriesColors;
    return isDarkGround(plotGround()) ? seriesOnDark : seriesOnLight;
}

QColor PlotTheme::seriesColor(int index) const
{
    const QVector<QColor> colors = seriesColors();
    return colors.at(index % int(colors.size()));
}

bool PlotTheme::isDark() const
{
    return isDarkGround(ground());
}

QColor PlotTheme::labelTextColor() const
{
    if (m_labelTextColor.isValid())
        return m_labelTextColor;
    return textOn(ground());
}

QColor PlotTheme::gridColor() const
{
    if (m_gridColor.isValid())
        return m_gridColor;
    return mixed(textOn(plotGround()), plotGround(), 0.14);
}

QColor PlotTheme::axisColor() const
{
    return mixed(textOn(plotGround()), plotGround(), 0.6);
}

QColor PlotTheme::panelColor() const
{
    return isDark() ? darkPanel : brightPanel;
}

QColor PlotTheme::panelTextColor() const
{
    return textOn(panelColor());
}

QColor PlotTheme::accentColor() const
{
    return textOn(plotGround());
}
