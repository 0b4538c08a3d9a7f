// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/Estimator.h"
#include "Views/View.h"

#include <optional>

class BadgeChip;
class ElidedLabel;
class EstimateColumn;
class NumberLabel;
class QBoxLayout;
class WarningList;

/// What an action will make of the file: the size before and after, the saving, how the job will
/// run and what to beware of.
class EstimateCard : public View
{
    Q_OBJECT

public:
    explicit EstimateCard(const ViewContext &context, QWidget *parent = nullptr);

    /// `guaranteeMB` is the limit that the output is promised to keep, where there is one.
    void setEstimate(const EstimateInfo &estimate, std::optional<double> guaranteeMB = {});

protected:
    void refresh() override;

private:
    QBoxLayout *buildMainRow();
    void showSizes();
    void showGuarantee();

    EstimateInfo m_estimate;
    std::optional<double> m_guaranteeMB;
    EstimateColumn *m_original;
    EstimateColumn *m_estimated;
    NumberLabel *m_saving;
    BadgeChip *m_badge;
    ElidedLabel *m_guarantee;
    WarningList *m_warnings;
};
