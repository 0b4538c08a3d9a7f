// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/DesktopFileDialogs.h"

#include "Views/ViewFixture.h"

#include <QFileDialog>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

class DesktopFileDialogsTest : public ViewFixture
{
protected:
    DesktopFileDialogsTest()
    {
        start();
        show(new QWidget);
    }

    QFileDialog *dialog() { return m_window->findChild<QFileDialog *>(); }
    FileDialogs::Chosen noting()
    {
        return [this](const QList<QUrl> &urls) { m_chosen += urls; };
    }

    void answer(const QString &path)
    {
        dialog()->setDirectory(m_films.path());
        dialog()->selectFile(path);
        settle();
        QMetaObject::invokeMethod(dialog(), "accept");
        settle();
    }

    QList<QUrl> m_chosen;
};

TEST_F(DesktopFileDialogsTest, a_dialog_for_films_takes_any_number_of_videos_and_sounds)
{
    DesktopFileDialogs dialogs(*m_model);

    dialogs.openFiles(m_window.get(), FileDialogs::Kind::audioVisual, FileDialogs::Count::any,
                      noting());

    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->fileMode(), QFileDialog::ExistingFiles);
    ASSERT_EQ(dialog()->nameFilters().size(), 1);
    const QString filter = dialog()->nameFilters().first();
    for (const QString &pattern :
         {u"*.mp4"_s, u"*.mkv"_s, u"*.mov"_s, u"*.mp3"_s, u"*.wav"_s, u"*.MP4"_s, u"*.MOV"_s}) {
        EXPECT_TRUE(filter.contains(pattern)) << pattern.toStdString();
    }
    EXPECT_FALSE(filter.contains(u"*.png"_s));
    EXPECT_FALSE(filter.contains(u"*.json"_s));
}

TEST_F(DesktopFileDialogsTest, a_dialog_for_sound_leaves_videos_out)
{
    DesktopFileDialogs dialogs(*m_model);

    dialogs.openFiles(m_window.get(), FileDialogs::Kind::audio, FileDialogs::Count::one, noting());

    EXPECT_EQ(dialog()->fileMode(), QFileDialog::ExistingFile);
    EXPECT_TRUE(dialog()->nameFilters().first().contains(u"*.mp3"_s));
    EXPECT_FALSE(dialog()->nameFilters().first().contains(u"*.mkv"_s));
}

TEST_F(DesktopFileDialogsTest, the_chosen_file_comes_back_once)
{
    DesktopFileDialogs dialogs(*m_model);
    const QUrl file = QUrl::fromLocalFile(m_films.write(u"queue.json"_s, "{}"));

    dialogs.openFiles(m_window.get(), FileDialogs::Kind::json, FileDialogs::Count::one, noting());
    answer(file.toLocalFile());

    EXPECT_EQ(m_chosen, QList<QUrl>({file}));
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(DesktopFileDialogsTest, a_chosen_folder_ends_in_a_slash)
{
    DesktopFileDialogs dialogs(*m_model);
    m_films.write(u"trip/a.mp4"_s, "film");

    dialogs.openFolder(m_window.get(), noting());
    answer(m_films.path(u"trip"_s));

    EXPECT_EQ(m_chosen, QList<QUrl>({m_films.url(u"trip/"_s)}));
}

TEST_F(DesktopFileDialogsTest, a_cancelled_dialog_answers_nothing)
{
    DesktopFileDialogs dialogs(*m_model);

    dialogs.openFolder(m_window.get(), noting());
    dialog()->reject();
    settle();

    EXPECT_TRUE(m_chosen.isEmpty());
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(DesktopFileDialogsTest, an_asker_that_is_gone_hears_nothing)
{
    DesktopFileDialogs dialogs(*m_model);
    m_films.write(u"trip/a.mp4"_s, "film");
    auto *asker = new QWidget(m_window.get());

    dialogs.openFolder(asker, noting());
    delete asker;
    answer(m_films.path(u"trip"_s));

    EXPECT_TRUE(m_chosen.isEmpty());
}

} // namespace
