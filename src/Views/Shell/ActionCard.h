// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Views/Controls/CardButton.h"
#include "Views/ViewContext.h"

class TextLabel;

/// An action on the landing page. A click chooses it, and does nothing else: there is no file yet.
/// The chosen one is tinted.
class ActionCard : public CardButton
{
    Q_OBJECT

public:
    enum class Size { plain, hero };

    ActionCard(const ViewContext &context, ActionKind kind, Size size, QWidget *parent = nullptr);

    ActionKind kind() const { return m_kind; }
    Size cardSize() const { return m_size; }
    /// Whether the pointer is over it.
    bool isHovered() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void build();
    void refreshTexts();
    void refreshChoice();

    const ViewContext m_context;
    const ActionKind m_kind;
    const Size m_size;
    TextLabel *m_title;
    TextLabel *m_subtitle;
};
