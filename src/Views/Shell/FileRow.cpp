// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FileRow.h"

#include "App/Fmt.h"
#include "Platform/DesktopServices.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"
#include "Views/Shell/FileTexts.h"
#include "Views/Shell/LatestJobs.h"
#include "Views/Shell/StatusDot.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>

using Look::ColorRole;
using namespace Qt::StringLiterals;

namespace {

// Of the row's face within the row.
constexpr int sideMargin = Look::Space::small;
constexpr int faceGap = 1;
constexpr int padding = 10;
constexpr int crossSide = 12;
constexpr int crossBox = 24;

} // namespace

FileRow::FileRow(const ViewContext &context, LatestJobs &latestJobs, QWidget *parent)
    : View(context, parent)
    , m_latestJobs(latestJobs)
    , m_name(new ElidedLabel(Qt::ElideMiddle, Look::TextSize::body, ColorRole::text, QFont::Medium))
    , m_details(new ElidedLabel(Qt::ElideRight, Look::TextSize::caption, ColorRole::secondaryText))
    , m_estimate(new ElidedLabel(Qt::ElideRight, Look::TextSize::caption, ColorRole::accent,
                                 QFont::Medium))
    , m_remove(new SymbolButton(u"xmark.circle.fill"_s, this))
    , m_statusDot(new StatusDot)
{
    setAttribute(Qt::WA_Hover);
    m_estimate->setEvenDigits(true);
    build();
    connect(m_remove, &QAbstractButton::clicked, this, [this] { model().removeFile(m_file.id); });
}

void FileRow::build()
{
    m_remove->setSymbolSide(crossSide);
    // The list is one stop of Tab; there the Delete key does the same.
    m_remove->setFocusPolicy(Qt::NoFocus);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(sideMargin + padding, faceGap + Look::Space::small,
                             sideMargin + Look::Space::tiny, 0);
    grid->setHorizontalSpacing(Look::Space::tiny);
    grid->setVerticalSpacing(2);
    grid->addWidget(m_name, 0, 0);
    grid->addWidget(m_details, 1, 0, 1, 2);
    grid->addWidget(m_estimate, 2, 0);
    grid->addWidget(m_statusDot, 2, 1, Qt::AlignCenter);
    grid->setColumnStretch(0, 1);
    grid->setColumnMinimumWidth(1, crossBox);
    grid->setRowStretch(3, 1);
}

void FileRow::setFile(const VideoFile &file, bool selected)
{
    m_file = file;
    if (selected != m_isSelected) {
        m_isSelected = selected;
        update();
    }
    refresh();
}

void FileRow::setRinged(bool ringed)
{
    if (ringed != m_isRinged) {
        m_isRinged = ringed;
        update();
    }
}

void FileRow::refresh()
{
    m_name->setText(FileTexts::name(m_file));
    m_details->setText(FileTexts::rowDetails(m_file));
    m_remove->setWords(t(u"common.remove"));
    m_statusDot->setOutcome(m_latestJobs.outcomeFor(m_file.id));
    refreshRemove();
    refreshEstimate();
}

void FileRow::refreshEstimate()
{
    const qint64 bytes = model().fileEstimates().value(m_file.id);
    m_estimate->setText(bytes > 0 ? u"→ "_s + Fmt::bytes(bytes) : QString());
}

/// Quiet until the pointer is near: it stands in every row.
void FileRow::refreshRemove()
{
    m_remove->setSymbol(u"xmark.circle.fill"_s,
                        underMouse() ? ColorRole::secondaryText : ColorRole::disabledText);
}

void FileRow::enterEvent(QEnterEvent *event)
{
    View::enterEvent(event);
    refreshRemove();
}

void FileRow::leaveEvent(QEvent *event)
{
    View::leaveEvent(event);
    refreshRemove();
}

/// Higher than the line that it stands in, so no layout places it.
void FileRow::resizeEvent(QResizeEvent *)
{
    const int middle = faceGap + Look::Space::small + m_name->sizeHint().height() / 2;
    m_remove->setGeometry(width() - sideMargin - Look::Space::tiny - crossBox,
                          middle - crossBox / 2, crossBox, crossBox);
}

void FileRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect face = rect().adjusted(sideMargin, faceGap, -sideMargin, -faceGap);
    const QColor window = Look::color(ColorRole::window);
    const QColor fill = m_isSelected   ? Look::color(ColorRole::accentTint)
                        : underMouse() ? Look::blended(Look::color(ColorRole::text), 0.05, window)
                                       : QColor();
    Look::paintBox(painter, face, {.fill = fill, .line = {}, .radius = Look::Radius::control});
    if (m_isRinged) {
        Look::paintFocusRing(painter, face, Look::Radius::control);
    }
}

void FileRow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        model().setSelectedFileID(m_file.id);
    }
}

void FileRow::contextMenuEvent(QContextMenuEvent *event)
{
    showMenu(event->globalPos());
}

void FileRow::showMenu(QPoint globalPosition)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The row may show another file by the time that something is chosen.
    const VideoFile file = m_file;
    connect(menu->addAction(t(u"common.remove")), &QAction::triggered, this,
            [this, file] { model().removeFile(file.id); });
    connect(menu->addAction(t(u"queue.reveal")), &QAction::triggered, this,
            [this, file] { context().desktop.reveal({file.url}); });
    menu->popup(globalPosition);
}
