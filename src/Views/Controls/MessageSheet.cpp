// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/MessageSheet.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

namespace {

constexpr int cardWidth = 360;

} // namespace

MessageSheet::MessageSheet(QWidget *over, const Words &words)
    : Sheet(over, cardWidth)
    , m_title(new TextLabel(Look::TextSize::headline, Look::ColorRole::text, QFont::DemiBold))
    , m_message(new TextLabel)
{
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column()->addWidget(m_title->wrapping());
    column()->addWidget(m_message->wrapping());
    column()->addSpacing(Look::Space::tiny);
    column()->addLayout(buildButtons(!words.action.isEmpty()));
    setWords(words);
    m_message->setVisible(!words.message.isEmpty());
}

QBoxLayout *MessageSheet::buildButtons(bool isQuestion)
{
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Look::Space::small);
    buttons->addStretch();
    m_dismissal = new Button(isQuestion ? Button::Kind::plain : Button::Kind::prominent);
    connect(m_dismissal, &QAbstractButton::clicked, this, &Sheet::dismiss);
    buttons->addWidget(m_dismissal);
    if (isQuestion) {
        m_action = new Button(Button::Kind::destructive);
        connect(m_action, &QAbstractButton::clicked, this, [this] {
            dismiss();
            Q_EMIT accepted();
        });
        buttons->addWidget(m_action);
    }
    return buttons;
}

void MessageSheet::setWords(const Words &words)
{
    setAccessibleName(words.title);
    m_title->setText(words.title);
    m_message->setText(words.message);
    m_dismissal->setWords(words.dismissal);
    if (m_action) {
        m_action->setWords(words.action);
    }
}
