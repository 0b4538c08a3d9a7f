// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/ActionTabBar.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"
#include "Views/Look/Type.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

constexpr int tabHeight = 46;
constexpr int leastTabWidth = 44;
// Further apart, the tabs wouldn't look like one row.
constexpr int mostTabWidth = 92;
constexpr int sidePadding = 3;
constexpr int symbolTop = 8;
constexpr int symbolSide = 16;
constexpr int wordsBottom = 6;

} // namespace

TabButton::TabButton(ActionKind kind, QWidget *parent) : QAbstractButton(parent), m_kind(kind)
{
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFont(Look::font(Look::TextSize::caption));
    setFixedHeight(tabHeight);
    setMaximumWidth(mostTabWidth);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TabButton::setWords(const QString &name, const QString &title)
{
    if (text() != name || toolTip() != title) {
        setText(name);
        setShortcut({});
        setAccessibleName(name);
        setToolTip(title);
        updateGeometry();
    }
}

QSize TabButton::sizeHint() const
{
    const int words = fontMetrics().horizontalAdvance(text()) + 2 * sidePadding;
    return {std::max(leastTabWidth, words), tabHeight};
}

void TabButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor window = Look::color(ColorRole::window);
    const QColor fill = isChecked()    ? Look::color(ColorRole::accentTint)
                        : underMouse() ? Look::blended(Look::color(ColorRole::text), 0.06, window)
                                       : QColor();
    Look::paintBox(painter, rect(), {.fill = fill, .line = {}, .radius = Look::Radius::control});
    const QColor ink = Look::color(isChecked() ? ColorRole::accent : ColorRole::secondaryText);
    painter.drawPixmap(
        (width() - symbolSide) / 2, symbolTop,
        Look::symbolPixmap(symbolName(m_kind), ink, symbolSide, devicePixelRatioF()));
    painter.setPen(isChecked() ? ink : Look::color(ColorRole::text));
    painter.drawText(rect().adjusted(0, 0, 0, -wordsBottom), Qt::AlignHCenter | Qt::AlignBottom,
                     text());
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::control);
    }
}

ActionTabBar::ActionTabBar(const ViewContext &context, QWidget *parent) : View(context, parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Look::Space::small, Look::Space::small, Look::Space::small,
                            Look::Space::small);
    row->setSpacing(0);
    // Exclusive: the arrow keys then move, and Tab comes to the checked one.
    auto *group = new QButtonGroup(this);
    for (const ActionKind kind : allCases<ActionKind>()) {
        m_tabs.push_back(tabButton(kind));
        group->addButton(m_tabs.back());
        row->addWidget(m_tabs.back(), 1);
    }
    row->addStretch();
    follow(&AppModel::actionChanged);
}

TabButton *ActionTabBar::tabButton(ActionKind kind)
{
    auto *tab = new TabButton(kind);
    connect(tab, &QAbstractButton::clicked, this, [this, kind] { model().setAction(kind); });
    return tab;
}

void ActionTabBar::refresh()
{
    for (TabButton *tab : m_tabs) {
        tab->setWords(t(u"action.short."_s + rawValue(tab->kind())), t(titleKey(tab->kind())));
        tab->setChecked(tab->kind() == model().action());
    }
}
