// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ViewFixture.h"

#include "Models/UserPreset.h"
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/PanelScroll.h"

#include <QLineEdit>

/// A panel alone in its window, with films at hand. The first job is held back until the test ends,
/// so that jobs can be looked at while they wait.
class PanelFixture : public ViewFixture
{
protected:
    /// Tools that offer these encoders beside the usual ones of the fake ffmpeg, which has libx264.
    void startWithFilm(const FilmFacts &facts = {})
    {
        installObedientFFmpeg();
        start();
        m_model->setQueuePaused(true);
        m_file = take(QStringLiteral("film.mp4"), facts);
    }

    template <typename Panel> void showPanel()
    {
        auto *scroll = new PanelScroll;
        scroll->setWidget(new Panel(context()));
        show(scroll, {780, 1200});
    }

    QLineEdit *field(const QString &name) { return find<QLineEdit>(name); }
    QAbstractButton *button(const QString &name) { return find<QAbstractButton>(name); }

    /// The parameters of the job that was added last.
    template <typename Params> Params lastJobParams() const
    {
        return m_model->jobs().isEmpty() ? Params()
                                         : std::get<Params>(m_model->jobs().last()->mode);
    }

    qint64 storedEstimate() const { return m_model->fileEstimates().value(m_file.id, -1); }

    static UserPreset preset(const PresetSpec &spec)
    {
        UserPreset preset;
        preset.name = QStringLiteral("Mine");
        preset.spec = spec;
        return preset;
    }

    VideoFile m_file;
};
