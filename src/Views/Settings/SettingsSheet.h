// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/Sheet.h"
#include "Views/ViewContext.h"

class Button;
class SettingsSection;
class TextLabel;

/// Everything that is kept between runs. All controls act at once.
class SettingsSheet : public Sheet
{
    Q_OBJECT

public:
    /// Lies over the window of `over`.
    SettingsSheet(const ViewContext &context, QWidget *over);

private:
    QWidget *buildSections();
    QLayout *buildFooter();
    void addSection(SettingsSection *section, QLayout *column);
    void setWords();
    QList<QWidget *> chainStops();

    const ViewContext m_context;
    TextLabel *m_title;
    Button *m_done;
};
