// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/MessageSheet.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/PanelScroll.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

constexpr int cardWidth = 360;

/// A text as high as it is, and scrolled where there is no room for that: what a program says of
/// its failure may be longer than a window.
class MessageScroll : public PanelScroll
{
public:
    MessageScroll(QWidget *text, int width) : m_text(text), m_width(width)
    {
        setWidget(text);
        // The area has what it scrolls painted in the window's colour, and this stands on a card.
        text->setAutoFillBackground(false);
        setFixedWidth(width);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum);
    }

    QSize sizeHint() const override { return {m_width, m_text->heightForWidth(m_width)}; }
    QSize minimumSizeHint() const override { return {m_width, 0}; }

private:
    QWidget *m_text;
    int m_width;
};

} // namespace

MessageSheet::MessageSheet(QWidget *over, const Words &words)
    : Sheet(over, cardWidth)
    , m_title(new TextLabel(Look::TextSize::headline, Look::ColorRole::text, QFont::DemiBold))
    , m_message(new TextLabel)
    , m_scroll(new MessageScroll(m_message->wrapping(), cardWidth - 2 * Look::Space::huge))
{
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column()->addWidget(m_title->wrapping());
    column()->addWidget(m_scroll);
    column()->addSpacing(Look::Space::tiny);
    column()->addLayout(buildButtons(!words.action.isEmpty()));
    setWords(words);
    m_scroll->setVisible(!words.message.isEmpty());
}

void MessageSheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown) {
        const bool isUp = event->key() == Qt::Key_PageUp;
        m_scroll->verticalScrollBar()->triggerAction(isUp ? QScrollBar::SliderPageStepSub
                                                          : QScrollBar::SliderPageStepAdd);
    }
    Sheet::keyPressEvent(event);
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
    m_scroll->updateGeometry();
    m_dismissal->setWords(words.dismissal);
    if (m_action) {
        m_action->setWords(words.action);
    }
}
