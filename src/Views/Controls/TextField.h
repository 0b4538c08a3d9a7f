// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QLineEdit>

/// A field for one line of text.
class TextField : public QLineEdit
{
    Q_OBJECT

public:
    explicit TextField(QWidget *parent = nullptr);

    /// Puts text there only when it differs, so that the cursor stays; tells nobody.
    void setShown(const QString &text);
    /// The field's accessible name and, where `prompt` is given, what an empty one shows.
    void setWords(const QString &name, const QString &prompt = {});

protected:
    /// Leaves files to the view around it: their paths as text are of use to nobody.
    void dragEnterEvent(QDragEnterEvent *event) override;
};

/// A field for a whole number. What isn't one counts as not typed yet.
class IntegerField : public TextField
{
    Q_OBJECT

public:
    explicit IntegerField(QWidget *parent = nullptr);

    void setValue(int value);

Q_SIGNALS:
    /// The person has typed a number.
    void entered(int value);
    /// The person is done with the field.
    void committed();
};
