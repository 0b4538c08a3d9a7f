// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/TextField.h"

#include <QWidget>

#include <optional>

class TextLabel;

/// A number of seconds that may be left out, with what it is for before it. Held as typed.
class SecondsField : public QWidget
{
    Q_OBJECT

public:
    explicit SecondsField(QWidget *parent = nullptr);

    void setWords(const QString &words);
    QString text() const { return m_field->text(); }
    /// Tells nobody.
    void setText(const QString &text) { m_field->setShown(text); }
    /// Absent unless the whole text, without blanks around it, is a number.
    std::optional<double> seconds() const;

Q_SIGNALS:
    void edited();

private:
    TextLabel *m_label;
    TextField *m_field;
};
