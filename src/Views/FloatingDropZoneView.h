// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/QuickAction.h"

#include <QWidget>

#include <optional>
#include <vector>

class AppModel;
class DropTarget;
class TextLabel;

/// What the floating drop zone shows: a hint over five fields, each of which runs its quick action
/// on the files that are dropped on it.
class FloatingDropZoneView : public QWidget
{
    Q_OBJECT

public:
    explicit FloatingDropZoneView(AppModel &appModel, QWidget *parent = nullptr);

    /// The action over which files hover.
    std::optional<QuickAction> hovered() const { return m_hovered; }

private:
    struct Field {
        QuickAction action;
        QString titleKey;
        DropTarget *target;
    };

    QWidget *buildFields();
    DropTarget *buildField(QuickAction action, const QString &symbolName);
    void setHovered(std::optional<QuickAction> action);
    void refreshTexts();

    AppModel &m_appModel;
    TextLabel *m_hint;
    std::vector<Field> m_fields;
    std::optional<QuickAction> m_hovered;
};
