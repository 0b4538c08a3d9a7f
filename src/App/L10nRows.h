// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/L10n.h"

#include <QStringView>

#include <span>
#include <vector>

/// What the dictionaries are made of. Everybody else reads the dictionaries.
namespace L10n {

/// One key with its text in each language. All three are literals, and live as long as the program.
struct Row {
    const char *key;
    QStringView english;
    QStringView chinese;
};

/// app, landing, action, preset.
std::span<const Row> startRows();

/// target, convert, compress, extract, trim, gif.
std::span<const Row> panelRows();

/// queue, settings, common, error.
std::span<const Row> queueRows();

/// advanced, file, watch, dropzone, preview, player, batch, notify.
std::span<const Row> detailRows();

/// enhance, merge, split, adjust.
std::span<const Row> editRows();

/// All rows, in the order of the functions above.
std::vector<Row> allRows();

/// The texts of one column by key, such as `dictionary(rows, &Row::english)`. A key that stands in
/// two rows is a mistake in the program, and ends it.
Dictionary dictionary(std::span<const Row> rows, QStringView Row::*column);

/// The text of the key in `preferred`, else in `fallback`, else the key itself.
QString lookUp(const QString &key, const Dictionary &preferred, const Dictionary &fallback);

} // namespace L10n
