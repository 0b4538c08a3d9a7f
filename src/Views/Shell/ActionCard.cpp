// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/ActionCard.h"

#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"

#include <QHBoxLayout>
#include <QPainter>

using Look::ColorRole;

namespace {

/// Device-independent pixels.
struct Measures {
    int symbolSide;
    int symbolBox;
    int padding;
    int leastHeight;
    Look::TextSize title;
    Look::TextSize subtitle;
};

constexpr Measures heroMeasures{
    26, 40, Look::Space::large, 0, Look::TextSize::title, Look::TextSize::body};
// Two lines of text, so that all rows are alike.
constexpr Measures plainMeasures{
    20, 32, Look::Space::medium, 66, Look::TextSize::headline, Look::TextSize::caption};

const Measures &measuresOf(ActionCard::Size size)
{
    return size == ActionCard::Size::hero ? heroMeasures : plainMeasures;
}

struct Outline {
    ColorRole color;
    double opacity;
    double width;
};

constexpr Outline restingOutline{ColorRole::secondaryText, 0.18, 1};
constexpr Outline emphasisedOutline{ColorRole::accent, 0.5, 1.5};

} // namespace

ActionCard::ActionCard(const ViewContext &context, ActionKind kind, Size size, QWidget *parent)
    : CardButton(parent)
    , m_context(context)
    , m_kind(kind)
    , m_size(size)
    , m_title(new TextLabel(measuresOf(size).title, ColorRole::text, QFont::DemiBold))
    , m_subtitle(new TextLabel(measuresOf(size).subtitle, ColorRole::secondaryText))
{
    build();
    refreshTexts();
    refreshChoice();
    const AppModel *model = &m_context.model;
    connect(model, &AppModel::languageChanged, this, &ActionCard::refreshTexts);
    connect(model, &AppModel::actionChanged, this, &ActionCard::refreshChoice);
    connect(this, &QAbstractButton::clicked, this, [this] { m_context.model.setAction(m_kind); });
}

bool ActionCard::isHovered() const
{
    return underMouse();
}

void ActionCard::build()
{
    const Measures &measures = measuresOf(m_size);
    setMinimumHeight(measures.leastHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(measures.padding, measures.padding, measures.padding, measures.padding);
    row->setSpacing(Look::Space::medium);
    row->addWidget(new SymbolView(symbolName(m_kind), measures.symbolSide, ColorRole::accent,
                                  measures.symbolBox),
                   0, Qt::AlignTop);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_title);
    texts->addWidget(m_subtitle->wrapping());
    texts->addStretch();
    row->addLayout(texts, 1);
}

void ActionCard::refreshTexts()
{
    m_title->setText(m_context.model.t(titleKey(m_kind)));
    m_subtitle->setText(m_context.model.t(subtitleKey(m_kind)));
    setAccessibleName(m_title->text());
    setAccessibleDescription(m_subtitle->text());
}

void ActionCard::refreshChoice()
{
    setSelected(m_context.model.action() == m_kind);
}

void ActionCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QColor fill = Look::color(isSelected() ? ColorRole::accentTint : ColorRole::card);
    const Outline &outline = isHovered() || isDown() ? emphasisedOutline : restingOutline;
    Look::paintBox(painter, rect(),
                   {.fill = fill,
                    .line = Look::blended(Look::color(outline.color), outline.opacity, fill),
                    .lineWidth = outline.width,
                    .radius = Look::Radius::card});
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::card);
    }
}
