// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/TopBar.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QMenu>

#include <algorithm>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

constexpr int barHeight = 52;
constexpr int languageWidth = 130;
constexpr int mostItemWidth = 320;

/// Each language in its own words, whichever is in force.
QString nameOf(AppLanguage language)
{
    return language == AppLanguage::simplifiedChinese ? u"简体中文"_s : u"English"_s;
}

constexpr auto languages = allCases<AppLanguage>();

int indexOf(AppLanguage language)
{
    return static_cast<int>(std::ranges::find(languages, language) - languages.begin());
}

/// A name as it stands: menus read "&" as the mark of a shortcut and a tab as its beginning.
QString itemText(const QString &name, const QFontMetrics &metrics)
{
    return metrics.elidedText(name.simplified(), Qt::ElideMiddle, mostItemWidth)
        .replace(u'&', u"&&"_s);
}

} // namespace

TopBar::TopBar(const ViewContext &context, ShowDropZone showDropZone, QWidget *parent)
    : View(context, parent)
    , m_showDropZone(std::move(showDropZone))
{
    setFixedHeight(barHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Look::Space::large, 0, Look::Space::medium, 0);
    row->setSpacing(Look::Space::small);
    buildTitle(row);
    buildPickers(row);
    buildButtons(row);
    follow(&AppModel::probingCountChanged);
    follow(&AppModel::showDropZonePanelChanged);
}

void TopBar::buildTitle(QHBoxLayout *row)
{
    auto *title = new TextLabel(Look::TextSize::title, ColorRole::text, QFont::Bold);
    title->setText(u"Morvix"_s);
    m_tagline = new ElidedLabel(Qt::ElideRight, Look::TextSize::caption, ColorRole::secondaryText);
    row->addWidget(title);
    row->addWidget(m_tagline);
    row->addStretch();
}

void TopBar::buildPickers(QHBoxLayout *row)
{
    m_reading = new Spinner;
    m_language = new MenuPicker;
    m_language->setFixedWidth(languageWidth);
    QStringList names;
    for (const AppLanguage language : languages) {
        names += nameOf(language);
    }
    m_language->setWords(names);
    connect(m_language, &QComboBox::activated, this, [this](int index) {
        model().setLanguage(languages.at(static_cast<std::size_t>(index)));
    });
    m_presets = new Button(Button::Kind::quiet);
    m_presets->setSymbol(u"bookmark"_s);
    m_presetMenu = new QMenu(m_presets);
    m_presets->setMenu(m_presetMenu);
    connect(m_presetMenu, &QMenu::aboutToShow, this, &TopBar::fillPresetMenu);
    row->addWidget(m_reading);
    row->addWidget(m_language);
    row->addWidget(m_presets);
}

void TopBar::buildButtons(QHBoxLayout *row)
{
    m_dropZone = new SymbolButton(u"square.grid.2x2"_s);
    m_queue = new SymbolButton(u"list.bullet.rectangle"_s);
    m_settings = new SymbolButton(u"gearshape"_s);
    connect(m_dropZone, &QAbstractButton::clicked, this, &TopBar::toggleDropZone);
    connect(m_queue, &QAbstractButton::clicked, this,
            [this] { model().setShowQueue(!model().showQueue()); });
    connect(m_settings, &QAbstractButton::clicked, this, [this] { model().setShowSettings(true); });
    row->addWidget(m_dropZone);
    row->addWidget(m_queue);
    row->addWidget(m_settings);
}

void TopBar::refresh()
{
    refreshTexts();
    m_reading->setVisible(model().probingCount() > 0);
    m_dropZone->setSymbol(model().showDropZonePanel() ? u"square.grid.2x2.fill"_s
                                                      : u"square.grid.2x2"_s);
}

void TopBar::refreshTexts()
{
    m_tagline->setText(t(u"app.tagline"));
    m_reading->setToolTip(t(u"common.probing"));
    m_reading->setAccessibleName(t(u"common.probing"));
    m_language->setAccessibleName(t(u"settings.language"));
    m_language->setShown(indexOf(model().language()));
    m_presets->setWords(t(u"preset.menu"));
    m_dropZone->setWords(t(u"dropzone.show"));
    m_queue->setWords(t(u"queue.title"));
    m_settings->setWords(t(u"settings.title"));
}

void TopBar::fillPresetMenu()
{
    m_presetMenu->clear();
    const PresetStore *store = model().presets();
    const QList<UserPreset> presets = store ? store->presets() : QList<UserPreset>();
    if (presets.isEmpty()) {
        m_presetMenu->addAction(t(u"preset.none"))->setEnabled(false);
    }
    for (const UserPreset &preset : presets) {
        const QAction *item =
            m_presetMenu->addAction(itemText(preset.name, m_presetMenu->fontMetrics()));
        connect(item, &QAction::triggered, this, [this, preset] { model().applyPreset(preset); });
    }
}

void TopBar::toggleDropZone()
{
    const bool visible = !model().showDropZonePanel();
    model().setShowDropZonePanel(visible);
    if (m_showDropZone) {
        m_showDropZone(visible);
    }
}
