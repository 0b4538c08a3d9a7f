// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/DropZone.h"

#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/FileDrop.h"
#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"
#include "Views/Shell/FilmDialog.h"

#include <QPainter>
#include <QVBoxLayout>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

constexpr int symbolSide = 34;
constexpr int zoneHeight = 132;
constexpr qreal lineWidth = 1.5;
// In widths of the line.
const QList<qreal> dashes = {4, 3};

struct Face {
    ColorRole fill;
    ColorRole line;
};

} // namespace

DropZone::DropZone(const ViewContext &context, QWidget *parent)
    : CardButton(parent)
    , m_context(context)
    , m_drop(new FileDrop(this))
    , m_title(new TextLabel(Look::TextSize::title, ColorRole::text, QFont::DemiBold))
    , m_subtitle(new TextLabel(Look::TextSize::body, ColorRole::secondaryText))
{
    setFixedHeight(zoneHeight);
    build();
    refreshTexts();
    connect(&m_context.model, &AppModel::languageChanged, this, &DropZone::refreshTexts);
    connect(m_drop, &FileDrop::overChanged, this, qOverload<>(&DropZone::update));
    connect(m_drop, &FileDrop::dropped, this,
            [this](const QList<QUrl> &urls) { m_context.model.addURLs(urls); });
    connect(this, &QAbstractButton::clicked, this, [this] { FilmDialog::open(m_context, this); });
}

bool DropZone::isTargeted() const
{
    return m_drop->isOver();
}

void DropZone::build()
{
    auto *column = new QVBoxLayout(this);
    column->setSpacing(Look::Space::tiny);
    column->addStretch();
    column->addWidget(new SymbolView(u"arrow.down.doc.fill"_s, symbolSide, ColorRole::accent), 0,
                      Qt::AlignHCenter);
    column->addSpacing(Look::Space::small);
    column->addWidget(m_title, 0, Qt::AlignHCenter);
    column->addWidget(m_subtitle, 0, Qt::AlignHCenter);
    column->addStretch();
}

void DropZone::refreshTexts()
{
    m_title->setText(m_context.model.t(u"landing.drop.title"_s));
    m_subtitle->setText(m_context.model.t(u"landing.drop.subtitle"_s));
    setAccessibleName(m_title->text());
    setAccessibleDescription(m_subtitle->text());
}

void DropZone::paintEvent(QPaintEvent *)
{
    const bool isLit = underMouse() || isDown();
    const Face face = isTargeted() ? Face{ColorRole::accentTint, ColorRole::accent}
                      : isLit      ? Face{ColorRole::controlHover, ColorRole::secondaryText}
                                   : Face{ColorRole::card, ColorRole::outline};
    QPainter painter(this);
    Look::paintBox(painter, rect(),
                   {.fill = Look::color(face.fill), .line = {}, .radius = Look::Radius::card});
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(Look::color(face.line), lineWidth);
    pen.setDashPattern(dashes);
    painter.setPen(pen);
    const qreal inset = lineWidth / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                            Look::Radius::card, Look::Radius::card);
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::card);
    }
}
