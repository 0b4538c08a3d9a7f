// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShellFixture.h"

#include "Views/Controls/TextLabel.h"
#include "Views/Look/Theme.h"
#include "Views/Shell/ActionCard.h"
#include "Views/Shell/DropZone.h"
#include "Views/Shell/LandingView.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// As far as eight bits a channel and the painter's rounding allow.
bool isLike(const QColor &one, const QColor &other)
{
    return std::abs(one.red() - other.red()) <= 1 && std::abs(one.green() - other.green()) <= 1 &&
           std::abs(one.blue() - other.blue()) <= 1;
}

class LandingViewTest : public ShellFixture
{
protected:
    static QColor fillOf(QWidget *widget) { return widget->grab().toImage().pixelColor(20, 20); }
    static QColor edgeOf(QWidget *widget)
    {
        return widget->grab().toImage().pixelColor(0, widget->height() / 2);
    }
    int topOf(const QWidget *part) const { return part->mapTo(m_window.get(), QPoint()).y(); }

    ActionCard *cardOf(ActionKind kind)
    {
        for (ActionCard *card : m_window->findChildren<ActionCard *>()) {
            if (card->kind() == kind) {
                return card;
            }
        }
        return nullptr;
    }
};

TEST_F(LandingViewTest, the_leading_action_has_a_card_of_its_own_above_a_grid_of_the_others)
{
    open();

    QList<ActionKind> kinds;
    for (const ActionCard *card : m_window->findChildren<ActionCard *>()) {
        kinds += card->kind();
        EXPECT_EQ(card->cardSize() == ActionCard::Size::hero,
                  card->kind() == ActionKind::targetSize);
    }
    const auto all = allCases<ActionKind>();
    EXPECT_EQ(kinds, QList<ActionKind>(all.begin(), all.end()));
    EXPECT_TRUE(shows(u"No upload · No watermark · No queue"_s));
    EXPECT_TRUE(shows(u"1.2 GB → 100 MB · 83 MB → under 25 MB"_s));
}

TEST_F(LandingViewTest, the_page_is_read_from_the_drop_zone_down_to_the_grid)
{
    open();

    const QList<int> tops{topOf(only<DropZone>()),
                          topOf(find<TextLabel>(u"No upload · No watermark · No queue"_s)),
                          topOf(cardOf(ActionKind::targetSize)),
                          topOf(find<TextLabel>(u"1.2 GB → 100 MB · 83 MB → under 25 MB"_s)),
                          topOf(cardOf(ActionKind::convert))};

    EXPECT_TRUE(std::ranges::is_sorted(tops, std::less_equal()));
}

TEST_F(LandingViewTest, the_outline_of_a_card_goes_from_grey_to_the_accent_under_the_pointer)
{
    open();
    auto *card = cardOf(ActionKind::convert);
    const QColor fill = Look::color(Look::ColorRole::card);
    const QColor resting = edgeOf(card);

    QTest::mouseMove(card);
    settle();

    EXPECT_TRUE(card->isHovered());
    EXPECT_TRUE(
        isLike(resting, Look::blended(Look::color(Look::ColorRole::secondaryText), 0.18, fill)));
    EXPECT_TRUE(
        isLike(edgeOf(card), Look::blended(Look::color(Look::ColorRole::accent), 0.5, fill)));
}

TEST_F(LandingViewTest, three_cards_of_equal_width_stand_in_a_row_ten_points_apart)
{
    open();

    const QRect first = cardOf(ActionKind::convert)->geometry();
    const QRect third = cardOf(ActionKind::extract)->geometry();
    const QRect fourth = cardOf(ActionKind::trim)->geometry();
    EXPECT_EQ(first.top(), third.top());
    EXPECT_NEAR(first.width(), third.width(), 1);
    EXPECT_EQ(cardOf(ActionKind::compress)->geometry().left(), first.right() + 1 + 10);
    EXPECT_EQ(fourth.left(), first.left());
    EXPECT_EQ(fourth.top(), first.bottom() + 1 + 10);
}

