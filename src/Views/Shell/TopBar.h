// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

#include <functional>

class Button;
class ElidedLabel;
class MenuPicker;
class QHBoxLayout;
class QMenu;
class Spinner;
class SymbolButton;

/// The row at the top of either page: the name, and what concerns the whole window.
class TopBar : public View
{
    Q_OBJECT

public:
    /// Shows or hides the floating drop zone.
    using ShowDropZone = std::function<void(bool visible)>;

    TopBar(const ViewContext &context, ShowDropZone showDropZone, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    void buildTitle(QHBoxLayout *row);
    void buildPickers(QHBoxLayout *row);
    void buildButtons(QHBoxLayout *row);
    void refreshTexts();
    void fillPresetMenu();
    void toggleDropZone();

    const ShowDropZone m_showDropZone;
    ElidedLabel *m_tagline;
    Spinner *m_reading;
    MenuPicker *m_language;
    Button *m_presets;
    QMenu *m_presetMenu;
    SymbolButton *m_dropZone;
    SymbolButton *m_queue;
    SymbolButton *m_settings;
};
