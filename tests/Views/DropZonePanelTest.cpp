// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ViewFixture.h"
#include "Views/DropTarget.h"
#include "Views/DropZonePanelWindow.h"
#include "Views/FloatingDropZoneView.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"

#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <array>

using namespace Qt::StringLiterals;

namespace {

class DropZone : public ViewFixture
{
protected:
    void SetUp() override
    {
        start();
        m_model->setQueuePaused(true);
        m_model->setShowDropZonePanel(true);
        m_panel = new DropZonePanelWindow(*m_model);
        m_window.reset(m_panel);
        m_panel->orderFront();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_panel));
        settle();
        m_view = m_panel->findChild<FloatingDropZoneView *>();
        m_targets = m_panel->findChildren<DropTarget *>();
        ASSERT_EQ(m_targets.size(), 5);
    }

    static QList<QUrl> filmAt(const QString &path) { return {QUrl::fromLocalFile(path)}; }

    QPoint middleOf(const DropTarget *target) const
    {
        return target->mapTo(m_panel, target->rect().center());
    }

    // A drag goes to the window, as the desktop sends it; the window finds the field.

    bool dragInto(QPoint place)
    {
        QDragEnterEvent enter(place, anyAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_panel->windowHandle(), &enter);
        return dragTo(place);
    }
    bool dragTo(QPoint place)
    {
        QDragMoveEvent move(place, anyAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_panel->windowHandle(), &move);
        return move.isAccepted();
    }
    void dragAway()
    {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(m_panel->windowHandle(), &leave);
    }
    /// What the other side is told of the drop.
    Qt::DropAction dropAt(QPoint place)
    {
        QDropEvent drop(place, anyAction, &m_dragged, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_panel->windowHandle(), &drop);
        return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
    }
    Qt::DropAction dropOn(const DropTarget *target, const QList<QUrl> &urls)
    {
        m_dragged.setUrls(urls);
        EXPECT_TRUE(dragInto(middleOf(target)));
        const Qt::DropAction action = dropAt(middleOf(target));
        waitUntil([this] { return m_model->probingCount() == 0; });
        return action;
    }

    QList<bool> highlights() const
    {
        QList<bool> lit;
        for (const DropTarget *target : m_targets) {
            lit += target->isHighlighted();
        }
        return lit;
    }

    static constexpr Qt::DropActions anyAction = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

    QMimeData m_dragged;
    DropZonePanelWindow *m_panel = nullptr;
    FloatingDropZoneView *m_view = nullptr;
    QList<DropTarget *> m_targets;
};

QStringList titlesOf(const QList<DropTarget *> &targets)
{
    QStringList titles;
    for (const DropTarget *target : targets) {
        titles += target->title();
    }
    return titles;
}

} // namespace

