// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/CardButton.h"
#include "Views/ViewContext.h"

class FileDrop;
class TextLabel;

/// The large field of the landing page: takes dropped films, and a click asks for some.
class DropZone : public CardButton
{
    Q_OBJECT

public:
    explicit DropZone(const ViewContext &context, QWidget *parent = nullptr);

    /// Whether a drag is over it.
    bool isTargeted() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void build();
    void refreshTexts();

    const ViewContext m_context;
    FileDrop *m_drop;
    TextLabel *m_title;
    TextLabel *m_subtitle;
};
