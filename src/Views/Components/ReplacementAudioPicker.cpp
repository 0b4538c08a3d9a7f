// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/ReplacementAudioPicker.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/FileDialogs.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QPointer>

ReplacementAudioPicker::ReplacementAudioPicker(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_button(new Button)
    , m_name(
          new ElidedLabel(Qt::ElideMiddle, Look::TextSize::caption, Look::ColorRole::secondaryText))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Space::medium);
    row->addWidget(m_button);
    row->addWidget(m_name, 1);
    connect(m_button, &QAbstractButton::clicked, this, [this] {
        if (m_url) {
            Q_EMIT picked(std::nullopt);
        } else {
            ask();
        }
    });
}

void ReplacementAudioPicker::setURL(const std::optional<QUrl> &url)
{
    if (url != m_url) {
        m_url = url;
        refreshSoon();
    }
}

/// The panel may be gone by the time the person has chosen.
void ReplacementAudioPicker::ask()
{
    const auto take = [self = QPointer(this)](const QList<QUrl> &urls) {
        if (self) {
            Q_EMIT self->picked(urls.first());
        }
    };
    context().dialogs.openFiles(this, FileDialogs::Kind::audio, FileDialogs::Count::one, take);
}

void ReplacementAudioPicker::refresh()
{
    m_button->setWords(t(m_url ? u"advanced.replaceaudio.clear" : u"advanced.replaceaudio"));
    m_name->setText(m_url ? m_url->fileName(QUrl::FullyDecoded) : QString());
}
