// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QWidget>

class NumberLabel;
class TextLabel;

/// A size under its heading. As wide as any size that is usual, so that what stands beside it keeps
/// its place while the number changes.
class EstimateColumn : public QWidget
{
    Q_OBJECT

public:
    enum class Accent { plain, accented };

    explicit EstimateColumn(Accent accent = Accent::plain, QWidget *parent = nullptr);

    void setLabel(const QString &label);
    void setValue(const QString &value);

private:
    TextLabel *m_label;
    NumberLabel *m_value;
};
