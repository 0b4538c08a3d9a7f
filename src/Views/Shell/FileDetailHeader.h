// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

class BadgeChip;
class ElidedLabel;

/// What is known of the selected file. Shows the file last selected while there is none.
class FileDetailHeader : public View
{
    Q_OBJECT

public:
    explicit FileDetailHeader(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    void build();

    ElidedLabel *m_name;
    BadgeChip *m_hdr;
    BadgeChip *m_alpha;
    ElidedLabel *m_details;
};
