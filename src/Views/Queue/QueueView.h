// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

/// The strip below the workspace that shows every job.
class QueueView : public View
{
    Q_OBJECT

public:
    explicit QueueView(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;
};
