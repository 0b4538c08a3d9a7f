// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/FFmpegSettings.h"

#include "Engine/Text.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/SettingsRow.h"

#include <QHBoxLayout>
#include <QStringList>

using namespace Qt::StringLiterals;

using Look::ColorRole;
using Look::TextSize;

namespace {

constexpr SettingsToggle exactMode{u"settings.exact.default", &AppModel::preferExactMode,
                                   &AppModel::setPreferExactMode,
                                   &AppModel::preferExactModeChanged};

/// A symbol before what it says of the tools.
QWidget *markedRow(const QString &symbol, ColorRole color, QLayout *words)
{
    auto *row = new QWidget;
    auto *places = new QHBoxLayout(row);
    SettingsRow::dress(row, places);
    places->setSpacing(Look::Space::medium);
    places->addWidget(new SymbolView(symbol, Look::SymbolSize::normal, color));
    places->addLayout(words);
    return row;
}

} // namespace

FFmpegSettings::FFmpegSettings(const ViewContext &context, QWidget *parent)
    : SettingsSection(context, u"settings.ffmpeg", parent)
    , m_missingWords(new TextLabel)
    , m_path(new ElidedLabel(Qt::ElideMiddle))
    , m_build(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_encoders(new TextLabel(TextSize::body, ColorRole::secondaryText))
    , m_missing(buildMissing())
    , m_tools(buildTools())
    , m_encodersRow(new SettingsRow(m_encoders))
{
    group()->addRow(m_missing);
    group()->addRow(m_tools);
    group()->addRow(m_encodersRow);
    m_exactRow = addToggle(exactMode);
    follow(&AppModel::encoderStandInsChanged);
}

QWidget *FFmpegSettings::buildMissing()
{
    auto *words = new QVBoxLayout;
    words->addWidget(m_missingWords->wrapping());
    return markedRow(u"exclamationmark.triangle.fill"_s, ColorRole::orange, words);
}

QWidget *FFmpegSettings::buildTools()
{
    auto *words = new QVBoxLayout;
    words->setSpacing(Look::Space::tiny);
    words->addWidget(m_path);
    words->addWidget(m_build->wrapping());
    return markedRow(u"checkmark.circle.fill"_s, ColorRole::green, words);
}

QString FFmpegSettings::encodersInUse() const
{
    QStringList pairs;
    for (const AppModel::CodecEncoder &standIn : model().encoderStandIns()) {
        pairs += standIn.codec + u": "_s + standIn.encoder;
    }
    return pairs.join(u" · "_s);
}

void FFmpegSettings::refreshTools()
{
    m_path->setText(Text::path(model().toolset()->ffmpegURL));
    m_build->setText(
        t(model().offersExactMode() ? u"settings.ffmpeg.gpl" : u"settings.ffmpeg.lgpl"));
    m_encodersRow->setWords(t(u"settings.standins"));
    m_encoders->setText(encodersInUse());
    m_exactRow->setEnabled(model().offersExactMode());
}

void FFmpegSettings::refresh()
{
    SettingsSection::refresh();
    const bool isFound = model().toolset().has_value();
    m_missingWords->setText(t(u"settings.ffmpeg.missing"));
    if (isFound) {
        refreshTools();
    }
    m_missing->setVisible(!isFound);
    m_tools->setVisible(isFound);
    m_encodersRow->setVisible(isFound && !m_encoders->text().isEmpty());
    m_exactRow->setVisible(isFound);
}
