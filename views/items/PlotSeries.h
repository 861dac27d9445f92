// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QVariant>

#include <limits>

/// What the bars, the line and the area of a plot have in common: where their values come from, how they are called and
/// where they stand. Value i stands at `start + i * step + xOffset`; values that aren't finite are gaps. Abstract.
///
/// A series is no item: it's drawn by the view that it's added to (PlotView), in the order in which the view got its
/// series. GUI thread. Bad input never warns twice and never draws anything: a step of 0 or one that isn't finite
/// leaves the series empty.
class PlotSeries : public QObject
{
    Q_OBJECT
    /// Empty by default: the series isn't in the legend then.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// The color it's drawn with. Until one is set it's the view's choice; undefined goes back to that.
    Q_PROPERTY(QColor color READ color WRITE setColor RESET resetColor NOTIFY colorChanged)
    Q_PROPERTY(bool visible READ isVisible WRITE setVisible NOTIFY visibleChanged)
    /// From 0 to 1; what lies outside is brought inside, and what is no number changes nothing.
    Q_PROPERTY(double opacity READ opacity WRITE setOpacity NOTIFY opacityChanged)
    Q_PROPERTY(double start READ start WRITE setStart NOTIFY startChanged)
    Q_PROPERTY(double step READ step WRITE setStep NOTIFY stepChanged)
    Q_PROPERTY(double xOffset READ xOffset WRITE setXOffset NOTIFY xOffsetChanged)
    /// Whether the read-out tells its values.
    Q_PROPERTY(bool hoverable READ isHoverable WRITE setHoverable NOTIFY hoverableChanged)

public:
    QString name() const { return m_name; }
    void setName(const QString &name);
    QColor color() const { return m_color.isValid() ? m_color : m_viewColor; }
    void setColor(const QColor &color);
    void resetColor() { setColor(QColor()); }
    bool isVisible() const { return m_visible; }
    void setVisible(bool visible);
    double opacity() const { return m_opacity; }
    void setOpacity(double opacity);
    double start() const { return m_start; }
    void setStart(double start);
    double step() const { return m_step; }
    void setStep(double step);
    double xOffset() const { return m_xOffset; }
    void setXOffset(double xOffset);
    bool isHoverable() const { return m_hoverable; }
    void setHoverable(bool hoverable);

    // Called by the view that draws it.

    /// The color that the view has for it while none is set.
    void setViewColor(const QColor &color);

signals:
    void nameChanged();
    void colorChanged();
    void visibleChanged();
    void opacityChanged();
    void startChanged();
    void stepChanged();
    void xOffsetChanged();
    void hoverableChanged();

    /// The picture is another one: the view asks for a frame if the series can be seen.
    void redrawNeeded();

protected:
    explicit PlotSeries(QObject *parent = nullptr);

private:
    QString m_name;
    QColor m_color;
    QColor m_viewColor = QColor(0x1f, 0x77, 0xb4);
    bool m_visible = true;
    bool m_hoverable = true;
    double m_opacity = 1.0;
    double m_start = 0.0;
    double m_step = 1.0;
    double m_xOffset = 0.0;
};
