// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/StatusDot.h"

#include "Views/Controls/Spinner.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Look/Metrics.h"

using Look::ColorRole;
using Look::SymbolSize::small;
using namespace Qt::StringLiterals;

StatusDot::StatusDot(QWidget *parent)
    : QWidget(parent)
    , m_spinner(new Spinner(small, this))
    , m_symbol(new SymbolView(QString(), small, ColorRole::green, 0, this))
{
    setFixedSize(small, small);
    setOutcome(std::nullopt);
}

void StatusDot::setOutcome(std::optional<Job::Outcome> outcome)
{
    const bool isAtWork = outcome == Job::Outcome::analyzing || outcome == Job::Outcome::running;
    const bool isDone = outcome == Job::Outcome::finished;
    const bool hasFailed = outcome == Job::Outcome::failed;
    m_spinner->setVisible(isAtWork);
    m_symbol->setVisible(isDone || hasFailed);
    m_symbol->setSymbol(isDone ? u"checkmark.circle.fill"_s : u"xmark.circle.fill"_s);
    m_symbol->setColorRole(isDone ? ColorRole::green : ColorRole::red);
}
