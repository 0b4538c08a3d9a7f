// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FileDetailHeader.h"

#include "Views/Controls/BadgeChip.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Shell/FileTexts.h"

#include <QHBoxLayout>

using Look::ColorRole;

namespace {

// That of the panel below, so that their edges line up.
constexpr int sideMargin = 18;

} // namespace

FileDetailHeader::FileDetailHeader(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_name(new ElidedLabel(Qt::ElideMiddle, Look::TextSize::headline, ColorRole::text,
                             QFont::DemiBold))
    , m_hdr(new BadgeChip(ColorRole::orange))
    , m_alpha(new BadgeChip(ColorRole::purple))
    , m_details(new ElidedLabel(Qt::ElideRight, Look::TextSize::body, ColorRole::secondaryText))
{
    build();
    follow(&AppModel::filesChanged);
    follow(&AppModel::selectedFileIDChanged);
}

void FileDetailHeader::build()
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(sideMargin, Look::Space::tiny, sideMargin, Look::Space::medium);
    rows->setSpacing(2);
    auto *title = new QHBoxLayout;
    title->setSpacing(Look::Space::small);
    title->addWidget(m_name);
    title->addWidget(m_hdr);
    title->addWidget(m_alpha);
    title->addStretch();
    // As high as with chips, or the text would move where a film has one.
    title->addStrut(Look::Height::chip);
    rows->addLayout(title);
    rows->addWidget(m_details);
}

void FileDetailHeader::refresh()
{
    m_hdr->setText(t(u"file.hdr"));
    m_alpha->setText(t(u"file.alpha"));
    if (const std::optional<VideoFile> file = model().selectedFile()) {
        m_name->setText(FileTexts::name(*file));
        m_hdr->setVisible(file->isHDR);
        m_alpha->setVisible(file->hasAlphaChannel);
        m_details->setText(FileTexts::detailText(*file));
    }
}
