// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/FreeDesktopServices.h"

#include "Platform/Bus/SessionBus.h"
#include "Platform/FakeBus.h"
#include "Platform/FakeDesktop.h"
#include "Platform/MessageListener.h"
#include "support/FakeTool.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Manner = FakeDesktopService::Manner;

// Stands in for the desktop's opener.
class Opener : public QObject
{
    Q_OBJECT

public:
    Opener() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QList<QUrl> opened() const { return m_opened; }

public Q_SLOTS:
    void open(const QUrl &url) { m_opened += url; }

private:
    QList<QUrl> m_opened;
};

class FreeDesktopServicesTest : public ::testing::Test
{
protected:
    FreeDesktopServicesTest() { m_bus.start(); }

    static QList<QUrl> urls(const QStringList &paths)
    {
        QList<QUrl> urls;
        for (const QString &path : paths) {
            urls += QUrl::fromLocalFile(path);
        }
        return urls;
    }

    QList<QUrl> films(int count) const
    {
        QList<QUrl> films;
        for (int i = 0; i < count; ++i) {
            films += QUrl::fromLocalFile(
                m_folder.write(u"film %1.mp4"_s.arg(i, 2, 10, QChar(u'0')), "film"));
        }
        return films;
    }

    static QStringList pathsOf(const QList<QUrl> &files)
    {
        QStringList paths;
        for (const QUrl &file : files) {
            paths += file.toLocalFile();
        }
        return paths;
    }

    static QStringList attaching(const QList<QUrl> &files)
    {
        QStringList arguments;
        for (const QUrl &file : files) {
            arguments << u"--attach"_s << file.toLocalFile();
        }
        return arguments;
    }

    const TempFolder m_folder;
    FakeBus m_bus;
    const Opener m_opener;
    FreeDesktopServices m_services{std::make_shared<SessionBus>(m_bus.address(), 60s)};
    // No such program but the test's.
    const FakeTool m_mail{m_folder, "exit 0\n", u"xdg-email"_s};

private:
    const ScopedEnvironment m_path{"PATH", m_folder.path().toUtf8() + ":/usr/bin:/bin"};
};

} // namespace

TEST_F(FreeDesktopServicesTest, the_file_manager_is_shown_all_files_by_fully_encoded_addresses)
{
    const FakeFileManager manager(m_bus.connection());

    m_services.reveal(urls({u"/films/a b#?%.mp4"_s, u"/other/影.gif"_s}));

    ASSERT_TRUE(happens([&] { return manager.calls().size() == 1; }));
    EXPECT_EQ(manager.calls().first().uris, (QStringList{u"file:///films/a%20b%23%3F%25.mp4"_s,
                                                         u"file:///other/%E5%BD%B1.gif"_s}));
    EXPECT_EQ(manager.calls().first().startupID, QString());
    EXPECT_EQ(m_opener.opened(), QList<QUrl>());
}

