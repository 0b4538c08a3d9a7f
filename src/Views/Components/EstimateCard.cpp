// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/EstimateCard.h"

#include "App/Fmt.h"
#include "Views/Components/EstimateColumn.h"
#include "Views/Components/WarningList.h"
#include "Views/Controls/BadgeChip.h"
#include "Views/Controls/Card.h"
#include "Views/Controls/NumberLabel.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

using Look::ColorRole;
using Look::TextSize;
using namespace Qt::StringLiterals;

EstimateCard::EstimateCard(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_original(new EstimateColumn)
    , m_estimated(new EstimateColumn(EstimateColumn::Accent::accented))
    , m_saving(new NumberLabel(TextSize::title, ColorRole::green, QFont::DemiBold))
    , m_badge(new BadgeChip(ColorRole::accent))
    , m_guarantee(new ElidedLabel(Qt::ElideRight, TextSize::caption, ColorRole::secondaryText))
    , m_warnings(new WarningList(context))
{
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    auto *card = new Card;
    whole->addWidget(card);
    m_guarantee->setEvenDigits(true);
    card->column()->addLayout(buildMainRow());
    card->column()->addWidget(m_badge, 0, Qt::AlignLeft);
    card->column()->addWidget(m_guarantee);
    card->column()->addWidget(m_warnings);
}

QBoxLayout *EstimateCard::buildMainRow()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Look::Space::large);
    const int side = Look::SymbolSize::normal;
    auto *arrow = new SymbolView(u"arrow.right"_s, side, ColorRole::secondaryText,
                                 m_saving->sizeHint().height());
    // All but the headings stand on the line of the numbers.
    row->addWidget(m_original, 0, Qt::AlignBottom);
    row->addWidget(arrow, 0, Qt::AlignBottom);
    row->addWidget(m_estimated, 0, Qt::AlignBottom);
    row->addWidget(m_saving, 0, Qt::AlignBottom);
    row->addStretch();
    return row;
}

void EstimateCard::setEstimate(const EstimateInfo &estimate, std::optional<double> guaranteeMB)
{
    if (estimate != m_estimate || guaranteeMB != m_guaranteeMB) {
        m_estimate = estimate;
        m_guaranteeMB = guaranteeMB;
        refreshSoon();
    }
}

void EstimateCard::refresh()
{
    showSizes();
    m_badge->setText(m_estimate.badgeKey ? t(*m_estimate.badgeKey) : QString());
    m_badge->setVisible(m_estimate.badgeKey.has_value());
    showGuarantee();
    m_warnings->setWarnings(m_estimate.warnings);
    m_warnings->setVisible(!m_estimate.warnings.isEmpty());
}

void EstimateCard::showSizes()
{
    m_original->setLabel(t(u"common.original"));
    m_original->setValue(Fmt::bytes(m_estimate.originalBytes));
    m_estimated->setLabel(t(u"common.estimated"));
    m_estimated->setValue(u"≈ "_s + Fmt::bytes(m_estimate.estimatedBytes));
    const std::optional<QString> saving =
        Fmt::saving(m_estimate.originalBytes, m_estimate.estimatedBytes);
    m_saving->setText(saving.value_or(QString()));
    m_saving->setVisible(saving.has_value());
}

void EstimateCard::showGuarantee()
{
    if (m_guaranteeMB) {
        m_guarantee->setText(tf(u"target.estimate"_s,
                                {Fmt::bytes(m_estimate.estimatedBytes), Fmt::mb(*m_guaranteeMB)}));
    }
    m_guarantee->setVisible(m_guaranteeMB.has_value());
}
