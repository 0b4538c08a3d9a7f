// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/UserPreset.h"
#include "Views/Controls/Sheet.h"
#include "Views/ViewContext.h"

class Button;
class QBoxLayout;
class TextField;
class TextLabel;

/// Asks for a name and saves parameters under it, with the output folder that is in force then.
class SavePresetSheet : public Sheet
{
    Q_OBJECT

public:
    SavePresetSheet(const ViewContext &context, QWidget *over, const PresetSpec &spec);

private:
    QBoxLayout *buildButtons();
    void setWords();
    /// Without blanks at both ends.
    QString name() const;
    void save();

    const ViewContext m_context;
    const PresetSpec m_spec;
    TextLabel *m_title;
    TextField *m_name;
    Button *m_cancel;
    Button *m_save;
};