TEST_F(FreeDesktopServicesTest, without_a_file_manager_each_folder_is_opened_once)
{
    const MessageListener listener;

    m_services.reveal(
        urls({u"/films/b.mp4"_s, u"/other/a.gif"_s, u"/films/a.mp4"_s, u"/films/x/"_s}));

    ASSERT_TRUE(happens([this] { return !m_opener.opened().isEmpty(); }));
    EXPECT_EQ(m_opener.opened(), urls({u"/films/"_s, u"/other/"_s}));
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(FreeDesktopServicesTest, without_a_bus_the_folder_is_opened)
{
    FreeDesktopServices services(std::make_shared<SessionBus>(QString(), 60s));

    services.reveal(urls({u"/films/b.mp4"_s}));

    ASSERT_TRUE(happens([this] { return !m_opener.opened().isEmpty(); }));
    EXPECT_EQ(m_opener.opened(), urls({u"/films/"_s}));
}

TEST_F(FreeDesktopServicesTest, a_file_manager_that_refuses_leaves_the_opener)
{
    const FakeFileManager manager(m_bus.connection(), Manner::refuses);

    m_services.reveal(urls({u"/films/b.mp4"_s}));

    EXPECT_TRUE(happens([this] { return m_opener.opened() == urls({u"/films/"_s}); }));
}

TEST_F(FreeDesktopServicesTest, a_file_manager_that_hangs_leaves_the_opener_after_the_limit)
{
    const FakeFileManager manager(m_bus.connection(), Manner::hangs);
    BusFileManager impatient(std::make_shared<SessionBus>(m_bus.address(), 60s), 50ms);
    bool isRefused = false;

    impatient.show(urls({u"/films/b.mp4"_s}), [&] { isRefused = true; });

    EXPECT_TRUE(happens([&] { return isRefused; }));
    EXPECT_EQ(manager.calls().size(), 1);
}

TEST_F(FreeDesktopServicesTest, a_file_is_opened_by_the_desktops_opener)
{
    m_services.open(QUrl::fromLocalFile(u"/films/a.mp4"_s));

    EXPECT_EQ(m_opener.opened(), urls({u"/films/a.mp4"_s}));
}

TEST_F(FreeDesktopServicesTest, copied_files_take_the_clipboards_place)
{
    QGuiApplication::clipboard()->setText(u"before"_s);

    m_services.copyFiles(urls({u"/films/a b.mp4"_s, u"/films/c.mp4"_s}));

    const QMimeData *held = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(held->urls(), urls({u"/films/a b.mp4"_s, u"/films/c.mp4"_s}));
    EXPECT_EQ(held->data(u"x-special/gnome-copied-files"_s),
              "copy\nfile:///films/a%20b.mp4\nfile:///films/c.mp4"_ba);
    EXPECT_EQ(held->data(u"application/x-kde-cutselection"_s), "0"_ba);
    EXPECT_EQ(held->text(), u"/films/a b.mp4\n/films/c.mp4"_s);
}

TEST_F(FreeDesktopServicesTest, the_trash_takes_a_file)
{
    const ScopedEnvironment home("HOME", m_folder.path().toUtf8());
    const ScopedEnvironment data("XDG_DATA_HOME", m_folder.path(u"data"_s).toUtf8());
    const QUrl film = films(1).first();

    EXPECT_TRUE(m_services.moveToTrash(film));
    EXPECT_FALSE(m_services.moveToTrash(film));

    EXPECT_EQ(contentOf(m_folder.path(u"data/Trash/files/film 00.mp4"_s)), "film"_ba);
}

TEST_F(FreeDesktopServicesTest, the_portal_is_handed_the_files_open)
{
    const FakeMailPortal portal(m_bus.connection());
    const QList<QUrl> files = films(16);

    m_services.share(files, u"x11:1a2b"_s);

    ASSERT_TRUE(happens([&] { return portal.calls().size() == 1; }));
    EXPECT_EQ(portal.calls().first().parentWindow, u"x11:1a2b"_s);
    EXPECT_EQ(portal.calls().first().options, QVariantMap());
    EXPECT_EQ(portal.calls().first().attachments, pathsOf(files));
    EXPECT_EQ(m_mail.runs(), 0);
}

TEST_F(FreeDesktopServicesTest, a_file_that_is_gone_is_not_attached)
{
    const FakeMailPortal portal(m_bus.connection());
    const QList<QUrl> files = films(1);

    m_services.share(QList<QUrl>{m_folder.url(u"gone.mp4"_s)} + files, QString());

    ASSERT_TRUE(happens([&] { return portal.calls().size() == 1; }));
    EXPECT_EQ(portal.calls().first().attachments, pathsOf(files));
}

TEST_F(FreeDesktopServicesTest, without_a_portal_the_mail_program_is_started_with_the_files)
{
    const QList<QUrl> files = films(2);

    m_services.share(files, QString());

    ASSERT_TRUE(happens([this] { return m_mail.runs() == 1; }));
    EXPECT_EQ(m_mail.arguments(1), attaching(files));
}

TEST_F(FreeDesktopServicesTest, a_portal_that_refuses_leaves_the_mail_program)
{
    const FakeMailPortal portal(m_bus.connection(), Manner::refuses);
    const QList<QUrl> files = films(1);

    m_services.share(files, QString());

    EXPECT_TRUE(happens([this] { return m_mail.runs() == 1; }));
    EXPECT_EQ(portal.calls().size(), 1);
}

TEST_F(FreeDesktopServicesTest, more_files_than_the_bus_carries_go_to_the_mail_program)
{
    const FakeMailPortal portal(m_bus.connection());
    const QList<QUrl> files = films(17);

    m_services.share(files, QString());

    ASSERT_TRUE(happens([this] { return m_mail.runs() == 1; }));
    EXPECT_EQ(m_mail.arguments(1), attaching(files));
    EXPECT_EQ(portal.calls().size(), 0);
}

#include "FreeDesktopServicesTest.moc"
