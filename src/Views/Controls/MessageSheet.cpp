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

MessageSheet::MessageSheet(QWidget *over, const Words &words) : Sheet(over, cardWidth)
{
    setAccessibleName(words.title);
    auto *title = new TextLabel(Look::TextSize::headline, Look::ColorRole::text, QFont::DemiBold);
    title->setText(words.title);
    title->wrapping();
    column()->addWidget(title);
    if (!words.message.isEmpty()) {
        auto *message = new TextLabel;
        message->setText(words.message);
        message->wrapping();
        message->setTextInteractionFlags(Qt::TextSelectableByMouse);
        column()->addWidget(message);
    }
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Look::Space::small);
    buttons->addStretch();
    const bool isQuestion = !words.action.isEmpty();
    auto *dismissal = new Button(isQuestion ? Button::Kind::plain : Button::Kind::prominent);
    dismissal->setWords(words.dismissal);
    connect(dismissal, &QAbstractButton::clicked, this, &Sheet::dismiss);
    buttons->addWidget(dismissal);
    if (isQuestion) {
        auto *action = new Button(Button::Kind::destructive);
        action->setWords(words.action);
        connect(action, &QAbstractButton::clicked, this, [this] {
            dismiss();
            Q_EMIT accepted();
        });
        buttons->addWidget(action);
    }
    column()->addSpacing(Look::Space::tiny);
    column()->addLayout(buttons);
}
