// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>

class QWidget;

/// What a person would notice at a glance in a window, found by measuring. Each gives one line a
/// finding.
namespace LayoutCheck {

/// Visible words that don't fit their place.
QStringList clippedTexts(const QWidget *window);
/// Visible parts of one parent that cover each other.
QStringList overlaps(const QWidget *window);
/// Parts that can have the focus and say nothing to who can't see them.
QStringList namelessControls(const QWidget *window);
/// Enabled controls that going round with Tab doesn't come to.
QStringList unreachableControls(QWidget *window);

} // namespace LayoutCheck
