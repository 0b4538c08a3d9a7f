// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QWidget>

class Switch;
class TextLabel;

/// A switch with a line under its words that says when it is of use.
class HintedSwitch : public QWidget
{
    Q_OBJECT

public:
    explicit HintedSwitch(QWidget *parent = nullptr);

    void setWords(const QString &words, const QString &hint);
    /// Tells nobody.
    void setOn(bool on);

Q_SIGNALS:
    /// The person turned it.
    void turned(bool on);

private:
    Switch *m_switch;
    TextLabel *m_hint;
};
