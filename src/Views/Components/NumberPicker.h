// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/MenuPicker.h"

#include <QList>
#include <QString>

#include <optional>

/// One of a few numbers from a menu, or none, which reads as a dash. Any other number is shown as
/// well; it can't be picked.
class NumberPicker : public MenuPicker
{
    Q_OBJECT

public:
    using Number = std::optional<qint64>;

    /// `pattern` has a place "%1" for the number.
    explicit NumberPicker(const QList<Number> &numbers,
                          const QString &pattern = QStringLiteral("%1"), QWidget *parent = nullptr);

    /// Tells nobody.
    void setNumber(Number number);

Q_SIGNALS:
    /// The person picked one, perhaps the one that was shown.
    void picked(std::optional<qint64> number);

private:
    QString words(Number number) const;

    const QList<Number> m_numbers;
    const QString m_pattern;
};
