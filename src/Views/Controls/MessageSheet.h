// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/Sheet.h"

#include <QString>

class Button;
class PanelScroll;
class QBoxLayout;
class TextLabel;

/// A message with one button, or a question with two. Answers at most once. A message that is
/// longer than the window is scrolled, with the mouse or by pages with the keys.
class MessageSheet : public Sheet
{
    Q_OBJECT

public:
    /// The button that only takes the sheet away.
    struct Words {
        QString title;
        QString message;
        QString dismissal;
        /// What the question is about to do; empty for a plain message.
        QString action;
    };

    MessageSheet(QWidget *over, const Words &words);

    /// The same in other words, as in another language. What was empty stays away.
    void setWords(const Words &words);

Q_SIGNALS:
    /// The person chose the action.
    void accepted();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QBoxLayout *buildButtons(bool isQuestion);

    TextLabel *m_title;
    TextLabel *m_message;
    PanelScroll *m_scroll;
    Button *m_dismissal = nullptr;
    Button *m_action = nullptr;
};
