// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Disclosure.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"
#include "Views/Look/Type.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 6;

} // namespace

Disclosure::Disclosure(QWidget *content, QWidget *parent)
    : QWidget(parent)
    , m_header(new DisclosureHeader(this))
    , m_content(content)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Space::small);
    column->addWidget(m_header, 0, Qt::AlignLeft);
    column->addWidget(m_content);
    m_content->hide();
    connect(m_header, &QAbstractButton::toggled, m_content, &QWidget::setVisible);
}

void Disclosure::setWords(const QString &words)
{
    if (m_header->text() != words) {
        m_header->setText(words);
        m_header->setAccessibleName(words);
        m_header->updateGeometry();
    }
}

void Disclosure::setSymbol(const QString &name)
{
    m_header->setSymbol(name);
}

bool Disclosure::isOpen() const
{
    return m_header->isChecked();
}

void Disclosure::setOpen(bool open)
{
    m_header->setChecked(open);
}

QAbstractButton *Disclosure::header() const
{
    return m_header;
}

DisclosureHeader::DisclosureHeader(QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFont(Look::font(Look::TextSize::body, QFont::Medium));
}

void DisclosureHeader::setSymbol(const QString &name)
{
    m_symbol = name;
    updateGeometry();
}

int DisclosureHeader::wordsLeft() const
{
    const int chevron = padding + Look::SymbolSize::small + Look::Space::small;
    return chevron + (m_symbol.isEmpty() ? 0 : Look::SymbolSize::normal + Look::Space::small);
}

QSize DisclosureHeader::sizeHint() const
{
    return {wordsLeft() + fontMetrics().horizontalAdvance(text()) + padding + 2,
            Look::Height::control};
}

void DisclosureHeader::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (underMouse() && isEnabled()) {
        Look::paintBox(painter, rect(),
                       {.fill = Look::color(ColorRole::controlHover),
                        .line = {},
                        .radius = Look::Radius::control});
    }
    const QColor ink = Look::color(isEnabled() ? ColorRole::text : ColorRole::disabledText);
    const auto put = [&](const QString &name, int left, int side) {
        painter.drawPixmap(left, (height() - side) / 2,
                           Look::symbolPixmap(name, ink, side, devicePixelRatioF()));
    };
    put(isChecked() ? u"chevron.down"_s : u"chevron.right"_s, padding, Look::SymbolSize::small);
    if (!m_symbol.isEmpty()) {
        put(m_symbol, wordsLeft() - Look::Space::small - Look::SymbolSize::normal,
            Look::SymbolSize::normal);
    }
    painter.setPen(ink);
    painter.drawText(rect().adjusted(wordsLeft(), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     text());
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::control);
    }
}

void DisclosureHeader::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return click();
    case Qt::Key_Right:
        return setChecked(true);
    case Qt::Key_Left:
        return setChecked(false);
    default:
        QAbstractButton::keyPressEvent(event);
    }
}
