// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ViewFixture.h"

#include "Views/Look/Theme.h"

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
    /// Adds one job in each state. Those that run stay where they are until the scene ends.
    void jobs();
    /// Clicks the one visible button of that name.
    void press(const QString &name);
    void settleNow() { settle(); }
    QWidget *window() { return m_window.get(); }

protected:
    struct Dress {
        Look::Scheme scheme = Look::Scheme::light;
        AppLanguage language = AppLanguage::english;
        QSize size{1040, 700};
    };
    /// Shows the window in that dress, empty.
    void open(const Dress &dress);

private:
    std::unique_ptr<Gate> m_gate;
};

/// A scene by its name, which is also that of its picture.
struct Scene {
    const char *name;
    std::function<void(SceneFixture &)> set;
};

/// All scenes, from the landing page on.
const QList<Scene> &scenes();
