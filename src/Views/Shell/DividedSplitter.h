// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSplitter>

/// Two regions one above the other with a divider between them, which can be dragged.
class DividedSplitter : public QSplitter
{
    Q_OBJECT

public:
    explicit DividedSplitter(QWidget *parent = nullptr);

protected:
    QSplitterHandle *createHandle() override;
};
