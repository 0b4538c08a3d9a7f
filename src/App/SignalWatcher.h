// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

/// Brings SIGINT, SIGTERM and SIGHUP to the event loop. The second one ends the program at once;
/// its children end with it.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);

Q_SIGNALS:
    void caught(int signalNumber);
};
