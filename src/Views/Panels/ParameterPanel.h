// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/Estimator.h"
#include "Models/JobMode.h"
#include "Models/UserPreset.h"
#include "Views/View.h"

#include <QUuid>

#include <initializer_list>
#include <optional>
#include <variant>

class AdvancedOptionsView;
class Disclosure;
class EstimateCard;
class PanelButtons;
class PreviewSection;
class QHBoxLayout;
class QVBoxLayout;

/// What all panels with parameters do: one refresh that shows the selected file and the parameters,
/// the estimate that feeds the list of files, the uptake of an applied preset, and the shared rows.
/// A panel makes its parts in its constructor and answers a few questions; see ParamsPanel.
class ParameterPanel : public View
{
    Q_OBJECT

protected:
    ParameterPanel(const ViewContext &context, QWidget *parent);

    // What each panel answers.

    /// A text that differs whenever what the list of files shows of the estimate may differ.
    virtual QString estimateKey(const VideoFile &file) const = 0;
    virtual EstimateInfo estimate(const VideoFile &file) const = 0;
    /// The size that the estimate card promises to keep; absent where nothing is promised.
    virtual std::optional<double> guaranteeMB() const { return std::nullopt; }
    /// Writes the parameters and the texts into the panel's own parts.
    virtual void showParameters(const VideoFile &file, const EstimateInfo &info) = 0;
    /// Copies the parameters of a preset of the panel's own kind; false for any other.
    virtual bool take(const PresetSpec &spec) = 0;
    /// What a preset saved now would hold, and what a job added now would do.
    virtual PresetSpec spec() const = 0;
    virtual JobMode mode() const = 0;
    /// Runs as the panel appears and as another file is selected.
    virtual void syncDefaults(const VideoFile &file);

    // The shared parts, each made at most once and added by the panel where it belongs.

    /// Puts the parts below each other, in that order.
    void addParts(std::initializer_list<QWidget *> parts);
    EstimateCard *makeEstimateCard();
    /// The disclosure with the advanced options, which live in the panel's parameters.
    Disclosure *makeAdvanced(AdvancedOptions &options);
    PreviewSection *makePreview();
    /// The button that saves a preset at the right, and room for chips at the left.
    QWidget *makeSaveRow();
    QHBoxLayout *chips() const { return m_chips; }
    PanelButtons *makeButtons();

    /// Shows anew whatever depends on the parameters. Called after each change of theirs.
    void parametersChanged() { refreshSoon(); }

    void refresh() final;

private:
    void takeAppliedPreset();
    void storeEstimate(const VideoFile &file, const EstimateInfo &info);
    void showSharedParts(const VideoFile &file, const EstimateInfo &info);
    void openSaveSheet();

    QVBoxLayout *m_column;
    EstimateCard *m_estimateCard = nullptr;
    Disclosure *m_advancedDisclosure = nullptr;
    AdvancedOptionsView *m_advancedView = nullptr;
    AdvancedOptions *m_advanced = nullptr;
    PreviewSection *m_preview = nullptr;
    QHBoxLayout *m_chips = nullptr;
    class Button *m_saveButton = nullptr;
    PanelButtons *m_buttons = nullptr;

    /// The file that the defaults were set for.
    std::optional<QUuid> m_syncedFile;
    std::optional<QString> m_storedKey;
};

/// A panel whose parameters are one record, which is also what its presets and its jobs hold.
template <typename Params> class ParamsPanel : public ParameterPanel
{
protected:
    using ParameterPanel::ParameterPanel;

    /// The parameters as a job would get them, where the panel's controls hold some as text.
    virtual Params effectiveParams() const { return m_params; }
    /// Called after a preset has been copied, for controls that hold parameters as text.
    virtual void showTaken() {}

    bool take(const PresetSpec &spec) final
    {
        const auto *params = std::get_if<Params>(&spec);
        if (!params) {
            return false;
        }
        m_params = *params;
        showTaken();
        return true;
    }

    PresetSpec spec() const final { return effectiveParams(); }
    JobMode mode() const final { return effectiveParams(); }

    Params m_params;
};
