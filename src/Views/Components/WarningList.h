// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/Estimator.h"
#include "Views/View.h"

#include <QList>

class SymbolView;
class TextLabel;

/// What the person should know before adding a job, a row each.
class WarningList : public View
{
    Q_OBJECT

public:
    explicit WarningList(const ViewContext &context, QWidget *parent = nullptr);

    /// An empty list shows nothing.
    void setWarnings(const QList<EstimateWarning> &warnings);

protected:
    void refresh() override;

private:
    struct Row {
        QWidget *whole;
        SymbolView *symbol;
        TextLabel *words;
    };

    Row addRow();
    static void show(const Row &row, const QString &message);
    QString message(const EstimateWarning &warning) const;

    QList<EstimateWarning> m_warnings;
    /// As many as were ever needed at once; those too many are hidden.
    QList<Row> m_rows;
};
