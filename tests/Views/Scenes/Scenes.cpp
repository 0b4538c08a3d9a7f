// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SceneFixture.h"

#include "Models/JobParams.h"
#include "Views/Controls/Disclosure.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

void openAdvanced(SceneFixture &scene)
{
    for (Disclosure *disclosure : scene.window()->findChildren<Disclosure *>()) {
        disclosure->setOpen(true);
    }
    scene.settleNow();
}

void scrollToTheEnd(SceneFixture &scene)
{
    for (const QScrollArea *area : scene.window()->findChildren<QScrollArea *>()) {
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    }
    scene.settleNow();
}

void showHopelessTarget(SceneFixture &scene)
{
    scene.film(u"All day long.mkv"_s, {.bytes = 24'000'000'000, .seconds = 30'000});
}

void showAdvanced(SceneFixture &scene)
{
    scene.films();
    scene.model().setSelectedFileID(scene.model().files().at(1).id);
    openAdvanced(scene);
    scrollToTheEnd(scene);
}

void showAlert(SceneFixture &scene)
{
    scene.films();
    scene.model().setLastError(scene.model().t(u"error.probe"_s));
}

void showSaveSheet(SceneFixture &scene)
{
    scene.films();
    scene.press(scene.model().t(u"preset.save"_s));
}

} // namespace

const QList<Scene> &scenes()
{
    static const QList<Scene> all{
        {"landing", [](SceneFixture &) {}},
        {"target", [](SceneFixture &scene) { scene.films(); }},
        {"target_hopeless", showHopelessTarget},
        {"target_advanced", showAdvanced},
        {"save_preset", showSaveSheet},
        {"queue",
         [](SceneFixture &scene) {
             scene.films();
             scene.jobs();
         }},
        {"queue_empty",
         [](SceneFixture &scene) {
             scene.films();
             scene.model().setShowQueue(true);
         }},
        {"settings",
         [](SceneFixture &scene) {
             scene.films();
             scene.model().setShowSettings(true);
         }},
        {"alert", showAlert},
    };
    return all;
}
