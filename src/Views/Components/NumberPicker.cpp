// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/NumberPicker.h"

using namespace Qt::StringLiterals;

NumberPicker::NumberPicker(const QList<Number> &numbers, const QString &pattern, QWidget *parent)
    : MenuPicker(parent)
    , m_numbers(numbers)
    , m_pattern(pattern)
{
    QStringList items;
    for (const Number number : numbers) {
        items += words(number);
    }
    setWords(items);
    connect(this, &QComboBox::activated, this,
            [this](int index) { Q_EMIT picked(m_numbers.at(index)); });
}

QString NumberPicker::words(Number number) const
{
    return number ? m_pattern.arg(*number) : u"—"_s;
}

void NumberPicker::setNumber(Number number)
{
    // Shown only while the number is none of the list.
    setPlaceholderText(words(number));
    setShown(static_cast<int>(m_numbers.indexOf(number)));
}
