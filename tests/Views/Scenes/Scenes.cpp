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

void showLongAlert(SceneFixture &scene)
{
    scene.films();
    scene.model().setLastError(
        u"Error while decoding stream #0:0: Invalid data found when processing input\n"_s.repeated(
            40));
}

void showSaveSheet(SceneFixture &scene)
{
    scene.films();
    scene.press(scene.model().t(u"preset.save"_s));
}

void showCompare(SceneFixture &scene)
{
    scene.films();
    scrollToTheEnd(scene);
    scene.preview();
    scrollToTheEnd(scene);
}

void showCustomTarget(SceneFixture &scene)
{
    scene.films();
    scene.typeTarget(u"48.5"_s);
}

void showPresetMenu(SceneFixture &scene)
{
    scene.films();
    scene.collections();
    scene.pictureMenu(scene.model().t(u"preset.menu"_s));
}

/// The button behind which the finished job's other actions are.
QString finishedMenu(SceneFixture &scene)
{
    return scene.model().t(u"queue.open"_s) + u"… Birthday.mp4"_s;
}

void showJobMenu(SceneFixture &scene)
{
    scene.films();
    scene.jobs();
    scene.pictureMenu(finishedMenu(scene));
}

void showTrashQuestion(SceneFixture &scene)
{
    scene.films();
    scene.jobs();
    scene.chooseFrom(finishedMenu(scene), scene.model().t(u"queue.trashoriginal"_s));
}

void showSettingsEnd(SceneFixture &scene)
{
    scene.films();
    scene.collections();
    scene.model().setShowSettings(true);
    scene.settleNow();
    scrollToTheEnd(scene);
}

void showSettingsWithoutTools(SceneFixture &scene)
{
    scene.model().setShowSettings(true);
    scene.settleNow();
    scrollToTheEnd(scene);
}

void showLongNames(SceneFixture &scene)
{
    scene.film(
        u"二〇二六年暑假全家在青海湖边骑自行车旅行的完整记录（第二部分，未剪辑的原始素材）.mp4"_s,
        {.bytes = 1'240'000'000, .seconds = 4'325, .width = 3840, .height = 2160});
    scene.film(u"Überlingen—Großvaters_achtzigster_Geburtstag_mit_allen_Ansprachen_ungekürzt.mkv"_s,
               {.videoCodec = u"hevc"_s, .isHDR = true, .hasAlpha = true});
    scene.film(u"会议.mov"_s);
    scene.model().setQueuePaused(true);
    scene.model().enqueue(TargetSizeParams(), AppModel::Scope::allFiles);
}

} // namespace

const QList<Scene> &scenes()
{
    static const QList<Scene> all{
        {"landing", [](SceneFixture &) {}},
        {"reading", [](SceneFixture &scene) { scene.reading(); }},
        {"target", [](SceneFixture &scene) { scene.films(); }},
        {"target_custom", showCustomTarget},
        {"target_compare", showCompare},
        {"target_hopeless", showHopelessTarget},
        {"target_advanced", showAdvanced},
        {"long_names", showLongNames},
        {"preset_menu", showPresetMenu},
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
        {"settings_end", showSettingsEnd},
        {"settings_without_tools", showSettingsWithoutTools, true},
        {"job_menu", showJobMenu},
        {"trash_question", showTrashQuestion},
        {"alert", showAlert},
        {"alert_long", showLongAlert},
        {"drop_zone", [](SceneFixture &scene) { scene.dropZone(); }},
    };
    return all;
}
