// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/SavePresetSheet.h"

#include "Models/BlankTrimming.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int cardWidth = 320;

} // namespace

SavePresetSheet::SavePresetSheet(const ViewContext &context, QWidget *over, const PresetSpec &spec)
    : Sheet(over, cardWidth)
    , m_context(context)
    , m_spec(spec)
    , m_title(new TextLabel(Look::TextSize::headline, Look::ColorRole::text, QFont::DemiBold))
    , m_name(new TextField)
    , m_cancel(new Button)
    , m_save(new Button(Button::Kind::prominent))
{
    column()->addWidget(m_title);
    column()->addWidget(m_name);
    column()->addSpacing(Look::Space::tiny);
    column()->addLayout(buildButtons());
    m_save->setEnabled(false);
    connect(m_name, &QLineEdit::textChanged, this,
            [this] { m_save->setEnabled(!name().isEmpty()); });
    connect(m_name, &QLineEdit::returnPressed, m_save, &QAbstractButton::click);
    connect(m_cancel, &QAbstractButton::clicked, this, &Sheet::dismiss);
    connect(m_save, &QAbstractButton::clicked, this, &SavePresetSheet::save);
    connect(&m_context.model, &AppModel::languageChanged, this, &SavePresetSheet::setWords);
    setWords();
    // The sheet is in sight already, without anything in it that could have taken the focus.
    m_name->setFocus(Qt::OtherFocusReason);
}

QBoxLayout *SavePresetSheet::buildButtons()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Look::Space::small);
    row->addStretch();
    row->addWidget(m_cancel);
    row->addWidget(m_save);
    return row;
}

void SavePresetSheet::setWords()
{
    const AppModel &model = m_context.model;
    setAccessibleName(model.t(u"preset.save"_s));
    m_title->setText(accessibleName());
    const QString nameWords = model.t(u"preset.name"_s);
    m_name->setWords(nameWords, nameWords);
    m_cancel->setWords(model.t(u"common.cancel"_s));
    m_save->setWords(model.t(u"common.save"_s));
}

QString SavePresetSheet::name() const
{
    return trimmedOfBlanks(m_name->text()).toString();
}

void SavePresetSheet::save()
{
    const std::optional<QString> &path = m_context.model.outputDirectoryPath();
    m_context.model.savePreset(name(), m_spec,
                               path ? std::optional(QUrl::fromLocalFile(*path)) : std::nullopt);
    dismiss();
}
