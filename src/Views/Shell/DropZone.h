// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/CardButton.h"
#include "Views/ViewContext.h"

class TextLabel;

/// The large field of the landing page: takes dropped films, and a click asks for some.
class DropZone : public CardButton
{
    Q_OBJECT

public:
    explicit DropZone(const ViewContext &context, QWidget *parent = nullptr);

    /// Whether a drag is over it.
    bool isTargeted() const { return m_isTargeted; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void build();
    void refreshTexts();
    void setTargeted(bool targeted);

    const ViewContext m_context;
    TextLabel *m_title;
    TextLabel *m_subtitle;
    bool m_isTargeted = false;
};
