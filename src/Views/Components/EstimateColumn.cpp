// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/EstimateColumn.h"

#include "Views/Controls/EvenDigits.h"
#include "Views/Controls/NumberLabel.h"
#include "Views/Controls/TextLabel.h"

#include <QVBoxLayout>

using Look::ColorRole;
using Look::TextSize;
using namespace Qt::StringLiterals;

namespace {

constexpr int labelToValue = 2;

} // namespace

EstimateColumn::EstimateColumn(Accent accent, QWidget *parent)
    : QWidget(parent)
    , m_label(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_value(new NumberLabel(TextSize::title,
                              accent == Accent::accented ? ColorRole::accent : ColorRole::text,
                              QFont::DemiBold))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(labelToValue);
    column->addWidget(m_label);
    column->addWidget(m_value);
    const QString usual = accent == Accent::accented ? u"≈ 888.8 MB"_s : u"888.8 MB"_s;
    m_value->setMinimumWidth(EvenDigits::width(m_value->fontMetrics(), usual));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void EstimateColumn::setLabel(const QString &label)
{
    if (label != m_label->text()) {
        m_label->setText(label);
    }
}

void EstimateColumn::setValue(const QString &value)
{
    m_value->setText(value);
}
