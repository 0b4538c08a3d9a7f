// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/Program.h"

#include "App/AppModel.h"
#include "App/QueueProgress.h"
#include "Entry/AppDelegate.h"
#include "Platform/Bus/SessionBus.h"
#include "Platform/Desktop/DesktopFactory.h"
#include "Views/Look/Theme.h"

#include <QCoreApplication>

#include <cstdio>
#include <sysexits.h>

namespace {

/// As the desktop wants it; where it doesn't tell, as its own palette looks.
void dress(const ColorScheme &desktop, Look::Scheme otherwise)
{
    const auto scheme = [&] {
        switch (desktop.preference()) {
        case ColorScheme::Preference::dark:
            return Look::Scheme::dark;
        case ColorScheme::Preference::light:
            return Look::Scheme::light;
        case ColorScheme::Preference::none:
            return otherwise;
        }
        Q_UNREACHABLE();
    };
    const auto accent = desktop.accentColor();
    Look::apply(scheme(), accent ? QColor::fromRgbF(static_cast<float>(accent->red),
                                                    static_cast<float>(accent->green),
                                                    static_cast<float>(accent->blue))
                                 : QColor());
}

void complainThatNobodyAnswers()
{
    std::fputs("morvix: Morvix runs already, but doesn't answer.\n", stderr);
    QCoreApplication::exit(EX_TEMPFAIL);
}

} // namespace

Program::Program(const LaunchRequest &request)
    : m_files(request.files)
    , m_service(std::make_unique<ApplicationService>(SessionBus::addressOfDesktop(), request))
{
    connect(&m_signals, &SignalWatcher::caught, qApp, [] { QCoreApplication::exit(0); });
    connect(m_service.get(), &ApplicationService::launchDue, this, &Program::launch);
    connect(m_service.get(), &ApplicationService::handedOver, qApp,
            [] { QCoreApplication::exit(0); });
    connect(m_service.get(), &ApplicationService::unanswered, qApp, complainThatNobodyAnswers);
    // The name first: a start that comes while this one ends its work takes its place.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_service.reset(); });
}

Program::~Program() = default;

void Program::start()
{
    m_service->start();
}

void Program::launch()
{
    const PlatformServices services = makeDesktopServices();
    followColorScheme(services.colorScheme);
    m_delegate = std::make_unique<AppDelegate>(
        std::make_unique<AppModel>(Settings(), services, AppModel::Collections::ofUser()),
        services.desktopServices);
    m_progress = std::make_unique<QueueProgress>(m_delegate->appModel(), services.launcherProgress);
    m_delegate->applicationDidFinishLaunching();
    connectDesktop();
    if (!m_files.isEmpty()) {
        m_delegate->appModel().addURLs(m_files);
    }
}

void Program::followColorScheme(const std::shared_ptr<ColorScheme> &scheme)
{
    // Asked for now: our own palette takes the place of the desktop's.
    const Look::Scheme otherwise = Look::schemeOfPalette();
    dress(*scheme, otherwise);
    connect(scheme.get(), &ColorScheme::changed, this,
            [scheme = scheme.get(), otherwise] { dress(*scheme, otherwise); });
}

void Program::connectDesktop()
{
    const ApplicationObject *object = &m_service->object();
    connect(object, &ApplicationObject::activated, m_delegate.get(),
            &AppDelegate::applicationActivate);
    connect(object, &ApplicationObject::opened, m_delegate.get(), &AppDelegate::applicationOpen);
    connect(object, &ApplicationObject::serviceCalled, m_delegate.get(),
            &AppDelegate::performService);
}
