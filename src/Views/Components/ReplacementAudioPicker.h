// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

#include <QUrl>

#include <optional>

class Button;
class ElidedLabel;

/// Asks for an audio file that takes the place of the film's sound, and takes it away again.
class ReplacementAudioPicker : public View
{
    Q_OBJECT

public:
    explicit ReplacementAudioPicker(const ViewContext &context, QWidget *parent = nullptr);

    /// Absent keeps the film's own sound. Tells nobody.
    void setURL(const std::optional<QUrl> &url);

Q_SIGNALS:
    void picked(const std::optional<QUrl> &url);

protected:
    void refresh() override;

private:
    void ask();

    std::optional<QUrl> m_url;
    Button *m_button;
    ElidedLabel *m_name;
};
