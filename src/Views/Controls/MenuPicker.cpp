// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/MenuPicker.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QStyledItemDelegate>
#include <QWheelEvent>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

// Between the field and its words; the style's own.
constexpr int textInset = 1;

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

// To look after the rows earlier would make the list of the menu, which lays all of them out.
void MenuPicker::showPopup()
{
    if (!m_rows) {
        m_rows = new RoomyRows(this);
        setItemDelegate(m_rows);
    }
    QComboBox::showPopup();
}

// To measure all choices may bring in a font that none of those on the screen needs: a list of
// languages takes 10 ms by its Chinese alone.
std::optional<QSize> MenuPicker::fixedSize() const
{
    if (minimumWidth() != maximumWidth()) {
        return std::nullopt;
    }
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize words(0, fontMetrics().height() + 2);
    const QSize size = style()->sizeFromContents(QStyle::CT_ComboBox, &option, words, this);
    return QSize(minimumWidth(), size.height());
}

QSize MenuPicker::sizeHint() const
{
    const std::optional<QSize> fixed = fixedSize();
    return fixed ? *fixed : QComboBox::sizeHint();
}

QSize MenuPicker::minimumSizeHint() const
{
    const std::optional<QSize> fixed = fixedSize();
    return fixed ? *fixed : QComboBox::minimumSizeHint();
}

/// As the base class does it, but for words that are too long: it would cut them off in the middle
/// of a letter.
void MenuPicker::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const int room =
        style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this)
            .width();
    option.currentText =
        fontMetrics().elidedText(option.currentText, Qt::ElideRight, room - 2 * textInset);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
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
