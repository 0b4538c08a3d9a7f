// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/ParameterPanel.h"

#include "Views/Components/AdvancedOptionsView.h"
#include "Views/Components/EstimateCard.h"
#include "Views/Components/PanelButtons.h"
#include "Views/Components/PreviewSection.h"
#include "Views/Components/SavePresetSheet.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/Disclosure.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ParameterPanel::ParameterPanel(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(Look::Space::small);
    follow(&AppModel::filesChanged);
    follow(&AppModel::selectedFileIDChanged);
    // The same preset applied again leaves the banner as it is.
    follow(&AppModel::appliedPresetChanged);
    follow(&AppModel::presetBannerChanged);
}

void ParameterPanel::addParts(std::initializer_list<QWidget *> parts)
{
    for (QWidget *part : parts) {
        m_column->addWidget(part);
    }
    m_column->addStretch();
}

void ParameterPanel::syncDefaults(const VideoFile &) {}

EstimateCard *ParameterPanel::makeEstimateCard()
{
    m_estimateCard = new EstimateCard(context());
    return m_estimateCard;
}

Disclosure *ParameterPanel::makeAdvanced(AdvancedOptions &options)
{
    m_advanced = &options;
    m_advancedView = new AdvancedOptionsView(context());
    connect(m_advancedView, &AdvancedOptionsView::changed, this,
            [this](const AdvancedOptions &changed) {
                *m_advanced = changed;
                parametersChanged();
            });
    m_advancedDisclosure = new Disclosure(m_advancedView);
    m_advancedDisclosure->setSymbol(u"slider.horizontal.3"_s);
    return m_advancedDisclosure;
}

PreviewSection *ParameterPanel::makePreview()
{
    m_preview = new PreviewSection(context());
    return m_preview;
}

QWidget *ParameterPanel::makeSaveRow()
{
    auto *row = new QWidget;
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    m_chips = new QHBoxLayout;
    m_chips->setSpacing(Look::Space::small);
    line->addLayout(m_chips);
    line->addStretch();
    m_saveButton = new Button(Button::Kind::small);
    m_saveButton->setSymbol(u"bookmark"_s);
    connect(m_saveButton, &QAbstractButton::clicked, this, &ParameterPanel::openSaveSheet);
    line->addWidget(m_saveButton);
    return row;
}

void ParameterPanel::openSaveSheet()
{
    new SavePresetSheet(context(), this, spec());
}

PanelButtons *ParameterPanel::makeButtons()
{
    m_buttons = new PanelButtons(context(), PanelButtons::AddAll::offered);
    connect(m_buttons, &PanelButtons::add, this,
            [this] { model().enqueue(mode(), AppModel::Scope::selectedFile); });
    connect(m_buttons, &PanelButtons::addAll, this,
            [this] { model().enqueue(mode(), AppModel::Scope::allFiles); });
    return m_buttons;
}

void ParameterPanel::refresh()
{
    const std::optional<VideoFile> file = model().selectedFile();
    if (!file) {
        return;
    }
    if (m_syncedFile != file->id) {
        m_syncedFile = file->id;
        syncDefaults(*file);
    }
    takeAppliedPreset();
    const EstimateInfo info = estimate(*file);
    storeEstimate(*file, info);
    showSharedParts(*file, info);
    showParameters(*file, info);
}

/// One application is taken up once; what is meant for another panel is left to it.
void ParameterPanel::takeAppliedPreset()
{
    const std::optional<UserPreset> &applied = model().appliedPreset();
    if (applied && take(applied->spec)) {
        model().setAppliedPreset(std::nullopt);
    }
}

void ParameterPanel::storeEstimate(const VideoFile &file, const EstimateInfo &info)
{
    const QString key = estimateKey(file);
    if (key != m_storedKey) {
        m_storedKey = key;
        model().setFileEstimate(file.id, info.estimatedBytes);
    }
}

void ParameterPanel::showSharedParts(const VideoFile &file, const EstimateInfo &info)
{
    if (m_estimateCard) {
        m_estimateCard->setEstimate(info, guaranteeMB());
    }
    if (m_advancedView) {
        m_advancedDisclosure->setWords(t(u"common.advanced"));
        m_advancedView->setFile(
            {.hasVideo = true, .isHDR = file.isHDR, .hasAlpha = file.hasAlphaChannel});
        m_advancedView->setOptions(*m_advanced);
    }
    if (m_preview) {
        m_preview->setFile(file);
    }
    if (m_saveButton) {
        m_saveButton->setWords(t(u"preset.save"));
    }
}
