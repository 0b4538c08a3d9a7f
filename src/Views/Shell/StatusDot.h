// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/Job.h"

#include <QWidget>

#include <optional>

class Spinner;
class SymbolView;

/// How a file's latest job stands: turning, done, failed, or nothing to tell. Always as large.
class StatusDot : public QWidget
{
    Q_OBJECT

public:
    explicit StatusDot(QWidget *parent = nullptr);

    void setOutcome(std::optional<Job::Outcome> outcome);

private:
    Spinner *m_spinner;
    SymbolView *m_symbol;
};
