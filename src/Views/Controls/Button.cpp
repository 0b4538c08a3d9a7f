// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Button.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QStyleOptionButton>
#include <QStylePainter>

using namespace Qt::StringLiterals;

namespace {

QString styleName(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::prominent:
        return u"prominent"_s;
    case Button::Kind::plain:
        return u"plain"_s;
    case Button::Kind::small:
        return u"small"_s;
    case Button::Kind::quiet:
        return u"quiet"_s;
    case Button::Kind::destructive:
        return u"destructive"_s;
    }
    Q_UNREACHABLE();
}

constexpr int gap = 7;

} // namespace

Button::Button(Kind kind, QWidget *parent) : QPushButton(parent), m_kind(kind)
{
    setProperty("kind", styleName(kind));
    // A click leaves the focus where the person types; Tab still comes here.
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::ArrowCursor);
}

void Button::setSymbol(const QString &name)
{
    if (name != m_symbol) {
        m_symbol = name;
        updateGeometry();
        update();
    }
}

void Button::setWords(const QString &words)
{
    if (text() != words) {
        setText(words);
        setAccessibleName(words);
        setShortcut({});
    }
}

int Button::symbolSide() const
{
    return m_kind == Kind::small || m_kind == Kind::quiet ? 13 : Look::SymbolSize::normal;
}

Look::ColorRole Button::ink() const
{
    if (!isEnabled()) {
        return Look::ColorRole::disabledText;
    }
    switch (m_kind) {
    case Kind::prominent:
        return Look::ColorRole::onAccent;
    case Kind::destructive:
        return Look::ColorRole::red;
    default:
        return Look::ColorRole::text;
    }
}

QSize Button::sizeHint() const
{
    const QSize base = QPushButton::sizeHint();
    return m_symbol.isEmpty() ? base : base + QSize(symbolSide() + gap, 0);
}

/// The face comes from the stylesheet; its contents would stick to each other there.
void Button::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);
    const int symbolRoom = m_symbol.isEmpty() ? 0 : symbolSide() + gap;
    const int width = symbolRoom + fontMetrics().horizontalAdvance(text());
    const int left = (this->width() - width) / 2;
    painter.setPen(Look::color(ink()));
    if (!m_symbol.isEmpty()) {
        painter.drawPixmap(
            left, (height() - symbolSide()) / 2,
            Look::symbolPixmap(m_symbol, Look::color(ink()), symbolSide(), devicePixelRatioF()));
    }
    painter.drawText(QRect(left + symbolRoom, 0, this->width(), height()),
                     Qt::AlignLeft | Qt::AlignVCenter, text());
}

void Button::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}
