// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/SettingsSheet.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/HairLine.h"
#include "Views/Controls/PanelScroll.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/FFmpegSettings.h"
#include "Views/Settings/GeneralSettings.h"
#include "Views/Settings/OutputSettings.h"
#include "Views/Settings/PresetSettings.h"
#include "Views/Settings/WatchFolderSettings.h"

#include <QHBoxLayout>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr int cardWidth = 640;

/// As high as the window has room for, up to a height that is easy to survey, whatever is in it.
class SheetScroll : public PanelScroll
{
public:
    QSize sizeHint() const override { return {cardWidth, 720}; }
};

/// The widgets of a layout that Tab stops at, in reading order.
void appendStops(QLayout *layout, QList<QWidget *> &stops)
{
    for (int i = 0; layout && i < layout->count(); ++i) {
        QLayoutItem *item = layout->itemAt(i);
        QWidget *widget = item->widget();
        if (const auto *scroll = qobject_cast<QScrollArea *>(widget)) {
            widget = scroll->widget();
        }
        if (widget && (widget->focusPolicy() & Qt::TabFocus)) {
            stops.append(widget);
        }
        appendStops(widget ? widget->layout() : item->layout(), stops);
    }
}

} // namespace

SettingsSheet::SettingsSheet(const ViewContext &context, QWidget *over)
    : Sheet(over, cardWidth)
    , m_context(context)
    , m_title(new TextLabel(Look::TextSize::title, Look::ColorRole::text, QFont::DemiBold))
    , m_done(new Button(Button::Kind::prominent))
{
    card()->setFill(Look::ColorRole::window);
    column()->setContentsMargins(0, Look::Space::medium, 0, Look::Space::large);
    column()->setSpacing(0);
    m_title->setContentsMargins(Look::Space::huge, 0, Look::Space::huge, 0);
    // The same in each language: Chinese type has higher lines.
    m_title->setFixedHeight(Look::Height::control);
    column()->addWidget(m_title);
    column()->addSpacing(Look::Space::medium);
    column()->addWidget(new HairLine(Qt::Horizontal));
    column()->addWidget(buildSections(), 1);
    column()->addWidget(new HairLine(Qt::Horizontal));
    column()->addSpacing(Look::Space::large);
    column()->addLayout(buildFooter());
    connect(&m_context.model, &AppModel::languageChanged, this, &SettingsSheet::setWords);
    setWords();
    // The sheet is in sight already, without anything in it that could have taken the focus.
    chainStops().first()->setFocus(Qt::OtherFocusReason);
}

QWidget *SettingsSheet::buildSections()
{
    auto *scroll = new SheetScroll;
    auto *sections = new QWidget;
    auto *sectionColumn = new QVBoxLayout(sections);
    // The scroll bar lies in the margin, so that the cards end where the button below ends.
    const int bar = scroll->verticalScrollBar()->sizeHint().width();
    sectionColumn->setContentsMargins(Look::Space::huge, Look::Space::huge, Look::Space::huge - bar,
                                      Look::Space::huge);
    sectionColumn->setSpacing(Look::Space::huge);
    addSection(new GeneralSettings(m_context), sectionColumn);
    addSection(new OutputSettings(m_context), sectionColumn);
    addSection(new FFmpegSettings(m_context), sectionColumn);
    addSection(new WatchFolderSettings(m_context), sectionColumn);
    addSection(new PresetSettings(m_context), sectionColumn);
    sectionColumn->addStretch();
    scroll->setWidget(sections);
    // Or it would paint over the outline of the card.
    sections->setAutoFillBackground(false);
    return scroll;
}

// What it shows is there before the sheet is painted first.
void SettingsSheet::addSection(SettingsSection *section, QLayout *column)
{
    column->addWidget(section);
    section->refreshNow();
    connect(section, &SettingsSection::rowsChanged, this, &SettingsSheet::chainStops);
}

QLayout *SettingsSheet::buildFooter()
{
    auto *footer = new QHBoxLayout;
    footer->setContentsMargins(Look::Space::huge, 0, Look::Space::huge, 0);
    footer->addStretch();
    footer->addWidget(m_done);
    connect(m_done, &QAbstractButton::clicked, this,
            [this] { m_context.model.setShowSettings(false); });
    return footer;
}

void SettingsSheet::setWords()
{
    setAccessibleName(m_context.model.t(u"settings.title"_s));
    m_title->setText(accessibleName());
    m_done->setWords(m_context.model.t(u"common.done"_s));
}

/// Rows that come later would otherwise be the last stops of Tab, behind everything else.
QList<QWidget *> SettingsSheet::chainStops()
{
    QList<QWidget *> stops;
    appendStops(column(), stops);
    for (qsizetype i = 1; i < stops.size(); ++i) {
        QWidget::setTabOrder(stops.at(i - 1), stops.at(i));
    }
    return stops;
}