TEST_F(LandingViewTest, a_click_on_a_card_chooses_its_action_and_opens_nothing)
{
    open();

    click(cardOf(ActionKind::compress));

    EXPECT_EQ(m_model->action(), ActionKind::compress);
    EXPECT_TRUE(cardOf(ActionKind::compress)->isSelected());
    EXPECT_FALSE(cardOf(ActionKind::targetSize)->isSelected());
    EXPECT_NE(only<LandingView>(), nullptr);
    EXPECT_TRUE(m_dialogs.opened.isEmpty());
}

TEST_F(LandingViewTest, space_and_return_act_on_a_card_like_a_click)
{
    open();

    cardOf(ActionKind::convert)->setFocus();
    press(Qt::Key_Return);
    const ActionKind byReturn = m_model->action();
    cardOf(ActionKind::compress)->setFocus();
    press(Qt::Key_Space);

    EXPECT_EQ(byReturn, ActionKind::convert);
    EXPECT_EQ(m_model->action(), ActionKind::compress);
}

TEST_F(LandingViewTest, a_click_on_the_drop_zone_asks_for_any_number_of_films)
{
    open();
    m_dialogs.answer = {layReady(u"a.mp4"_s), layReady(u"b.mp4"_s)};

    click(only<DropZone>());
    waitUntil([this] { return m_model->probingCount() == 0; });

    EXPECT_EQ(m_dialogs.opened, QStringList(u"any audioVisual"_s));
    EXPECT_EQ(m_model->files().size(), 2);
}

TEST_F(LandingViewTest, a_cancelled_dialog_changes_nothing)
{
    open();

    click(only<DropZone>());

    EXPECT_EQ(m_dialogs.opened.size(), 1);
    EXPECT_EQ(m_model->probingCount(), 0);
    EXPECT_FALSE(m_model->lastError());
}

TEST_F(LandingViewTest, the_drop_zone_lights_up_while_files_are_over_it)
{
    open();
    auto *zone = only<DropZone>();
    QMimeData data;
    data.setUrls({layReady(u"a.mp4"_s)});

    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(zone, &enter);
    const bool isLitOver = zone->isTargeted();
    const QColor fillOver = fillOf(zone);
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(zone, &leave);

    EXPECT_TRUE(enter.isAccepted());
    EXPECT_TRUE(isLitOver);
    EXPECT_TRUE(isLike(fillOver, Look::color(Look::ColorRole::accentTint)));
    EXPECT_TRUE(isLike(fillOf(zone), Look::color(Look::ColorRole::card)));
    EXPECT_FALSE(zone->isTargeted());
}

TEST_F(LandingViewTest, the_drop_zone_refuses_what_are_no_files)
{
    open();
    QMimeData data;
    data.setText(u"words"_s);

    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(only<DropZone>(), &enter);

    EXPECT_FALSE(enter.isAccepted());
    EXPECT_FALSE(only<DropZone>()->isTargeted());
}

TEST_F(LandingViewTest, a_drop_takes_the_files_in_and_ends_the_light)
{
    open();
    auto *zone = only<DropZone>();

    EXPECT_TRUE(drop(zone, {layReady(u"a.mp4"_s)}));
    EXPECT_FALSE(zone->isTargeted());
    waitUntil([this] { return m_model->probingCount() == 0; });

    EXPECT_EQ(m_model->files().size(), 1);
}

TEST_F(LandingViewTest, a_dropped_folder_becomes_the_root_of_the_output_tree)
{
    open();
    layReady(u"a.mp4"_s);

    drop(only<DropZone>(), {QUrl::fromLocalFile(m_films.path())});
    waitUntil([this] { return m_model->probingCount() == 0; });

    EXPECT_EQ(m_model->sourceRoot(), QUrl::fromLocalFile(m_films.path() + u'/'));
    EXPECT_EQ(m_model->files().size(), 1);
}

TEST_F(LandingViewTest, the_chosen_action_is_the_one_that_the_workspace_opens_on)
{
    open();

    click(cardOf(ActionKind::compress));
    take(u"a.mp4"_s);

    EXPECT_EQ(m_model->action(), ActionKind::compress);
    EXPECT_EQ(only<LandingView>(), nullptr);
}

} // namespace
