// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/Job.h"

#include <QString>
#include <QWidget>

class AppModel;
class ElidedLabel;
class NumberLabel;
class ProgressBar;
class Spinner;

/// How a job stands, in one line.
class JobStatusLine : public QWidget
{
    Q_OBJECT

public:
    explicit JobStatusLine(QWidget *parent = nullptr);

    /// The words come in the model's language.
    void setState(const Job::State &state, const AppModel &model);

private:
    void showProgress(const Job::Running *running);
    void showResult(const Job::Finished *result, const AppModel &model);
    void showFailure(const QString &words);

    Spinner *m_spinner;
    ProgressBar *m_bar;
    NumberLabel *m_percent;
    ElidedLabel *m_words;
    NumberLabel *m_sizes;
    NumberLabel *m_saved;
    ElidedLabel *m_note;
};
