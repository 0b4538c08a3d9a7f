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

class NoDesktopServices : public DesktopServices
{
public:
    void reveal(const QList<QUrl> &) override {}
    void open(const QUrl &) override {}
    bool moveToTrash(const QUrl &) override { return false; }
    void copyFiles(const QList<QUrl> &) override {}
    void share(const QList<QUrl> &, const QString &) override {}
};

class NoLauncherProgress : public LauncherProgress
{
public:
    void setFraction(std::optional<double>) override {}
};

class NoColorScheme : public ColorScheme
{
public:
    Preference preference() const override { return Preference::none; }
    std::optional<AccentColor> accentColor() const override { return std::nullopt; }
};

} // namespace

PlatformServices makeSilentServices()
{
    return {.doneSound = std::make_shared<SilentDoneSound>(),
            .notifier = std::make_shared<SilentNotifier>(),
            .applicationState = std::make_shared<AlwaysActive>(),
            .sleepInhibitor = std::make_shared<NoSleepInhibitor>(),
            .desktopServices = std::make_shared<NoDesktopServices>(),
            .launcherProgress = std::make_shared<NoLauncherProgress>(),
            .colorScheme = std::make_shared<NoColorScheme>()};
}

PlatformServices makeHeadlessServices()
{
    PlatformServices services = makeSilentServices();
    services.sleepInhibitor = std::make_shared<DBusSleepInhibitor>();
    return services;
}
