// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/FloatingDropZoneView.h"

#include "App/AppModel.h"
#include "Views/Controls/TextLabel.h"
#include "Views/DropTarget.h"
#include "Views/FileDrop.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct FieldRow {
    const char *titleKey;
    const char *symbolName;
    QuickAction action;
};

constexpr auto fieldRows = std::to_array<FieldRow>({
    {"dropzone.compress", "arrow.down.circle.fill", QuickAction::compressSmart},
    {"dropzone.25mb", "scope", QuickAction::compress25MB},
    {"dropzone.mp4", "arrow.triangle.2.circlepath", QuickAction::convertMP4},
    {"dropzone.audio", "waveform", QuickAction::extractAudio},
    {"dropzone.gif", "film", QuickAction::makeGIF},
});

} // namespace

FloatingDropZoneView::FloatingDropZoneView(AppModel &appModel, QWidget *parent)
    : QWidget(parent)
    , m_appModel(appModel)
    , m_hint(new TextLabel(Look::TextSize::caption, Look::ColorRole::secondaryText, QFont::Normal,
                           this))
{
    m_hint->setAlignment(Qt::AlignCenter);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Look::Space::medium, Look::Space::medium, Look::Space::medium,
                               Look::Space::medium);
    column->setSpacing(Look::Space::small);
    column->addStretch();
    column->addWidget(m_hint);
    column->addWidget(buildFields());
    column->addStretch();
    refreshTexts();
    connect(&m_appModel, &AppModel::languageChanged, this, &FloatingDropZoneView::refreshTexts);
}

QWidget *FloatingDropZoneView::buildFields()
{
    auto *fields = new QWidget(this);
    auto *row = new QHBoxLayout(fields);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Space::small);
    for (const FieldRow &field : fieldRows) {
        DropTarget *target = buildField(field.action, QString::fromLatin1(field.symbolName));
        row->addWidget(target, 1);
        m_fields.push_back({field.action, QString::fromLatin1(field.titleKey), target});
    }
    return fields;
}

DropTarget *FloatingDropZoneView::buildField(QuickAction action, const QString &symbolName)
{
    auto *target = new DropTarget(symbolName, this);
    const auto *drop = new FileDrop(target);
    connect(drop, &FileDrop::overChanged, this, [this, action](bool over) {
        if (over) {
            setHovered(action);
        } else if (m_hovered == action) {
            // The next field may have been entered before this one is told that it was left.
            setHovered(std::nullopt);
        }
    });
    connect(drop, &FileDrop::dropped, this,
            [this, action](const QList<QUrl> &urls) { m_appModel.runQuickAction(action, urls); });
    return target;
}

void FloatingDropZoneView::setHovered(std::optional<QuickAction> action)
{
    m_hovered = action;
    for (const Field &field : m_fields) {
        field.target->setHighlighted(field.action == m_hovered);
    }
}

void FloatingDropZoneView::refreshTexts()
{
    m_hint->setText(m_appModel.t(u"dropzone.hint"_s));
    for (const Field &field : m_fields) {
        field.target->setTitle(m_appModel.t(field.titleKey));
    }
}
