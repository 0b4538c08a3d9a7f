// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Window/WindowFixture.h"

#include "Views/Controls/TextField.h"
#include "Views/Shell/DropZone.h"
#include "Views/Shell/WorkspaceView.h"
#include "support/Clips.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QTest>
#include <QTimer>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

// More stops than any page has.
constexpr int mostStops = 200;

} // namespace

WindowFixture::WindowFixture()
{
    useRealTools();
}

QUrl WindowFixture::makeClip(const QString &name, double seconds) const
{
    Clips::make(m_films.write(name, QByteArray()), {.seconds = seconds, .noise = 20});
    return m_films.url(name);
}

void WindowFixture::holdRealProbes()
{
    const FFmpegToolset &tools = Clips::tools();
    const auto run = [](const QUrl &tool) {
        return "exec '" + tool.toLocalFile().toUtf8() + "' \"$@\"\n";
    };
    m_holders.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\n" + run(tools.ffmpegURL));
    m_holders.writeExecutable(u"ffprobe"_s,
                              "#!/bin/sh\n"
                              "for film in \"$@\"; do :; done\n"
                              "if [ -p \"$film.gate\" ]; then read -r go < \"$film.gate\"; fi\n" +
                                  run(tools.ffprobeURL));
    m_holdersPath.emplace("PATH", m_holders.path().toUtf8() + ':' + qgetenv("PATH"));
}

bool WindowFixture::dropOn(QWidget *part, const QList<QUrl> &urls)
{
    QMimeData data;
    data.setUrls(urls);
    QWindow *window = m_window->windowHandle();
    const QPoint place = part->mapTo(m_window.get(), part->rect().center());
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    // As the toolkit does it: who took the entering need not answer to each step.
    move.setAccepted(enter.isAccepted());
    QCoreApplication::sendEvent(window, &move);
    if (!move.isAccepted()) {
        return false;
    }
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &drop);
    settle();
    return drop.isAccepted();
}

void WindowFixture::dropAndRead(const QList<QUrl> &urls)
{
    QWidget *taker = only<DropZone>();
    ASSERT_TRUE(dropOn(taker ? taker : only<WorkspaceView>(), urls));
    waitUntilRead();
}

void WindowFixture::waitUntilRead()
{
    waitUntil([this] { return m_model->probingCount() == 0; });
    settle();
}

void WindowFixture::reach(QWidget *widget)
{
    ASSERT_NE(widget, nullptr);
    for (QWidget *around = widget->parentWidget(); around; around = around->parentWidget()) {
        if (auto *scroll = qobject_cast<QScrollArea *>(around)) {
            scroll->ensureWidgetVisible(widget);
        }
    }
    settle();
    click(widget);
}

void WindowFixture::typeTarget(const QString &megabytes)
{
    type(find<TextField>(u"Custom (MB)"_s), megabytes);
}

bool WindowFixture::tabTo(const QString &name)
{
    for (int i = 0; i < mostStops && focusedName() != name; ++i) {
        press(Qt::Key_Tab);
    }
    return focusedName() == name;
}

QString WindowFixture::focusedName()
{
    const QWidget *widget = QApplication::focusWidget();
    return widget ? widget->accessibleName() : QString();
}

void WindowFixture::chooseByKeys(int entry)
{
    QTimer::singleShot(0, m_window.get(), [entry] {
        QWidget *menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        for (int i = 0; i < entry; ++i) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, Qt::Key_Return);
    });
    press(Qt::Key_Space);
    activateAgain();
}

void WindowFixture::waitUntilUnderWay(const std::shared_ptr<Job> &job)
{
    waitUntil([&] {
        const auto *running = std::get_if<Job::Running>(&job->state());
        return running && running->progress > 0;
    });
    settle();
}

QString WindowFixture::textWith(const QString &words) const
{
    const QStringList texts = visibleTexts().filter(words);
    return texts.isEmpty() ? QString() : texts.first();
}
