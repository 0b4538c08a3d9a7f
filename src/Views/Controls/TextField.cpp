// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/TextField.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QSignalBlocker>

TextField::TextField(QWidget *parent) : QLineEdit(parent) {}

void TextField::setShown(const QString &text)
{
    if (text != this->text()) {
        const QSignalBlocker quiet(this);
        setText(text);
    }
}

void TextField::setWords(const QString &name, const QString &prompt)
{
    setAccessibleName(name);
    setPlaceholderText(prompt);
}

void TextField::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls()) {
        event->ignore();
    } else {
        QLineEdit::dragEnterEvent(event);
    }
}

IntegerField::IntegerField(QWidget *parent) : TextField(parent)
{
    connect(this, &QLineEdit::textEdited, this, [this](const QString &text) {
        bool isNumber = false;
        const int value = text.trimmed().toInt(&isNumber);
        if (isNumber) {
            Q_EMIT entered(value);
        }
    });
    connect(this, &QLineEdit::editingFinished, this, &IntegerField::committed);
}

void IntegerField::setValue(int value)
{
    setShown(QString::number(value));
}
