// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QVBoxLayout>
#include <QWidget>

class Switch;
class TextLabel;

/// One setting: what it is called at the left, its control at the right. A click anywhere on the
/// row of a switch turns it.
class SettingsRow : public QWidget
{
    Q_OBJECT

public:
    /// Takes the control, which may also be a text or several buttons.
    explicit SettingsRow(QWidget *control, QWidget *parent = nullptr);

    /// The name of the setting, which is the accessible name of a control too.
    void setWords(const QString &words);
    /// Puts something under the name, and takes it.
    void setDetail(QWidget *detail);

    /// The padding and least height that all rows share.
    static void dress(QWidget *row, QLayout *layout);
    /// The same for an entry of a list, which ends in a button that shows a symbol alone.
    static void dressList(QWidget *row, QLayout *layout);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QWidget *m_control;
    Switch *m_switch;
    TextLabel *m_words;
    QVBoxLayout *m_left;
};
