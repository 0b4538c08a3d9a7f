// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Queue/JobStatusLine.h"

#include "App/AppModel.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/NumberLabel.h"
#include "Views/Controls/ProgressBar.h"
#include "Views/Controls/Spinner.h"
#include "Views/Look/Metrics.h"
#include "Views/Queue/JobFacts.h"

#include <QHBoxLayout>
#include <QTextDocument> // Qt::convertFromPlainText

using namespace Qt::StringLiterals;
using Look::ColorRole;
using Look::TextSize;

namespace {

// Long enough to see half a percent move, short enough to keep the number near the name.
constexpr int barWidth = 320;

/// The words of the states that are no more than a word.
QString keyOf(Job::Outcome outcome)
{
    switch (outcome) {
    case Job::Outcome::queued:
        return u"queue.status.queued"_s;
    case Job::Outcome::analyzing:
        return u"queue.status.analyzing"_s;
    case Job::Outcome::failed:
        return u"queue.status.failed"_s;
    case Job::Outcome::cancelled:
        return u"queue.status.cancelled"_s;
    case Job::Outcome::running:
    case Job::Outcome::finished:
        break;
    }
    return {};
}

QString oneLine(QString text)
{
    return text.replace(u'\n', u' ').replace(u'\r', u' ');
}

} // namespace

JobStatusLine::JobStatusLine(QWidget *parent)
    : QWidget(parent)
    , m_spinner(new Spinner(Look::SymbolSize::small))
    , m_bar(new ProgressBar)
    , m_percent(new NumberLabel(TextSize::body, ColorRole::secondaryText))
    , m_words(new ElidedLabel(Qt::ElideRight, TextSize::body, ColorRole::secondaryText))
    , m_sizes(new NumberLabel(TextSize::body, ColorRole::secondaryText))
    , m_saved(new NumberLabel(TextSize::body, ColorRole::green))
    , m_note(new ElidedLabel(Qt::ElideRight, TextSize::caption, ColorRole::secondaryText))
{
    m_bar->setMaximumWidth(barWidth);
    m_percent->setText(JobFacts::percent(1));
    m_percent->setMinimumWidth(m_percent->sizeHint().width());
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Look::Space::small);
    line->addWidget(m_spinner);
    line->addWidget(m_bar, 1);
    line->addWidget(m_percent);
    line->addWidget(m_words);
    line->addWidget(m_sizes);
    line->addWidget(m_saved);
    line->addWidget(m_note, 0, Qt::AlignBottom);
    line->addStretch();
}

void JobStatusLine::setState(const Job::State &state, const AppModel &model)
{
    const Job::Outcome outcome = Job::outcome(state);
    m_spinner->setVisible(outcome == Job::Outcome::analyzing);
    showProgress(std::get_if<Job::Running>(&state));
    showResult(std::get_if<Job::Finished>(&state), model);
    const QString key = keyOf(outcome);
    m_words->setVisible(!key.isEmpty());
    if (const auto *failed = std::get_if<Job::Failed>(&state)) {
        showFailure(model.t(key) + u": "_s + failed->message);
    } else if (!key.isEmpty()) {
        m_words->setColorRole(ColorRole::secondaryText);
        m_words->setText(model.t(key));
        m_words->setToolTip({});
    }
}

void JobStatusLine::showProgress(const Job::Running *running)
{
    m_bar->setVisible(running != nullptr);
    m_percent->setVisible(running != nullptr);
    if (running) {
        m_bar->setValue(running->progress);
        m_percent->setText(JobFacts::percent(running->progress));
    }
}

void JobStatusLine::showResult(const Job::Finished *result, const AppModel &model)
{
    const auto saved = result ? JobFacts::saved(*result) : std::nullopt;
    m_sizes->setVisible(result != nullptr);
    m_saved->setVisible(saved.has_value());
    m_note->setVisible(result && result->note);
    if (result) {
        m_sizes->setText(JobFacts::sizes(*result));
        m_saved->setText(saved ? model.tf(u"queue.saved"_s, *saved) : QString());
        m_note->setText(result->note.value_or(QString()));
    }
}

/// ffmpeg's words may have several lines; all of them stand in the tooltip.
void JobStatusLine::showFailure(const QString &words)
{
    m_words->setColorRole(ColorRole::red);
    m_words->setText(oneLine(words));
    // As formatted text, so that it is broken into lines and no "<" in it is taken for a tag.
    m_words->setToolTip(Qt::convertFromPlainText(words, Qt::WhiteSpaceNormal));
}
