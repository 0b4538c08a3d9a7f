// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Settings/SettingsGroup.h"
#include "Views/View.h"

#include <QList>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

class SettingsRow;
class Switch;
class TextLabel;

/// A setting that is on or off.
struct SettingsToggle {
    const char16_t *words;
    bool (AppModel::*isOn)() const;
    void (AppModel::*turn)(bool on);
    void (AppModel::*changed)();
};

/// A heading with a card of settings under it.
class SettingsSection : public View
{
    Q_OBJECT

Q_SIGNALS:
    /// Rows have come, gone or moved.
    void rowsChanged();

protected:
    /// `heading` is the key of its words; null for none.
    SettingsSection(const ViewContext &context, const char16_t *heading, QWidget *parent);

    SettingsGroup *group() { return m_group; }
    /// Between the heading and the card.
    void addIntroduction(QWidget *introduction);
    /// A row with a switch that is kept up to date from here on.
    SettingsRow *addToggle(const SettingsToggle &toggle);
    void refresh() override;

    /// Brings the rows at the head of the card into line with the items: those whose id is still
    /// among them stay, the others go, `make` gives new ones. A row takes its item by setItem().
    template <typename Row, typename Item, typename Make>
    void showRows(QList<Row *> &rows, const QList<Item> &items, const Make &make);

private:
    struct ShownToggle {
        SettingsToggle toggle;
        SettingsRow *row;
        Switch *control;
    };

    void discard(QWidget *row);

    const char16_t *m_headingKey;
    TextLabel *m_heading;
    QVBoxLayout *m_column;
    SettingsGroup *m_group;
    QList<ShownToggle> m_toggles;
};

template <typename Row, typename Item, typename Make>
void SettingsSection::showRows(QList<Row *> &rows, const QList<Item> &items, const Make &make)
{
    const auto isStill = [&items](const Row *row) {
        return std::ranges::find(items, row->id(), &Item::id) != items.end();
    };
    const QList<Row *> before = rows;
    QList<Row *> spare;
    for (Row *row : before) {
        if (isStill(row)) {
            spare.append(row);
        } else {
            discard(row);
        }
    }
    rows.clear();
    for (const Item &item : items) {
        const auto known = std::ranges::find(spare, item.id, &Row::id);
        Row *row = known == spare.end() ? make() : *known;
        spare.removeOne(row);
        m_group->placeRow(static_cast<int>(rows.size()), row);
        row->setItem(item);
        rows.append(row);
    }
    if (rows != before) {
        Q_EMIT rowsChanged();
    }
}
