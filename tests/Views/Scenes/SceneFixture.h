// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ViewFixture.h"

#include "Views/Look/Theme.h"

#include <QPixmap>
#include <QSize>

#include <functional>

class RootView;

/// The whole window in some state, as a person may see it.
class SceneFixture : public ViewFixture
{
protected:
    SceneFixture();
    ~SceneFixture() override;

public:
    // What scenes are set with.

    AppModel &model() { return *m_model; }
    ReadyDialogs &dialogs() { return m_dialogs; }
    /// Takes in a made-up film.
    VideoFile film(const QString &name, const FilmFacts &facts = {}) { return take(name, facts); }
    /// Three films of different kinds, the first one selected.
    void films();
    void open(ActionKind action);
    /// Takes in a made-up film whose reading never ends.
    void reading();
    /// Adds one job in each state. Those that run stay where they are until the scene ends.
    void jobs();
    /// Saves presets and watches folders, one of them with a preset and one that is off.
    void collections();
    /// Has the pair of pictures of a preview made.
    void preview();
    /// Clicks the one visible button of that name.
    void press(const QString &name);
    /// Types a size into the card for it.
    void typeTarget(const QString &megabytes);
    /// Chooses from the menu behind that button.
    void chooseFrom(const QString &button, const QString &entry) { choose(button, entry); }
    /// Opens the menu behind that button for the picture only: where a menu is open, nothing else
    /// can be worked.
    void pictureMenu(const QString &button);
    /// Goes over to the floating drop zone, a window of its own.
    void dropZone();
    void settleNow() { settle(); }
    QWidget *window() { return m_window.get(); }
    /// The window with the menu over it, which may reach beyond it.
    QPixmap picture();

protected:
    struct Dress {
        Look::Scheme scheme = Look::Scheme::light;
        AppLanguage language = AppLanguage::english;
        QSize size{1040, 700};
    };
    enum class Tools { found, missing };
    /// Shows the window in that dress, empty.
    void open(const Dress &dress, Tools tools);

private:
    const TempFolder m_stills;
    const TempFolder m_data;
    const std::shared_ptr<PresetStore> m_presets;
    const std::shared_ptr<WatchFolderEngine> m_watchEngine;
    std::unique_ptr<Gate> m_gate;
    QPixmap m_menu;
    QRect m_menuPlace;
};

/// A scene by its name, which is also that of its picture.
struct Scene {
    const char *name;
    std::function<void(SceneFixture &)> set;
    /// As on a machine without ffmpeg.
    bool isWithoutTools = false;
};

/// All scenes, from the landing page on.
const QList<Scene> &scenes();
