// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/PresetLadder.h"

#include "App/Fmt.h"
#include "Engine/Text.h"
#include "Models/BlankTrimming.h"
#include "Views/Controls/AdaptiveGrid.h"
#include "Views/Controls/CardButton.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>
#include <cmath>

using Look::ColorRole;
using Look::TextSize;
using namespace Qt::StringLiterals;

namespace {

struct SizePreset {
    double mb;
    /// The name; the note is under the same key with ".note" behind it.
    QLatin1StringView platformKey;
};

constexpr std::array ladder{
    SizePreset{8, "preset.legacy"_L1},    SizePreset{10, "preset.outlook"_L1},
    SizePreset{16, "preset.whatsapp"_L1}, SizePreset{20, "preset.discord"_L1},
    SizePreset{25, "preset.gmail"_L1},    SizePreset{50, "preset.nitro"_L1},
    SizePreset{100, "preset.general"_L1}, SizePreset{200, "preset.linkedin"_L1},
};

constexpr double sameSize = 0.01;
constexpr double mostMB = 100'000;
constexpr int leastCardWidth = 120;
constexpr int cardSpacing = 10;
constexpr int customFieldWidth = 56;

} // namespace

PresetLadder::PresetLadder(const ViewContext &context, QWidget *parent) : View(context, parent)
{
    auto *grid =
        new AdaptiveGrid({.leastColumnWidth = leastCardWidth, .spacing = cardSpacing}, this);
    for (std::size_t i = 0; i < ladder.size(); ++i) {
        m_presets.append(makePresetCard(i));
        grid->addWidget(m_presets.last().button);
    }
    m_custom = makeCustomCard();
    grid->addWidget(m_custom);
}

PresetLadder::PresetCard PresetLadder::makePresetCard(std::size_t index)
{
    auto *card = new CardButton(this);
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(Look::Space::medium, Look::Space::small, Look::Space::medium,
                               Look::Space::small);
    column->setSpacing(2);
    auto *size = new TextLabel(TextSize::headline, ColorRole::text, QFont::DemiBold);
    size->setText(Fmt::mb(ladder.at(index).mb));
    column->addWidget(size);
    auto *name = new ElidedLabel(Qt::ElideRight, TextSize::caption, ColorRole::secondaryText);
    column->addWidget(name);
    connect(card, &QAbstractButton::clicked, this, [this, index] { pick(ladder.at(index).mb); });
    return {card, name};
}

CardButton *PresetLadder::makeCustomCard()
{
    auto *card = new CardButton(this);
    // The field inside is what Tab comes to.
    card->setFocusPolicy(Qt::NoFocus);
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(Look::Space::medium, 6, Look::Space::medium, 6);
    column->setSpacing(2);
    m_customTitle = new TextLabel(TextSize::caption, ColorRole::secondaryText, QFont::Medium);
    column->addWidget(m_customTitle);
    auto *line = new QHBoxLayout;
    line->setSpacing(6);
    m_customField = new TextField;
    m_customField->setProperty("kind", u"inline"_s);
    m_customField->setFixedWidth(customFieldWidth);
    line->addWidget(m_customField);
    auto *unit = new TextLabel;
    unit->setText(u"MB"_s);
    line->addWidget(unit);
    line->addStretch();
    column->addLayout(line);
    connect(card, &QAbstractButton::clicked, m_customField,
            [this] { m_customField->setFocus(Qt::MouseFocusReason); });
    connect(m_customField, &QLineEdit::textChanged, this, &PresetLadder::commitCustom);
    connect(m_customField, &QLineEdit::returnPressed, this, &PresetLadder::commitCustom);
    return card;
}

void PresetLadder::setSelectedMB(double megabytes)
{
    if (megabytes != m_selectedMB) {
        m_selectedMB = megabytes;
        refreshSoon();
    }
}

void PresetLadder::pick(double megabytes)
{
    setSelectedMB(megabytes);
    m_customField->clear();
    Q_EMIT picked(megabytes);
}

/// What isn't a size that can be asked for leaves the old target in force under the typed text.
void PresetLadder::commitCustom()
{
    refreshSoon();
    const auto typed = Text::toDouble(trimmedOfBlanks(m_customField->text()));
    if (typed && *typed > 0 && *typed <= mostMB && *typed != m_selectedMB) {
        setSelectedMB(*typed);
        Q_EMIT picked(*typed);
    }
}

void PresetLadder::refresh()
{
    for (qsizetype i = 0; i < m_presets.size(); ++i) {
        const SizePreset &preset = ladder.at(static_cast<std::size_t>(i));
        const PresetCard &card = m_presets.at(i);
        const QString name = t(preset.platformKey);
        card.name->setText(name);
        card.button->setAccessibleName(Fmt::mb(preset.mb) + u", "_s + name);
        card.button->setToolTip(t(preset.platformKey + ".note"_L1));
        card.button->setSelected(std::abs(m_selectedMB - preset.mb) < sameSize);
    }
    m_customTitle->setText(t(u"preset.custom"));
    m_customField->setWords(t(u"preset.custom") + u" (MB)"_s, t(u"target.custom.placeholder"));
    m_custom->setToolTip(t(u"preset.custom.note"));
    m_custom->setSelected(!m_customField->text().isEmpty());
}
