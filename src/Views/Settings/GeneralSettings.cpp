// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/GeneralSettings.h"

#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Settings/SettingsRow.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct LanguageName {
    AppLanguage language;
    QStringView name;
};

// Each in itself, whatever language is in force: whoever took a wrong one finds the way back.
constexpr std::array languages{LanguageName{AppLanguage::english, u"English"},
                               LanguageName{AppLanguage::simplifiedChinese, u"简体中文"}};
static_assert(languages.size() == allCases<AppLanguage>().size());

constexpr SettingsToggle sound{u"settings.sound", &AppModel::playDoneSound,
                               &AppModel::setPlayDoneSound, &AppModel::playDoneSoundChanged};
constexpr SettingsToggle structure{u"batch.structure", &AppModel::keepFolderStructure,
                                   &AppModel::setKeepFolderStructure,
                                   &AppModel::keepFolderStructureChanged};
constexpr SettingsToggle notification{u"notify.finish", &AppModel::notifyOnFinish,
                                      &AppModel::setNotifyOnFinish,
                                      &AppModel::notifyOnFinishChanged};

constexpr qint64 mostJobs = 3;

} // namespace

GeneralSettings::GeneralSettings(const ViewContext &context, QWidget *parent)
    : SettingsSection(context, nullptr, parent)
    , m_language(new MenuPicker)
    , m_concurrency(new SegmentedPicker)
    , m_languageRow(buildLanguage())
    , m_concurrencyRow(buildConcurrency())
{
    group()->addRow(m_languageRow);
    addToggle(sound);
    group()->addRow(m_concurrencyRow);
    addToggle(structure);
    addToggle(notification);
    follow(&AppModel::queueConcurrencyChanged);
}

SettingsRow *GeneralSettings::buildLanguage()
{
    for (const LanguageName &entry : languages) {
        m_language->addItem(entry.name.toString());
    }
    connect(m_language, &QComboBox::activated, this, [this](int index) {
        model().setLanguage(languages.at(static_cast<std::size_t>(index)).language);
    });
    return new SettingsRow(m_language);
}

SettingsRow *GeneralSettings::buildConcurrency()
{
    QStringList counts;
    for (qint64 count = 1; count <= mostJobs; ++count) {
        counts += QString::number(count);
    }
    m_concurrency->setItems(counts);
    connect(m_concurrency, &SegmentedPicker::picked, this,
            [this](int index) { model().setQueueConcurrency(index + 1); });
    return new SettingsRow(m_concurrency);
}

void GeneralSettings::refresh()
{
    SettingsSection::refresh();
    m_languageRow->setWords(t(u"settings.language"));
    m_concurrencyRow->setWords(t(u"settings.concurrency"));
    const auto *const inForce =
        std::ranges::find(languages, model().language(), &LanguageName::language);
    m_language->setShown(static_cast<int>(inForce - languages.begin()));
    // The store may hold any number; what lies outside acts as the nearer end.
    const qint64 count = std::clamp<qint64>(model().queueConcurrency(), 1, mostJobs);
    m_concurrency->setCurrentIndex(static_cast<int>(count) - 1);
}
