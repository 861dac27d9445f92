// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QVariantList>
#include <QVector>

/// The colors and the font of a view. Whatever isn't set follows the color scheme, and text follows the background that
/// it stands on, so that it can be read there. A color that is set stays; undefined goes back. GUI thread.
class PlotTheme : public QObject
{
    Q_OBJECT
    /// Automatic follows the palette of the application: dark where its windows are dark.
    Q_PROPERTY(ColorScheme colorScheme READ colorScheme WRITE setColorScheme NOTIFY colorSchemeChanged)
    /// Series without a color of their own take these in turn. An empty list goes back to the scheme's; what is no
    /// color is left out and said.
    Q_PROPERTY(
        QVariantList seriesColors READ seriesColorList WRITE setSeriesColorList RESET resetSeriesColors NOTIFY changed)
    Q_PROPERTY(
        QColor backgroundColor READ backgroundColor WRITE setBackgroundColor RESET resetBackgroundColor NOTIFY changed)
    Q_PROPERTY(QColor plotAreaBackgroundColor READ plotAreaBackgroundColor WRITE setPlotAreaBackgroundColor RESET
                   resetPlotAreaBackgroundColor NOTIFY changed)
    Q_PROPERTY(QColor gridColor READ gridColor WRITE setGridColor RESET resetGridColor NOTIFY changed)
    Q_PROPERTY(
        QColor labelTextColor READ labelTextColor WRITE setLabelTextColor RESET resetLabelTextColor NOTIFY changed)
    Q_PROPERTY(QFont font READ font WRITE setFont RESET resetFont NOTIFY changed)

    // What the rest of the view is drawn with; it follows from the others.
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(QColor axisColor READ axisColor NOTIFY changed)
    Q_PROPERTY(QColor panelColor READ panelColor NOTIFY changed)
    Q_PROPERTY(QColor panelTextColor READ panelTextColor NOTIFY changed)
    Q_PROPERTY(QColor accentColor READ accentColor NOTIFY changed)

public:
    enum ColorScheme : int { Automatic, Light, Dark };
    Q_ENUM(ColorScheme)

    explicit PlotTheme(QObject *parent = nullptr);
    ~PlotTheme() override;

    ColorScheme colorScheme() const { return m_colorScheme; }
    void setColorScheme(ColorScheme colorScheme);
    QVector<QColor> seriesColors() const;
    void setSeriesColors(const QVector<QColor> &colors);
    QVariantList seriesColorList() const;
    void setSeriesColorList(const QVariantList &colors);
    void resetSeriesColors() { setSeriesColors({}); }
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color) { setColor(m_backgroundColor, color); }
    void resetBackgroundColor() { setColor(m_backgroundColor, {}); }
    QColor plotAreaBackgroundColor() const;
    void setPlotAreaBackgroundColor(const QColor &color) { setColor(m_plotAreaBackgroundColor, color); }
    void resetPlotAreaBackgroundColor() { setColor(m_plotAreaBackgroundColor, {}); }
    QColor gridColor() const;
    void setGridColor(const QColor &color) { setColor(m_gridColor, color); }
    void resetGridColor() { setColor(m_gridColor, {}); }
    QColor labelTextColor() const;
    void setLabelTextColor(const QColor &color) { setColor(m_labelTextColor, color); }
    void resetLabelTextColor() { setColor(m_labelTextColor, {}); }
    QFont font() const { return m_hasFont ? m_font : ownFont(); }
    void setFont(const QFont &font);
    void resetFont();

    /// Whether the background is a dark one, however it came about.
    bool isDark() const;
    /// The frame and the ticks.
    QColor axisColor() const;
    /// The ground of the legend and the read-out, and the text on it.
    QColor panelColor() const;
    QColor panelTextColor() const;
    /// The focus, the box of a zoom, cursors and regions. It has no hue, so that it's never taken for a series.
    QColor accentColor() const;
    /// The color of the series at this place of the list.
    QColor seriesColor(int index) const;

signals:
    void colorSchemeChanged();
    /// Any color, or the font, is another one.
    void changed();
    /// It's being destroyed: views take another one, and tell of it with the changed() that follows.
    void aboutToGo(QObject *self);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setColor(QColor &stored, const QColor &color);
    bool schemeIsDark() const;
    QColor ground() const;
    QColor plotGround() const;
    static QFont ownFont();

    ColorScheme m_colorScheme = Automatic;
    QVector<QColor> m_seriesColors;
    QColor m_backgroundColor;
    QColor m_plotAreaBackgroundColor;
    QColor m_gridColor;
    QColor m_labelTextColor;
    QFont m_font;
    bool m_hasFont = false;
};