TEST_F(DropZone, floats_above_the_other_windows_without_taking_the_focus)
{
    EXPECT_EQ(m_panel->windowTitle(), u"Morvix"_s);
    EXPECT_EQ(m_panel->size(), QSize(372, 132));
    EXPECT_TRUE(m_panel->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(m_panel->windowType(), Qt::Tool);
    EXPECT_TRUE(m_panel->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_FALSE(m_panel->testAttribute(Qt::WA_QuitOnClose));
    EXPECT_EQ(m_panel->pos(), m_panel->screen()->availableGeometry().topLeft());
}

TEST_F(DropZone, shows_the_hint_over_five_fields_of_one_height)
{
    EXPECT_TRUE(shows(u"Drop on an action to run it instantly"_s));
    EXPECT_EQ(titlesOf(m_targets),
              (QStringList{u"Compress"_s, u"25 MB"_s, u"MP4"_s, u"M4A"_s, u"GIF"_s}));
    for (const DropTarget *target : m_targets) {
        EXPECT_EQ(target->height(), 52);
        EXPECT_EQ(target->accessibleName(), target->title());
        EXPECT_EQ(middleOf(target).y(), middleOf(m_targets.first()).y());
    }
}

TEST_F(DropZone, each_field_has_its_symbol)
{
    for (const auto *name :
         {"arrow.down.circle.fill", "scope", "arrow.triangle.2.circlepath", "waveform", "film"}) {
        EXPECT_TRUE(Look::hasSymbol(QString::fromLatin1(name))) << name;
    }
}

TEST_F(DropZone, speaks_the_language_in_force)
{
    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_TRUE(shows(u"拖到对应动作上松手立即执行"_s));
    EXPECT_EQ(m_targets.first()->title(), u"压缩"_s);
}

TEST_F(DropZone, a_film_dropped_on_a_field_becomes_that_job)
{
    const std::array<JobMode, 5> modes{CompressParams(), TargetSizeParams(), ConvertParams(),
                                       ExtractParams(), GifParams()};
    const QString film = m_films.write(u"a.mp4"_s, "x");

    for (qsizetype i = 0; i < m_targets.size(); ++i) {
        EXPECT_EQ(dropOn(m_targets.at(i), filmAt(film)), Qt::CopyAction);

        ASSERT_EQ(m_model->jobs().size(), i + 1);
        EXPECT_EQ(m_model->jobs().last()->mode, modes.at(static_cast<std::size_t>(i)));
    }
    EXPECT_TRUE(m_model->showQueue());
}

TEST_F(DropZone, a_folder_dropped_on_a_field_gives_a_job_a_film_and_is_the_root)
{
    m_films.write(u"one/a.mp4"_s, "x");
    m_films.write(u"one/b/b.mov"_s, "x");

    for (const DropTarget *target : m_targets) {
        dropOn(target, filmAt(m_films.path(u"one"_s)));
    }

    EXPECT_EQ(m_model->jobs().size(), 2 * m_targets.size());
    EXPECT_EQ(m_model->sourceRoot(), m_films.url(u"one/"_s));
}

TEST_F(DropZone, the_field_under_the_files_takes_the_accent_until_they_leave)
{
    m_dragged.setUrls(filmAt(m_films.path(u"a.mp4"_s)));

    ASSERT_TRUE(dragInto(middleOf(m_targets.at(2))));
    EXPECT_EQ(m_view->hovered(), QuickAction::convertMP4);
    EXPECT_EQ(highlights(), (QList{false, false, true, false, false}));
    EXPECT_EQ(m_targets.at(2)->grab().toImage().pixelColor(20, 8),
              Look::color(Look::ColorRole::accentFill));

    dragAway();
    EXPECT_EQ(m_view->hovered(), std::nullopt);
    EXPECT_EQ(highlights(), QList<bool>(5, false));
    EXPECT_EQ(m_targets.at(2)->grab().toImage().pixelColor(20, 8),
              Look::color(Look::ColorRole::window));
}

TEST_F(DropZone, files_that_move_on_light_one_field_after_the_other)
{
    m_dragged.setUrls(filmAt(m_films.path(u"a.mp4"_s)));
    dragInto(middleOf(m_targets.first()));

    for (qsizetype i = 0; i < m_targets.size(); ++i) {
        EXPECT_TRUE(dragTo(middleOf(m_targets.at(i))));
        QList<bool> expected(5, false);
        expected[i] = true;
        EXPECT_EQ(highlights(), expected);
    }

    EXPECT_FALSE(dragTo(QPoint(2, 2))) << "beside the fields there is nothing to drop on";
    EXPECT_EQ(m_view->hovered(), std::nullopt);
}

TEST_F(DropZone, no_field_stays_lit_behind_a_drop)
{
    dropOn(m_targets.at(4), filmAt(m_films.write(u"a.mp4"_s, "x")));

    EXPECT_EQ(m_view->hovered(), std::nullopt);
    EXPECT_EQ(highlights(), QList<bool>(5, false));
}

TEST_F(DropZone, what_is_no_file_is_not_taken)
{
    m_dragged.setText(u"a.mp4"_s);

    EXPECT_FALSE(dragInto(middleOf(m_targets.first())));

    EXPECT_EQ(m_view->hovered(), std::nullopt);
}

TEST_F(DropZone, its_own_button_turns_the_drop_zone_off)
{
    m_panel->windowHandle()->close();
    settle();

    EXPECT_FALSE(m_panel->isVisible());
    EXPECT_FALSE(m_model->showDropZonePanel());
}

TEST_F(DropZone, comes_back_at_the_place_and_in_the_size_that_the_user_gave_it)
{
    const QRect place(120, 90, 500, 160);
    m_panel->windowHandle()->setGeometry(place);
    settle();

    m_panel->orderOut();
    settle();
    EXPECT_FALSE(m_panel->isVisible());
    m_panel->orderFront();
    settle();

    EXPECT_TRUE(m_panel->isVisible());
    EXPECT_EQ(m_panel->geometry(), place);
}

TEST_F(DropZone, hiding_it_leaves_the_switch_to_who_hid_it)
{
    m_panel->orderOut();
    settle();

    EXPECT_TRUE(m_model->showDropZonePanel());
}
