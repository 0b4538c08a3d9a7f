// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/TargetSizePanel.h"

#include "Engine/Text.h"
#include "Views/Components/EstimateCard.h"
#include "Views/Components/PanelButtons.h"
#include "Views/Components/PreviewSection.h"
#include "Views/Controls/BadgeChip.h"
#include "Views/Controls/Card.h"
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Panels/EstimateKey.h"
#include "Views/Panels/PresetLadder.h"
#include "Views/Panels/SecondsField.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using Look::ColorRole;
using Look::TextSize;
using namespace Qt::StringLiterals;

namespace {

// So much of a film must be left between the skips.
constexpr double leastRest = 0.2;

/// Such a target can't be met; the other warnings only warn.
bool isHopeless(const EstimateInfo &info)
{
    return std::any_of(info.warnings.begin(), info.warnings.end(),
                       [](const EstimateWarning &w) { return w.key == "target.warn.hopeless"_L1; });
}

QString wholeSeconds(std::optional<double> seconds)
{
    // Less than a second below 0 is cut to a 0 with a sign, which the sum takes away.
    return seconds ? Text::fixed(std::trunc(*seconds) + 0.0, 0) : QString();
}

} // namespace

TargetSizePanel::TargetSizePanel(const ViewContext &context, QWidget *parent)
    : ParamsPanel(context, parent)
    , m_ladder(new PresetLadder(context))
    , m_hardware(new BadgeChip(ColorRole::green))
{
    connect(m_ladder, &PresetLadder::picked, this, [this](double megabytes) {
        m_params.targetMB = megabytes;
        parametersChanged();
    });
    m_previewSection = makePreview();
    QWidget *saveRow = makeSaveRow();
    chips()->addWidget(m_hardware);
    m_addButtons = makeButtons();
    addParts({m_ladder, makeEstimateCard(), buildOptions(), makeAdvanced(m_params.advanced),
              m_previewSection, saveRow, m_addButtons});
}

Card *TargetSizePanel::buildOptions()
{
    auto *card = new Card;
    m_muted = new Switch;
    m_muted->setSymbol(u"speaker.slash"_s);
    connect(m_muted, &QAbstractButton::clicked, this, [this](bool on) {
        m_params.muted = on;
        parametersChanged();
    });
    m_exact = new Switch;
    m_exact->setSymbol(u"1.circle"_s);
    connect(m_exact, &QAbstractButton::clicked, this, [this](bool on) {
        m_params.exactTwoPass = on;
        parametersChanged();
    });
    m_exactUnavailable = new TextLabel(TextSize::caption, ColorRole::secondaryText);
    m_exactUnavailable->wrapping();
    // The switches reach over their tracks, which line up with what is below.
    QMargins margins = card->column()->contentsMargins();
    margins.setLeft(margins.left() - Switch::overhang);
    card->column()->setContentsMargins(margins);
    card->column()->setSpacing(Look::Space::small);
    card->column()->addWidget(m_muted);
    card->column()->addWidget(m_exact);
    m_exactUnavailable->setContentsMargins(Switch::overhang, 0, 0, 0);
    card->column()->addWidget(m_exactUnavailable);
    card->column()->addWidget(buildSkips());
    return card;
}

QWidget *TargetSizePanel::buildSkips()
{
    auto *row = new QWidget;
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(Switch::overhang, Look::Space::tiny, 0, 0);
    line->setSpacing(Look::Space::huge);
    m_head = new SecondsField;
    m_tail = new SecondsField;
    for (SecondsField *field : {m_head, m_tail}) {
        connect(field, &SecondsField::edited, this, [this] { parametersChanged(); });
        line->addWidget(field);
    }
    line->addStretch();
    return row;
}

TargetSizeParams TargetSizePanel::effectiveParams() const
{
    TargetSizeParams params = m_params;
    params.skipHeadSeconds = m_head->seconds();
    params.skipTailSeconds = m_tail->seconds();
    return params;
}

QString TargetSizePanel::estimateKey(const VideoFile &file) const
{
    return EstimateKey::joined({EstimateKey::number(m_params.targetMB),
                                EstimateKey::truth(m_params.muted),
                                EstimateKey::number(m_head->seconds()),
                                EstimateKey::number(m_tail->seconds()), EstimateKey::id(file.id)});
}

EstimateInfo TargetSizePanel::estimate(const VideoFile &file) const
{
    return Estimator::targetSize(file, effectiveParams());
}

void TargetSizePanel::syncDefaults(const VideoFile &file)
{
    // A choice of the exact mode survives a change of file: it is only ever switched on here.
    if (model().offersExactMode() && model().preferExactMode()) {
        m_params.exactTwoPass = true;
    }
    const double skipped = m_head->seconds().value_or(0) + m_tail->seconds().value_or(0);
    if (file.durationSeconds - leastRest <= skipped) {
        m_head->setText({});
        m_tail->setText({});
    }
}

void TargetSizePanel::showTaken()
{
    m_head->setText(wholeSeconds(m_params.skipHeadSeconds));
    m_tail->setText(wholeSeconds(m_params.skipTailSeconds));
}

void TargetSizePanel::showParameters(const VideoFile &file, const EstimateInfo &info)
{
    m_ladder->setSelectedMB(m_params.targetMB);
    m_muted->setWords(t(u"target.mute"));
    m_muted->setChecked(m_params.muted);
    m_muted->setEnabled(!file.audioStreams.isEmpty());
    m_exact->setWords(t(u"target.exact"));
    m_exact->setChecked(m_params.exactTwoPass);
    m_exact->setVisible(model().offersExactMode());
    m_exactUnavailable->setText(t(u"target.exact.unavailable"));
    m_exactUnavailable->setVisible(!model().offersExactMode());
    m_head->setWords(t(u"target.skip.head"));
    m_tail->setWords(t(u"target.skip.tail"));
    m_previewSection->setRequest(effectiveParams());
    m_hardware->setText(t(u"compress.hw.badge"));
    m_addButtons->setEnabledToAdd(!isHopeless(info));
}
