// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/SettingsSheet.h"

namespace {

constexpr int cardWidth = 620;

} // namespace

SettingsSheet::SettingsSheet(const ViewContext &context, QWidget *over) : Sheet(over, cardWidth)
{
    Q_UNUSED(context);
}
