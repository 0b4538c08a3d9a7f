// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/StyleSheet.h"

#include "Views/Look/Colors.h"
#include <array>

using namespace Qt::StringLiterals;

namespace Look {
namespace {

struct Word {
    QLatin1StringView name;
    ColorRole role;
};

// A rule names a colour as @name. No name may be the beginning of a later one.
constexpr auto words = std::to_array<Word>({
    {"@accentFillHover"_L1, ColorRole::accentFillHover},
    {"@accentFill"_L1, ColorRole::accentFill},
    {"@accentTint"_L1, ColorRole::accentTint},
    {"@accent"_L1, ColorRole::accent},
    {"@onAccent"_L1, ColorRole::onAccent},
    {"@card"_L1, ColorRole::card},
    {"@controlHover"_L1, ColorRole::controlHover},
    {"@control"_L1, ColorRole::control},
    {"@disabledText"_L1, ColorRole::disabledText},
    {"@field"_L1, ColorRole::field},
    {"@green"_L1, ColorRole::green},
    {"@hairline"_L1, ColorRole::hairline},
    {"@outline"_L1, ColorRole::outline},
    {"@red"_L1, ColorRole::red},
    {"@secondaryText"_L1, ColorRole::secondaryText},
    {"@text"_L1, ColorRole::text},
    {"@track"_L1, ColorRole::track},
});

constexpr QLatin1StringView buttonRules(R"(
QPushButton { background: @control; color: @text; border: 1px solid @outline; border-radius: 6px;
    padding: 0 11px; min-height: 28px; }
QPushButton:hover { background: @controlHover; }
QPushButton:pressed, QPushButton:open { background: @track; }
QPushButton:focus { border: 2px solid @accent; padding: 0 10px; min-height: 26px; }
QPushButton:disabled { color: @disabledText; border-color: @hairline; background: transparent; }
QPushButton::menu-indicator { width: 0; image: none; }
QPushButton[kind="prominent"] { background: @accentFill; color: @onAccent; font-weight: 600;
    border: 1px solid @accentFill; padding: 0 15px; min-height: 32px; }
QPushButton[kind="prominent"]:hover { background: @accentFillHover;
    border-color: @accentFillHover; }
QPushButton[kind="prominent"]:focus { border: 2px solid @text; padding: 0 14px; min-height: 30px; }
QPushButton[kind="prominent"]:disabled { background: @track; color: @disabledText;
    border-color: @track; }
QPushButton[kind="small"] { padding: 0 9px; min-height: 22px; }
QPushButton[kind="small"]:focus { padding: 0 8px; min-height: 20px; }
QPushButton[kind="quiet"] { background: transparent; border: 1px solid transparent;
    padding: 0 9px; min-height: 24px; }
QPushButton[kind="quiet"]:hover { background: @controlHover; }
QPushButton[kind="quiet"]:focus { border: 2px solid @accent; padding: 0 8px; min-height: 22px; }
QPushButton[kind="destructive"] { color: @red; }
QPushButton[kind="destructive"]:disabled { color: @disabledText; }
QToolButton { background: transparent; border: 1px solid transparent; border-radius: 6px;
    padding: 5px; color: @text; }
QToolButton:hover, QToolButton:open { background: @controlHover; }
QToolButton:checked { background: @accentTint; }
QToolButton:pressed { background: @track; }
QToolButton:focus { border: 2px solid @accent; padding: 4px; }
QToolButton::menu-indicator { width: 0; image: none; }
)");

constexpr QLatin1StringView fieldRules(R"(
QLineEdit { background: @field; color: @text; border: 1px solid @outline; border-radius: 6px;
    padding: 0 8px; min-height: 28px; selection-background-color: @accentFill;
    selection-color: @onAccent; }
QLineEdit:focus { border: 2px solid @accent; padding: 0 7px; min-height: 26px; }
QLineEdit:disabled { color: @disabledText; background: transparent; border-color: @hairline; }
QLineEdit[kind="inline"] { min-height: 22px; padding: 0 6px; }
QLineEdit[kind="inline"]:focus { min-height: 20px; padding: 0 5px; }
QComboBox { background: @control; color: @text; border: 1px solid @outline; border-radius: 6px;
    padding: 0 8px 0 10px; min-height: 28px; }
QComboBox:hover { background: @controlHover; }
QComboBox:focus { border: 2px solid @accent; padding: 0 7px 0 9px; min-height: 26px; }
QComboBox:disabled { color: @disabledText; border-color: @hairline; background: transparent; }
QComboBox::drop-down { border: none; width: 22px; }
QComboBox::down-arrow { image: none; }
QComboBox QAbstractItemView { background: @card; color: @text; border: 1px solid @outline;
    border-radius: 6px; padding: 4px; outline: none; selection-background-color: @accentFill;
    selection-color: @onAccent; }
QCheckBox { color: @text; spacing: 8px; }
QCheckBox:disabled { color: @disabledText; }
)");

constexpr QLatin1StringView otherRules(R"(
QMenuBar { background: transparent; color: @text; padding: 2px 0; font-size: 12px; }
QMenuBar::item { padding: 4px 9px; border-radius: 5px; background: transparent; }
QMenuBar::item:selected { background: @controlHover; }
QMenu { background: @card; color: @text; border: 1px solid @outline; padding: 5px; }
QMenu::item { padding: 6px 26px 6px 12px; border-radius: 5px; }
QMenu::icon { padding-left: 10px; }
QMenu::item:selected { background: @accentFill; color: @onAccent; }
QMenu::item:disabled { color: @disabledText; background: transparent; }
QMenu::separator { height: 1px; background: @hairline; margin: 5px 8px; }
QToolTip { background: @card; color: @text; border: 1px solid @outline; padding: 5px 7px; }
QScrollArea { background: transparent; border: none; }
QScrollBar:vertical { background: transparent; width: 11px; margin: 2px; }
QScrollBar:horizontal { background: transparent; height: 11px; margin: 2px; }
QScrollBar::handle { background: @track; border-radius: 3px; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::handle:hover { background: @outline; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QSlider { min-height: 22px; }
QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: @track; }
QSlider::sub-page:horizontal { border-radius: 2px; background: @accentFill; }
QSlider::handle:horizontal { width: 14px; height: 14px; margin: -6px 0; border-radius: 8px;
    background: @onAccent; border: 1px solid @outline; }
QSlider::handle:horizontal:focus { border: 2px solid @accent; width: 12px; height: 12px; }
QSlider::sub-page:horizontal:disabled { background: @track; }
)");

QString labelRules(const Colors &colors)
{
    QString rules;
    for (int i = 0; i < static_cast<int>(colorRoleCount); ++i) {
        rules += u"QLabel[colorRole=\"%1\"] { color: %2; }\n"_s.arg(i).arg(
            colors[static_cast<ColorRole>(i)].name());
    }
    rules += u"QLabel:disabled { color: %1; }\n"_s.arg(colors[ColorRole::disabledText].name());
    return rules;
}

} // namespace

QString styleSheet(const Colors &colors)
{
    QString sheet = QString(buttonRules) + fieldRules + otherRules;
    for (const Word &word : words) {
        sheet.replace(word.name, colors[word.role].name());
    }
    return sheet + labelRules(colors);
}

} // namespace Look
