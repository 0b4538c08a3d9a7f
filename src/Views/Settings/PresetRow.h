// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/UserPreset.h"

#include <QUuid>
#include <QWidget>

class ElidedLabel;
class SymbolButton;

/// One preset of the user, which can be thrown away.
class PresetRow : public QWidget
{
    Q_OBJECT

public:
    explicit PresetRow(QWidget *parent = nullptr);

    const QUuid &id() const { return m_id; }
    void setItem(const UserPreset &preset);
    /// What throwing away is called.
    void setWords(const QString &words);

Q_SIGNALS:
    /// The person wants it gone.
    void thrownAway(const QUuid &id);

private:
    QUuid m_id;
    ElidedLabel *m_name;
    SymbolButton *m_trash;
};
