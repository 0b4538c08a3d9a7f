// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewFixture.h"

#include "Views/Controls/Switch.h"
#include "Views/View.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int onTheTrack = 20;

} // namespace

void ReadyDialogs::openFiles(QWidget *, Kind kind, Count count, const Chosen &chosen)
{
    const auto word = [kind] {
        switch (kind) {
        case Kind::audioVisual:
            return u"audioVisual"_s;
        case Kind::audio:
            return u"audio"_s;
        case Kind::json:
            return u"json"_s;
        }
        Q_UNREACHABLE();
    };
    opened += (count == Count::any ? u"any "_s : u"one "_s) + word();
    give(chosen);
}

void ReadyDialogs::openFolder(QWidget *, const Chosen &chosen)
{
    opened += u"folder"_s;
    give(chosen);
}

void ReadyDialogs::give(const Chosen &chosen)
{
    if (isHolding) {
        m_held = chosen;
    } else if (!answer.isEmpty()) {
        chosen(answer);
    }
}

void ReadyDialogs::answerHeld()
{
    isHolding = false;
    give(std::exchange(m_held, {}));
}

void RecordingDesktopServices::note(QStringView call, const QList<QUrl> &files)
{
    QString line = call.toString();
    for (const QUrl &file : files) {
        line += u' ' + file.fileName();
    }
    calls += line;
}

ViewFixture::ViewFixture() = default;

ViewFixture::~ViewFixture()
{
    // As when a person closes it: the focus goes while all of the window is still there.
    if (m_window) {
        m_window->hide();
    }
}

void ViewFixture::show(QWidget *window, QSize size)
{
    m_window.reset(window);
    m_window->resize(size);
    m_window->show();
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    settle();
}

void ViewFixture::settle()
{
    // A refresh may make parts that want a layout, which may make more.
    for (int i = 0; i < 6; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

void ViewFixture::click(QWidget *widget)
{
    ASSERT_NE(widget, nullptr);
    // A switch is as wide as its place, but only its track and its words can be hit.
    const bool isSwitch = qobject_cast<Switch *>(widget) != nullptr;
    click(widget, isSwitch ? QPoint(onTheTrack, widget->height() / 2) : widget->rect().center());
}

void ViewFixture::click(QWidget *widget, QPoint position)
{
    ASSERT_NE(widget, nullptr);
    // To the window, so that whatever lies above the widget gets the click, as it would.
    QWidget *window = widget->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, widget->mapTo(window, position));
    settle();
}

void ViewFixture::choose(const QString &button, const QString &entry)
{
    auto *opener = find<QAbstractButton>(button);
    ASSERT_NE(opener, nullptr) << button.toStdString();
    // The click comes back when the menu is closed.
    QTimer::singleShot(0, m_window.get(), [&entry] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        const QList<QAction *> actions = menu->actions();
        const auto found = std::ranges::find(actions, entry, &QAction::text);
        ASSERT_NE(found, actions.end()) << entry.toStdString();
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(*found).center());
    });
    click(opener);
    activateAgain();
}

void ViewFixture::activateAgain()
{
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    settle();
}

void ViewFixture::type(QWidget *field, const QString &text)
{
    click(field);
    auto *edit = qobject_cast<QLineEdit *>(field);
    ASSERT_NE(edit, nullptr);
    QTest::keySequence(edit, QKeySequence::SelectAll);
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
    settle();
}

void ViewFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(m_window->windowHandle(), key, modifiers);
    settle();
}

bool ViewFixture::drop(QWidget *target, const QList<QUrl> &urls)
{
    QMimeData data;
    data.setUrls(urls);
    const QPoint middle = target->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDragMoveEvent move(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &move);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &drop);
    settle();
    return drop.isAccepted();
}

QString ViewFixture::nameOf(const QWidget *widget)
{
    if (!widget->accessibleName().isEmpty()) {
        return widget->accessibleName();
    }
    return widget->property("text").toString();
}

QStringList ViewFixture::visibleTexts() const
{
    QStringList texts;
    for (const QWidget *widget : m_window->findChildren<QWidget *>()) {
        if (!widget->isVisible()) {
            continue;
        }
        const QString name = nameOf(widget);
        if (!name.isEmpty()) {
            texts += name;
        }
        if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
            texts += edit->text();
        }
    }
    return texts;
}

namespace {

QJsonObject videoStream(const FilmFacts &facts)
{
    QJsonObject stream{{u"index"_s, 0},
                       {u"codec_type"_s, u"video"_s},
                       {u"codec_name"_s, facts.videoCodec},
                       {u"pix_fmt"_s, facts.hasAlpha ? u"yuva420p"_s : u"yuv420p"_s}};
    if (facts.width > 0) {
        stream.insert(u"width"_s, facts.width);
        stream.insert(u"height"_s, facts.height);
    }
    if (facts.fps > 0) {
        stream.insert(u"avg_frame_rate"_s, QString::number(facts.fps) + u"/1"_s);
    }
    if (facts.isHDR) {
        stream.insert(u"color_transfer"_s, u"smpte2084"_s);
    }
    return stream;
}

QByteArray probeAnswer(const FilmFacts &facts)
{
    QJsonArray streams;
    if (!facts.videoCodec.isEmpty()) {
        streams.append(videoStream(facts));
    }
    const auto append = [&streams](const QString &type, const QStringList &codecs) {
        for (const QString &codec : codecs) {
            streams.append(QJsonObject{{u"index"_s, streams.size()},
                                       {u"codec_type"_s, type},
                                       {u"codec_name"_s, codec},
                                       {u"channels"_s, 2}});
        }
    };
    append(u"audio"_s, facts.audioCodecs);
    append(u"subtitle"_s, facts.subtitleCodecs);
    const QJsonObject format{{u"duration"_s, QString::number(facts.seconds)},
                             {u"size"_s, QString::number(facts.bytes)}};
    return QJsonDocument({{u"format"_s, format}, {u"streams"_s, streams}}).toJson();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

QUrl ViewFixture::layReady(const QString &name, const FilmFacts &facts)
{
    const QUrl url = m_films.url(name);
    write(url.toLocalFile(), "film");
    write(url.toLocalFile() + u".json"_s, probeAnswer(facts));
    return url;
}

void ViewFixture::holdProbes()
{
    m_tools.writeExecutable(u"ffprobe"_s, "#!/bin/sh\n"
                                          "for film in \"$@\"; do :; done\n"
                                          "read -r go < \"$film.gate\"\n"
                                          "exec cat \"$film.json\"\n");
}

VideoFile ViewFixture::take(const QString &name, const FilmFacts &facts)
{
    takeIn(layReady(name, facts));
    if (m_window) {
        settle();
    }
    return m_model->files().isEmpty() ? VideoFile() : m_model->files().last();
}
