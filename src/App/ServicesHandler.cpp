// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/ServicesHandler.h"

#include "App/AppModel.h"
#include "App/FileURL.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace {

constexpr auto messageTable = std::to_array<ServicesHandler::Message>({
    {QLatin1StringView("compressWithMorvix"), QuickAction::compressSmart},
    {QLatin1StringView("compressTo25MB"), QuickAction::compress25MB},
    {QLatin1StringView("convertToMP4"), QuickAction::convertMP4},
    {QLatin1StringView("extractAudioService"), QuickAction::extractAudio},
    {QLatin1StringView("createGIFService"), QuickAction::makeGIF},
});

QList<QUrl> withoutDuplicates(const QList<QUrl> &urls)
{
    QList<QUrl> unique;
    QSet<QUrl> seen;
    for (const QUrl &url : urls) {
        if (!seen.contains(url)) {
            seen.insert(url);
            unique.append(url);
        }
    }
    return unique;
}

} // namespace

std::span<const ServicesHandler::Message> ServicesHandler::messages()
{
    return messageTable;
}

std::optional<QuickAction> ServicesHandler::quickAction(const QString &message)
{
    const auto found = std::ranges::find(messageTable, message, &Message::name);
    return found == messageTable.end() ? std::nullopt : std::optional(found->action);
}

ServicesHandler::ServicesHandler(AppModel &appModel, QObject *parent)
    : QObject(parent)
    , m_appModel(&appModel)
{
}

void ServicesHandler::handle(const QList<QUrl> &urls, QuickAction quick)
{
    if (m_appModel.isNull()) {
        return;
    }
    const QList<QUrl> files = withoutDuplicates(FileURL::filesAmong(urls));
    if (!files.isEmpty()) {
        m_appModel->runQuickAction(quick, files);
    }
}
