// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/MenuPicker.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QWheelEvent>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

/// Rows of the open menu with room to aim at; padding by stylesheet would let them overlap.
class RoomyRows : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, Look::Height::control});
    }
};

} // namespace

MenuPicker::MenuPicker(QWidget *parent) : QComboBox(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setItemDelegate(new RoomyRows(this));
    setMaxVisibleItems(16);
}

void MenuPicker::setWords(const QStringList &words)
{
    const QSignalBlocker quiet(this);
    const int shown = currentIndex();
    while (count() > words.size()) {
        removeItem(count() - 1);
    }
    for (int i = 0; i < words.size(); ++i) {
        if (i >= count()) {
            addItem(words.at(i));
        } else if (itemText(i) != words.at(i)) {
            setItemText(i, words.at(i));
        }
    }
    setCurrentIndex(shown < count() ? shown : -1);
}

void MenuPicker::setShown(int index)
{
    const QSignalBlocker quiet(this);
    setCurrentIndex(index);
}

void MenuPicker::paintEvent(QPaintEvent *event)
{
    QComboBox::paintEvent(event);
    QPainter painter(this);
    const int side = Look::SymbolSize::small - 1;
    const QColor ink =
        Look::color(isEnabled() ? ColorRole::secondaryText : ColorRole::disabledText);
    painter.drawPixmap(width() - side - 9, (height() - side) / 2,
                       Look::symbolPixmap(u"chevron.down"_s, ink, side, devicePixelRatioF()));
}

void MenuPicker::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
