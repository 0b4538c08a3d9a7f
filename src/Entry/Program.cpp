// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/Program.h"

#include "App/AppModel.h"
#include "Entry/AppDelegate.h"
#include "Platform/DBusSleepInhibitor.h"
#include "Platform/SilentServices.h"
#include "Views/Look/Theme.h"

#include <QCoreApplication>

#include <cstdio>
#include <sysexits.h>

namespace {

std::unique_ptr<AppModel> makeAppModel()
{
    return std::make_unique<AppModel>(Settings(), makeHeadlessServices(),
                                      AppModel::Collections::ofUser());
}

void complainThatNobodyAnswers()
{
    std::fputs("morvix: Morvix runs already, but doesn't answer.\n", stderr);
    QCoreApplication::exit(EX_TEMPFAIL);
}

} // namespace

Program::Program(const LaunchRequest &request)
    : m_files(request.files)
    , m_service(
          std::make_unique<ApplicationService>(InhibitorBuses::ofDesktop().sessionAddress, request))
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
    Look::apply(Look::schemeOfPalette());
    m_delegate = std::make_unique<AppDelegate>(makeAppModel());
    m_delegate->applicationDidFinishLaunching();
    connectDesktop();
    if (!m_files.isEmpty()) {
        m_delegate->appModel().addURLs(m_files);
    }
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
