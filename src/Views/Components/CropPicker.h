// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParams.h"
#include "Views/View.h"

#include <optional>

class IntegerField;
class MenuPicker;
class Switch;
class TextLabel;

/// Turns a crop on and off and picks its shape; a free one has a width and a height of its own.
class CropPicker : public View
{
    Q_OBJECT

public:
    explicit CropPicker(const ViewContext &context, QWidget *parent = nullptr);

    /// What turning it on begins with.
    static CropSpec freshSpec() { return {CropSpec::Aspect::ratio16x9, {}, {}}; }

    /// Absent is off. Tells nobody.
    void setCrop(const std::optional<CropSpec> &crop);
    const std::optional<CropSpec> &crop() const { return m_crop; }

Q_SIGNALS:
    /// The person has changed it.
    void changed(const std::optional<CropSpec> &crop);

protected:
    void refresh() override;

private:
    struct Side;
    static const Side widthSide;
    static const Side heightSide;

    QWidget *buildSizeFields();
    IntegerField *buildField(const Side &side);
    void showSize();
    void store(const std::optional<CropSpec> &crop);

    std::optional<CropSpec> m_crop;
    Switch *m_switch;
    MenuPicker *m_aspect;
    TextLabel *m_widthLabel;
    TextLabel *m_heightLabel;
    IntegerField *m_width;
    IntegerField *m_height;
    QWidget *m_size;
};
