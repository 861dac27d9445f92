// SPDX-License-Identifier: MIT
#include "views/items/PictureBoxes.h"

#include "views/items/LeftOut.h"
#include "views/items/PlotMarks.h"
#include "views/items/PlotSeries.h"
#include "views/items/PlotTheme.h"
#include "views/items/PlotView.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

constexpr double away = 8.0; // from the edges of the plot area
constexpr double spacing = 6.0;
constexpr double legendOpacity = 0.95;
constexpr double panelOpacity = 0.92;
constexpr double nameOpacity = 0.85;

struct SBoxRow
{
    QColor swatch;
    QString name;
    QString text;
};

/// How rows stand in a box.
struct SBoxLook
{
    QSizeF margin;
    double swatch;
    double rowGap;
    double opacity;
};

constexpr SBoxLook legendLook()
{
    return {{10.0, 6.0}, 12.0, 4.0, legendOpacity};
}
constexpr SBoxLook panelLook()
{
    return {{8.0, 5.0}, 9.0, 2.0, panelOpacity};
}

class Box
{
public:
    Box(const SBoxLook &look, const PlotTheme &theme, const QString &title, const QVector<SBoxRow> &rows)
        : m_look(look),
          m_theme(theme),
          m_metrics(theme.font()),
          m_title(title),
          m_rows(rows)
    {
    }

    QSizeF size() const
    {
        const int count = int(m_rows.size()) + (m_title.isEmpty() ? 0 : 1);
        double width = widthOf(m_title);
        for (const SBoxRow &row : m_rows)
            width = std::max(width, widthOf(row));
        return {width + 2.0 * m_look.margin.width(),
                count * (height() + m_look.rowGap) - m_look.rowGap + 2.0 * m_look.margin.height()};
    }

    void paint(QPainter &painter, const QPointF &corner) const
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(m_look.opacity);
        painter.setPen(m_theme.gridColor());
        painter.setBrush(m_theme.panelColor());
        painter.drawRoundedRect(QRectF(corner, size()).adjusted(0.5, 0.5, -0.5, -0.5), 3.5, 3.5);
        QPointF place = corner + QPointF(m_look.margin.width(), m_look.margin.height());
        if (!m_title.isEmpty()) {
            write(painter, place, m_title, 1.0);
            place.ry() += height() + m_look.rowGap;
        }
        for (const SBoxRow &row : m_rows) {
            paintRow(painter, place, row);
            place.ry() += height() + m_look.rowGap;
        }
        painter.restore();
    }

private:
    double height() const { return std::ceil(m_metrics.height()); }
    double widthOf(const QString &text) const { return std::ceil(m_metrics.horizontalAdvance(text)); }
    double widthOf(const SBoxRow &row) const
    {
        return (row.swatch.alpha() > 0 ? m_look.swatch + spacing : 0.0)
            + (row.name.isEmpty() ? 0.0 : widthOf(row.name) + (row.text.isEmpty() ? 0.0 : spacing)) + widthOf(row.text);
    }

    void write(QPainter &painter, const QPointF &place, const QString &text, double opacity) const
    {
        painter.setOpacity(m_look.opacity * opacity);
        painter.setPen(m_theme.panelTextColor());
        painter.drawText(QRectF(place, QSizeF(widthOf(text) + 1.0, height())), Qt::AlignLeft | Qt::AlignVCenter, text);
    }

    void paintRow(QPainter &painter, QPointF place, const SBoxRow &row) const
    {
        if (row.swatch.alpha() > 0) {
            painter.setOpacity(m_look.opacity);
            painter.setPen(Qt::NoPen);
            painter.setBrush(row.swatch);
            const QPointF corner(place.x(), place.y() + (height() - m_look.swatch) * 0.5);
            painter.drawRoundedRect(QRectF(corner, QSizeF(m_look.swatch, m_look.swatch)), 2.0, 2.0);
            place.rx() += m_look.swatch + spacing;
        }
        if (!row.name.isEmpty()) {
            write(painter, place, row.name, row.text.isEmpty() ? 1.0 : nameOpacity);
            place.rx() += widthOf(row.name) + spacing;
        }
        write(painter, place, row.text, 1.0);
    }

    const SBoxLook m_look;
    const PlotTheme &m_theme;
    const QFontMetricsF m_metrics;
    const QString m_title;
    const QVector<SBoxRow> m_rows;
};

void paintLegend(QPainter &painter, const PlotView &view)
{
    QVector<SBoxRow> rows;
    for (const PlotSeries *series : view.series()) {
        if (series->isVisible() && !series->name().isEmpty())
            rows.append({series->color(), series->name(), QString()});
    }
    if (!view.legendVisible() || rows.isEmpty())
        return;
    const Box box(legendLook(), *view.theme(), QString(), rows);
    box.paint(painter, view.plotArea().topRight() + QPointF(-box.size().width() - away, away));
}

void paintPanels(QPainter &painter, const PlotView &view)
{
    QPointF corner = view.plotArea().topLeft() + QPointF(away, away);
    const QVariantList panels = view.marks()->panels();
    for (const QVariant &panel : panels) {
        QVector<SBoxRow> rows;
        const QVariantList told = panel.toMap().value(QStringLiteral("rows")).toList();
        for (const QVariant &each : told) {
            const QVariantMap row = each.toMap();
            rows.append({row.value(QStringLiteral("color")).value<QColor>(),
                         row.value(QStringLiteral("name")).toString(), row.value(QStringLiteral("text")).toString()});
        }
        const Box box(panelLook(), *view.theme(), panel.toMap().value(QStringLiteral("title")).toString(), rows);
        box.paint(painter, corner);
        corner.ry() += box.size().height() + spacing;
    }
}

void paintLeftOut(QPainter &painter, const PlotView &view)
{
    view.leftOut().countNow();
    const QString words = view.leftOut().words();
    if (words.isEmpty())
        return;
    const Box box(panelLook(), *view.theme(), words, {});
    box.paint(painter, view.plotArea().bottomLeft() + QPointF(away, -box.size().height() - away));
}

} // namespace

void paintBoxes(QPainter &painter, const PlotView &view)
{
    paintLegend(painter, view);
    paintPanels(painter, view);
    paintLeftOut(painter, view);
}
