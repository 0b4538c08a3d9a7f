// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/RawValues.h"

#include <QHash>
#include <QString>
#include <QStringList>

/// The languages that the program speaks. The system's own language is not asked.
enum class AppLanguage {
    english,
    simplifiedChinese,
};

template <> struct RawValues<AppLanguage> {
    static constexpr std::array table{
        RawValue{AppLanguage::english, QLatin1StringView("en")},
        RawValue{AppLanguage::simplifiedChinese, QLatin1StringView("zh-Hans")},
    };
};

/// The texts that people read, by key, in each language. All functions may be called on any thread.
namespace L10n {

/// Texts by key.
using Dictionary = QHash<QString, QString>;

/// The English texts. Built at first use, like the others, and never changed after.
const Dictionary &english();

/// The Chinese texts, under the same keys as the English ones.
const Dictionary &chinese();

/// The texts of that language.
const Dictionary &tables(AppLanguage language);

/// The text of that key in that language, else the English one, else the key itself. Placeholders
/// stand in it as they are.
QString t(const QString &key, AppLanguage language);

/// The template with its placeholders filled, in one pass, so that whatever stands in an argument
/// comes out as it is: "%1$@" is the first argument, "%@" the next one (the numbered placeholders
/// don't count) and "%%" a percent sign. A placeholder without an argument, and any other percent
/// sign, stays as it stands; arguments too many are ignored.
QString format(const QString &pattern, const QStringList &arguments);

} // namespace L10n
