// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QStringList>
#include <QtGlobal>

/// Hears what Qt and we would say on the terminal, one at a time.
class MessageListener
{
public:
    MessageListener()
    {
        heard.clear();
        m_previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { heard += text; });
    }
    MessageListener(const MessageListener &) = delete;
    MessageListener &operator=(const MessageListener &) = delete;
    ~MessageListener() { qInstallMessageHandler(m_previous); }

    static inline QStringList heard;

private:
    QtMessageHandler m_previous = nullptr;
};
