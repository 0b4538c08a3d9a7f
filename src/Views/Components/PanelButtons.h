// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

class Button;

/// The last row of a panel: adds the job for the selected file, and where it makes sense for all.
class PanelButtons : public View
{
    Q_OBJECT

public:
    /// Whether the panel's action can be done to all files at once. The button for that is there
    /// from two files on.
    enum class AddAll { offered, notOffered };

    explicit PanelButtons(const ViewContext &context, AddAll addAll, QWidget *parent = nullptr);

    /// Whether there is something to add; counts for both buttons.
    void setEnabledToAdd(bool enabled);

Q_SIGNALS:
    void add();
    void addAll();

protected:
    void refresh() override;

private:
    const AddAll m_offer;
    bool m_isEnabledToAdd = true;
    Button *m_add;
    Button *m_addAll;
};
