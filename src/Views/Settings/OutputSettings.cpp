// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/OutputSettings.h"

#include "Engine/Text.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/FileDialogs.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/SettingsRow.h"

#include <QHBoxLayout>

using Look::ColorRole;
using Look::TextSize;

namespace {

constexpr int templateWidth = 224;

} // namespace

OutputSettings::OutputSettings(const ViewContext &context, QWidget *parent)
    : SettingsSection(context, u"settings.output", parent)
    , m_template(new TextField)
    , m_templateHelp(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_folder(new ElidedLabel(Qt::ElideMiddle, TextSize::caption, ColorRole::secondaryText))
    , m_besideOriginal(new Button)
    , m_choose(new Button)
    , m_templateRow(buildTemplate())
    , m_folderRow(buildFolder())
{
    group()->addRow(m_templateRow);
    group()->addRow(m_folderRow);
    follow(&AppModel::outputTemplateChanged);
    follow(&AppModel::outputDirectoryPathChanged);
}

SettingsRow *OutputSettings::buildTemplate()
{
    m_template->setFixedWidth(templateWidth);
    connect(m_template, &QLineEdit::textEdited, this,
            [this](const QString &text) { model().setOutputTemplate(text); });
    auto *row = new SettingsRow(m_template);
    row->setDetail(m_templateHelp->wrapping());
    return row;
}

SettingsRow *OutputSettings::buildFolder()
{
    auto *buttons = new QWidget;
    auto *places = new QHBoxLayout(buttons);
    places->setContentsMargins(0, 0, 0, 0);
    places->setSpacing(Look::Space::small);
    // The one that comes and goes stands first: the other one stays where it is.
    places->addWidget(m_besideOriginal);
    places->addWidget(m_choose);
    connect(m_besideOriginal, &QAbstractButton::clicked, this, [this] {
        if (m_besideOriginal->hasFocus()) {
            m_choose->setFocus(Qt::OtherFocusReason);
        }
        model().setOutputDirectoryPath(std::nullopt);
    });
    connect(m_choose, &QAbstractButton::clicked, this, &OutputSettings::chooseFolder);
    auto *row = new SettingsRow(buttons);
    row->setDetail(m_folder);
    return row;
}

void OutputSettings::chooseFolder()
{
    context().dialogs.openFolder(this, [&model = model()](const QList<QUrl> &urls) {
        model.setOutputDirectoryPath(Text::path(urls.first().adjusted(QUrl::StripTrailingSlash)));
    });
}

void OutputSettings::refresh()
{
    SettingsSection::refresh();
    m_templateRow->setWords(t(u"batch.template"));
    m_template->setShown(model().outputTemplate());
    m_templateHelp->setText(t(u"batch.template.help"));
    const std::optional<QString> &path = model().outputDirectoryPath();
    m_folderRow->setWords(t(u"settings.outdir"));
    m_folder->setText(path.value_or(t(u"settings.outdir.same")));
    m_besideOriginal->setWords(t(u"settings.outdir.same"));
    m_besideOriginal->setVisible(path.has_value());
    m_choose->setWords(t(u"settings.outdir.choose"));
}
