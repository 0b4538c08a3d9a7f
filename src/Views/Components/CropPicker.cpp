// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/CropPicker.h"

#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

#include <algorithm>
#include <array>

using Aspect = CropSpec::Aspect;
using namespace Qt::StringLiterals;

namespace {

constexpr int aspectWidth = 200;
constexpr int fieldWidth = 76;
constexpr qint64 leastSide = 16;

struct AspectRow {
    Aspect aspect;
    const char16_t *key;
};

constexpr auto aspects = std::to_array<AspectRow>({
    {Aspect::ratio16x9, u"advanced.crop.16x9"},
    {Aspect::ratio9x16, u"advanced.crop.9x16"},
    {Aspect::ratio4x3, u"advanced.crop.4x3"},
    {Aspect::ratio1x1, u"advanced.crop.1x1"},
    {Aspect::free, u"advanced.crop.free"},
});

int indexOf(Aspect aspect)
{
    const auto row = std::ranges::find(aspects, aspect, &AspectRow::aspect);
    return static_cast<int>(row - aspects.begin());
}

/// A field that already says so in the person's own way, such as "5" for the least side, is left
/// alone: it is being typed in.
void showMeasure(IntegerField &field, qint64 stored)
{
    if (std::max(field.text().trimmed().toLongLong(), leastSide) != stored) {
        field.setShown(QString::number(stored));
    }
}

} // namespace

struct CropPicker::Side {
    std::optional<qint64> CropSpec::*measure;
    /// What the field shows until a number is typed.
    qint64 usual;
};

const CropPicker::Side CropPicker::widthSide{&CropSpec::customWidth, 1280};
const CropPicker::Side CropPicker::heightSide{&CropSpec::customHeight, 720};

CropPicker::CropPicker(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_switch(new Switch)
    , m_aspect(new MenuPicker)
    , m_widthLabel(new TextLabel(Look::TextSize::body, Look::ColorRole::secondaryText))
    , m_heightLabel(new TextLabel(Look::TextSize::body, Look::ColorRole::secondaryText))
    , m_width(buildField(widthSide))
    , m_height(buildField(heightSide))
    , m_size(buildSizeFields())
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Space::medium);
    m_aspect->setFixedWidth(aspectWidth);
    row->addWidget(m_switch);
    row->addWidget(m_aspect);
    row->addWidget(m_size);
    row->addStretch();
    // The row is as high without the picker as with it.
    setMinimumHeight(Look::Height::control);
    connect(m_switch, &QAbstractButton::clicked, this,
            [this](bool on) { store(on ? std::optional(freshSpec()) : std::nullopt); });
    connect(m_aspect, &QComboBox::activated, this, [this](int index) {
        CropSpec crop = m_crop.value_or(freshSpec());
        crop.aspect = aspects.at(static_cast<std::size_t>(index)).aspect;
        store(crop);
    });
}

QWidget *CropPicker::buildSizeFields()
{
    auto *fields = new QWidget;
    auto *row = new QHBoxLayout(fields);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Space::small);
    for (QWidget *part :
         std::initializer_list<QWidget *>{m_widthLabel, m_width, m_heightLabel, m_height}) {
        row->addWidget(part);
    }
    row->insertSpacing(2, Look::Space::tiny);
    return fields;
}

IntegerField *CropPicker::buildField(const Side &side)
{
    auto *field = new IntegerField;
    field->setFixedWidth(fieldWidth);
    connect(field, &IntegerField::entered, this, [this, side](int value) {
        CropSpec crop = m_crop.value_or(freshSpec());
        crop.*side.measure = std::max<qint64>(value, leastSide);
        store(crop);
    });
    connect(field, &IntegerField::committed, this, [this, field, side] {
        field->setShown(
            QString::number((m_crop.value_or(freshSpec()).*side.measure).value_or(side.usual)));
    });
    return field;
}

void CropPicker::setCrop(const std::optional<CropSpec> &crop)
{
    if (crop != m_crop) {
        m_crop = crop;
        refreshSoon();
    }
}

void CropPicker::store(const std::optional<CropSpec> &crop)
{
    if (crop != m_crop) {
        setCrop(crop);
        Q_EMIT changed(m_crop);
    }
}

void CropPicker::refresh()
{
    QStringList words;
    for (const AspectRow &row : aspects) {
        words += t(row.key);
    }
    m_switch->setWords(t(u"advanced.crop"));
    m_switch->setChecked(m_crop.has_value());
    m_aspect->setWords(words);
    m_aspect->setAccessibleName(t(u"advanced.crop"));
    m_aspect->setShown(indexOf(m_crop.value_or(freshSpec()).aspect));
    m_aspect->setVisible(m_crop.has_value());
    showSize();
}

void CropPicker::showSize()
{
    const CropSpec crop = m_crop.value_or(freshSpec());
    m_widthLabel->setText(t(u"advanced.crop.width"));
    m_heightLabel->setText(t(u"advanced.crop.height"));
    m_width->setWords(m_widthLabel->text());
    m_height->setWords(m_heightLabel->text());
    showMeasure(*m_width, crop.customWidth.value_or(widthSide.usual));
    showMeasure(*m_height, crop.customHeight.value_or(heightSide.usual));
    m_size->setVisible(m_crop && m_crop->aspect == Aspect::free);
}
