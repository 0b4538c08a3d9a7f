// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/SilentServices.h"

#include "Platform/Bus/DBusSleepInhibitor.h"

namespace {

class SilentDoneSound : public DoneSound
{
public:
    bool play() override { return true; }
    void beep() override {}
};

class SilentNotifier : public Notifier
{
public:
    void post(const QString &, const QString &) override {}
};

class AlwaysActive : public ApplicationState
{
public:
    bool isActive() const override { return true; }
};

class NoSleepInhibitor : public SleepInhibitor
{
public:
    void hold(const QString &) override {}
    void release() override {}
};

} // namespace

PlatformServices makeSilentServices()
{
    return {std::make_shared<SilentDoneSound>(), std::make_shared<SilentNotifier>(),
            std::make_shared<AlwaysActive>(), std::make_shared<NoSleepInhibitor>()};
}

PlatformServices makeHeadlessServices()
{
    PlatformServices services = makeSilentServices();
    services.sleepInhibitor = std::make_shared<DBusSleepInhibitor>();
    return services;
}
