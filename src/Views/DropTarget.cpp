// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/DropTarget.h"

#include "App/FileURL.h"

#include <QDragEnterEvent>
#include <QIcon>
#include <QMimeData>
#include <QPainter>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Device-independent pixels.
constexpr int fieldHeight = 52;
constexpr int leastWidth = 56;
constexpr int cornerRadius = 10;
constexpr int symbolSide = 18;
constexpr int symbolTop = 8;
constexpr int titleBottom = 7;
constexpr double borderOpacity = 0.25;

struct FieldColors {
    QColor fill;
    QColor border;
    QColor content;
};

FieldColors fieldColors(const QPalette &palette, bool isHighlighted)
{
    if (isHighlighted) {
        const QColor accent = palette.color(QPalette::Highlight);
        return {accent, accent, palette.color(QPalette::HighlightedText)};
    }
    QColor border = palette.color(QPalette::WindowText);
    border.setAlphaF(borderOpacity);
    return {palette.color(QPalette::Window), border, palette.color(QPalette::WindowText)};
}

QIcon symbol(const QString &name)
{
    return QIcon(u":/symbols/"_s + name + u".svg"_s);
}

} // namespace

DropTarget::DropTarget(QString symbolName, QWidget *parent)
    : QWidget(parent)
    , m_symbolName(std::move(symbolName))
{
    setAcceptDrops(true);
    setFixedHeight(fieldHeight);
}

void DropTarget::setTitle(const QString &title)
{
    if (m_title == title) {
        return;
    }
    m_title = title;
    setAccessibleName(title);
    updateGeometry();
    update();
}

void DropTarget::setHighlighted(bool highlighted)
{
    if (m_isHighlighted == highlighted) {
        return;
    }
    m_isHighlighted = highlighted;
    update();
}

QSize DropTarget::sizeHint() const
{
    const int titleWidth = fontMetrics().horizontalAdvance(m_title) + 2 * cornerRadius;
    return {std::max(titleWidth, leastWidth), fieldHeight};
}

QSize DropTarget::minimumSizeHint() const
{
    return sizeHint();
}

void DropTarget::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls()) {
        // Whatever the other side would rather do: the files stay where they are.
        event->setDropAction(Qt::CopyAction);
        event->accept();
        Q_EMIT hoverBegan();
    }
}

void DropTarget::dragLeaveEvent(QDragLeaveEvent *)
{
    Q_EMIT hoverEnded();
}

void DropTarget::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT hoverEnded();
    Q_EMIT filesDropped(FileURL::filesAmong(event->mimeData()->urls()));
}

void DropTarget::paintEvent(QPaintEvent *)
{
    const FieldColors colors = fieldColors(palette(), m_isHighlighted);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors.border);
    painter.setBrush(colors.fill);
    // The line is a pixel wide and lies on its path's middle.
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                            cornerRadius);
    symbol(m_symbolName)
        .paint(&painter, (width() - symbolSide) / 2, symbolTop, symbolSide, symbolSide);
    painter.setPen(colors.content);
    painter.drawText(rect().adjusted(0, 0, 0, -titleBottom), Qt::AlignHCenter | Qt::AlignBottom,
                     m_title);
}
