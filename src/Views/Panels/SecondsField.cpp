// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/SecondsField.h"

#include "Engine/Text.h"
#include "Models/BlankTrimming.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldWidth = 90;

} // namespace

SecondsField::SecondsField(QWidget *parent)
    : QWidget(parent)
    , m_label(new TextLabel)
    , m_field(new TextField)
{
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(Look::Space::small);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_field->setFixedWidth(fieldWidth);
    line->addWidget(m_label);
    line->addWidget(m_field);
    connect(m_field, &QLineEdit::textChanged, this, &SecondsField::edited);
}

void SecondsField::setWords(const QString &words)
{
    m_label->setText(words);
    m_field->setWords(words, u"0"_s);
}

std::optional<double> SecondsField::seconds() const
{
    return Text::toDouble(trimmedOfBlanks(m_field->text()));
}
