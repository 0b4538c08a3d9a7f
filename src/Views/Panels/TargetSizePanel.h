// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Panels/ParameterPanel.h"

class BadgeChip;
class Card;
class PresetLadder;
class SecondsField;
class Switch;
class TextLabel;

/// Fits a film under a size.
class TargetSizePanel : public ParamsPanel<TargetSizeParams>
{
    Q_OBJECT

public:
    explicit TargetSizePanel(const ViewContext &context, QWidget *parent = nullptr);

protected:
    QString estimateKey(const VideoFile &file) const override;
    EstimateInfo estimate(const VideoFile &file) const override;
    std::optional<double> guaranteeMB() const override { return m_params.targetMB; }
    void showParameters(const VideoFile &file, const EstimateInfo &info) override;
    void showTaken() override;
    void syncDefaults(const VideoFile &file) override;
    /// With the skips as they stand in the fields, checked by nobody: the planner bounds them.
    TargetSizeParams effectiveParams() const override;

private:
    Card *buildOptions();
    QWidget *buildSkips();

    PresetLadder *m_ladder;
    Switch *m_muted = nullptr;
    Switch *m_exact = nullptr;
    TextLabel *m_exactUnavailable = nullptr;
    SecondsField *m_head = nullptr;
    SecondsField *m_tail = nullptr;
    PreviewSection *m_previewSection = nullptr;
    BadgeChip *m_hardware;
    PanelButtons *m_addButtons = nullptr;
};
