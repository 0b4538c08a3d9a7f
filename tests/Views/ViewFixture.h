// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppFixture.h"
#include "Platform/DesktopServices.h"
#include "Views/FileDialogs.h"
#include "Views/ViewContext.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>

/// What the probe tells of a made-up film.
struct FilmFacts {
    qint64 bytes = 100'000'000;
    double seconds = 83;
    /// 0 when the film has no known size.
    int width = 1920;
    int height = 1080;
    /// Empty for none.
    QString videoCodec = QStringLiteral("h264");
    double fps = 30;
    QStringList audioCodecs = {QStringLiteral("aac")};
    QStringList subtitleCodecs = {};
    bool isHDR = false;
    bool hasAlpha = false;
};

/// Answers dialogs with what the test has laid ready, and notes which one was opened.
class ReadyDialogs : public FileDialogs
{
public:
    void openFiles(QWidget *parent, Kind kind, Count count, const Chosen &chosen) override;
    void openFolder(QWidget *parent, const Chosen &chosen) override;

    /// Empty is a cancelled dialog.
    QList<QUrl> answer;
    /// "any audioVisual", "one json", "folder".
    QStringList opened;
    /// Until answerHeld() the person takes time to choose; otherwise the answer comes at once.
    bool isHolding = false;
    void answerHeld();

private:
    void give(const Chosen &chosen);

    Chosen m_held;
};

/// Notes what the desktop was asked to do with files.
class RecordingDesktopServices : public DesktopServices
{
public:
    void reveal(const QList<QUrl> &files) override { note(u"reveal", files); }
    void open(const QUrl &file) override { note(u"open", {file}); }
    bool moveToTrash(const QUrl &file) override
    {
        note(u"trash", {file});
        return true;
    }
    void copyFiles(const QList<QUrl> &files) override { note(u"copy", files); }
    void share(const QList<QUrl> &files, const QString &) override { note(u"share", files); }

    /// The call, a blank and the file names, each.
    QStringList calls;

private:
    void note(QStringView call, const QList<QUrl> &files);
};

/// The application object of AppFixture with a window around a view of it, worked by real events.
class ViewFixture : public AppFixture
{
protected:
    ViewFixture();
    ~ViewFixture() override;

    ViewContext context() { return {*m_model, m_desktopServices, m_dialogs}; }

    /// Shows the widget as the window and waits until it can be worked. Takes it.
    void show(QWidget *window, QSize size = {1040, 700});
    /// Brings all views up to date and lays them out.
    void settle();
    /// A left click in the middle of the widget.
    void click(QWidget *widget);
    void click(QWidget *widget, QPoint position);
    /// Types into the widget, after a click on it; what stood there is replaced.
    void type(QWidget *field, const QString &text);
    /// Opens the menu of that button by a click, and clicks on that entry.
    void choose(const QString &button, const QString &entry);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Drops files on the widget as a file manager does: enter, move, drop. Whether it took them.
    bool drop(QWidget *target, const QList<QUrl> &urls);

    /// The one visible widget of that kind with that accessible name or text; null when there is
    /// none or more than one.
    template <typename Widget> Widget *find(const QString &name)
    {
        QList<Widget *> found;
        for (Widget *widget : m_window->findChildren<Widget *>()) {
            if (widget->isVisible() && nameOf(widget) == name) {
                found += widget;
            }
        }
        return found.size() == 1 ? found.first() : nullptr;
    }
    /// All that can be read in the window, visible and not hidden behind a scroll bar's end.
    QStringList visibleTexts() const;
    bool shows(const QString &text) const { return visibleTexts().contains(text); }
    /// Lays a made-up film into the folder of films, where drops and dialogs may find it.
    QUrl layReady(const QString &name, const FilmFacts &facts = {});
    /// From now on a probe waits for the Gate of its film.
    void holdProbes();
    /// Has the application object take that film in, and gives it as it came.
    VideoFile take(const QString &name, const FilmFacts &facts = {});

    /// Gives the window the activity again, as a window manager does when a menu closes.
    void activateAgain();

    RecordingDesktopServices m_desktopServices;
    ReadyDialogs m_dialogs;
    std::unique_ptr<QWidget> m_window;

private:
    static QString nameOf(const QWidget *widget);
};
