// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelFixture.h"

#include "Engine/Estimator.h"
#include "Views/Controls/BadgeChip.h"
#include "Views/Controls/CardButton.h"
#include "Views/Controls/Switch.h"
#include "Views/Panels/TargetSizePanel.h"

#include <QApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;

namespace {

const QString customName = u"Custom (MB)"_s;
const QString headName = u"Skip first (sec)"_s;
const QString tailName = u"Skip last (sec)"_s;
const QString muteName = u"Remove audio"_s;
const QString exactName = u"Exact 2-pass mode (slower, needs x264 ffmpeg)"_s;
const QString addName = u"Add to Queue"_s;

} // namespace

class TargetSizePanelTest : public PanelFixture
{
protected:
    void open(const FilmFacts &facts = {})
    {
        startWithFilm(facts);
        showPanel<TargetSizePanel>();
    }

    CardButton *card(const QString &size)
    {
        for (CardButton *card : m_window->findChildren<CardButton *>()) {
            if (card->accessibleName().startsWith(size + u',')) {
                return card;
            }
        }
        return nullptr;
    }

    CardButton *customCard()
    {
        return qobject_cast<CardButton *>(field(customName)->parentWidget());
    }

    QStringList litCards()
    {
        QStringList lit;
        for (const CardButton *card : m_window->findChildren<CardButton *>()) {
            if (card->isSelected()) {
                lit += card->accessibleName().isEmpty()
                           ? u"custom"_s
                           : card->accessibleName().section(u',', 0, 0);
            }
        }
        return lit;
    }

    TargetSizeParams added()
    {
        click(button(addName));
        return lastJobParams<TargetSizeParams>();
    }

    double addedTarget() { return added().targetMB; }
};

TEST_F(TargetSizePanelTest, starts_at_25_megabytes)
{
    open();

    EXPECT_THAT(litCards(), ElementsAre(u"25 MB"_s));
    EXPECT_EQ(addedTarget(), 25);
}

TEST_F(TargetSizePanelTest, lists_the_ladder_from_small_to_large_with_notes_as_tooltips)
{
    open();

    QStringList names;
    QStringList notes;
    for (const CardButton *card : m_window->findChildren<CardButton *>()) {
        names += card->accessibleName();
        notes += card->toolTip();
    }

    EXPECT_THAT(names,
                ElementsAre(u"8 MB, Legacy Discord"_s, u"10 MB, Outlook"_s, u"16 MB, WhatsApp"_s,
                            u"20 MB, Discord"_s, u"25 MB, Gmail"_s, u"50 MB, Discord Nitro Basic"_s,
                            u"100 MB, 100 MB"_s, u"200 MB, LinkedIn"_s, QString()));
    EXPECT_THAT(notes,
                ElementsAre(u"Old 8 MB limit"_s, u"Attachment limit"_s, u"Video message"_s,
                            u"Free tier, since Aug 2026"_s, u"Attachment limit"_s, u"50 MB tier"_s,
                            u"Custom size range"_s, u"Native video"_s, u"Type any size in MB"_s));
}

TEST_F(TargetSizePanelTest, a_typed_48_lights_the_custom_card_alone_and_clicking_25_empties_it)
{
    open();

    type(field(customName), u"48"_s);
    press(Qt::Key_Return);
    EXPECT_THAT(litCards(), ElementsAre(u"custom"_s));
    EXPECT_EQ(addedTarget(), 48);

    click(card(u"25 MB"_s));
    EXPECT_EQ(field(customName)->text(), QString());
    EXPECT_THAT(litCards(), ElementsAre(u"25 MB"_s));
    EXPECT_EQ(addedTarget(), 25);
}

TEST_F(TargetSizePanelTest, text_that_is_no_possible_size_leaves_the_target_as_it_was)
{
    open();

    for (const QString &text : {u"0"_s, u"-5"_s, u"100001"_s, u"abc"_s, u"4 8"_s, u"nan"_s,
                                u"inf"_s, u"1e999"_s, u"0x10"_s}) {
        // A digit on the way to the whole text may be a size of its own.
        click(card(u"25 MB"_s));
        field(customName)->setText(text);
        settle();
        EXPECT_EQ(addedTarget(), 25) << text.toStdString();
        EXPECT_THAT(litCards(), ElementsAre(u"25 MB"_s, u"custom"_s)) << text.toStdString();
    }
}

TEST_F(TargetSizePanelTest, blanks_around_a_typed_size_do_not_count)
{
    open();

    field(customName)->setText(u" \t48.5 "_s);
    settle();

    EXPECT_EQ(addedTarget(), 48.5);
}

TEST_F(TargetSizePanelTest, a_typed_100000_is_accepted)
{
    open();

    type(field(customName), u"100000"_s);

    EXPECT_EQ(addedTarget(), 100'000);
}

TEST_F(TargetSizePanelTest, a_typed_8_005_lights_the_card_of_8_as_well)
{
    open();

    type(field(customName), u"8.005"_s);

    EXPECT_THAT(litCards(), ElementsAre(u"8 MB"_s, u"custom"_s));
    EXPECT_EQ(addedTarget(), 8.005);
}

TEST_F(TargetSizePanelTest, a_typed_8_02_lights_the_custom_card_alone)
{
    open();

    type(field(customName), u"8.02"_s);

    EXPECT_THAT(litCards(), ElementsAre(u"custom"_s));
}

TEST_F(TargetSizePanelTest, skips_go_into_the_job_as_typed)
{
    open();

    type(field(headName), u" 1.5"_s);
    type(field(tailName), u"-3"_s);
    const TargetSizeParams params = added();

    EXPECT_EQ(params.skipHeadSeconds, 1.5);
    EXPECT_EQ(params.skipTailSeconds, -3);
}

TEST_F(TargetSizePanelTest, skips_that_are_no_numbers_are_absent_and_stay_in_their_fields)
{
    open();

    type(field(headName), u"1:30"_s);
    const TargetSizeParams params = added();

    EXPECT_EQ(params.skipHeadSeconds, std::nullopt);
    EXPECT_EQ(params.skipTailSeconds, std::nullopt);
    EXPECT_EQ(field(headName)->text(), u"1:30"_s);
}

TEST_F(TargetSizePanelTest, skips_that_swallow_the_next_film_are_emptied_as_it_is_selected)
{
    open({.seconds = 200});
    type(field(headName), u"30"_s);
    type(field(tailName), u"30"_s);
    const VideoFile minute = take(u"minute.mp4"_s, {.seconds = 60});

    EXPECT_EQ(field(headName)->text(), u"30"_s);
    m_model->setSelectedFileID(minute.id);
    settle();

    EXPECT_EQ(field(headName)->text(), QString());
    EXPECT_EQ(field(tailName)->text(), QString());
}

TEST_F(TargetSizePanelTest, skips_that_leave_a_second_of_the_next_film_stay)
{
    open({.seconds = 200});
    type(field(headName), u"30"_s);
    type(field(tailName), u"30"_s);
    const VideoFile longer = take(u"longer.mp4"_s, {.seconds = 61});

    m_model->setSelectedFileID(longer.id);
    settle();

    EXPECT_EQ(field(headName)->text(), u"30"_s);
    EXPECT_EQ(field(tailName)->text(), u"30"_s);
}

TEST_F(TargetSizePanelTest, skips_typed_for_the_film_at_hand_stay_however_long_they_are)
{
    open({.seconds = 60});

    type(field(headName), u"300"_s);

    EXPECT_EQ(field(headName)->text(), u"300"_s);
}

TEST_F(TargetSizePanelTest, a_change_of_film_keeps_the_target_and_the_switches)
{
    open();
    click(card(u"8 MB"_s));
    click(button(muteName));
    const VideoFile next = take(u"next.mp4"_s);

    m_model->setSelectedFileID(next.id);
    settle();

    EXPECT_THAT(litCards(), ElementsAre(u"8 MB"_s));
    EXPECT_TRUE(button(muteName)->isChecked());
}

TEST_F(TargetSizePanelTest, a_film_without_sound_disables_the_switch_that_removes_it)
{
    open({.audioCodecs = {}});

    EXPECT_FALSE(button(muteName)->isEnabled());
}

TEST_F(TargetSizePanelTest, the_exact_mode_starts_as_the_setting_prefers)
{
    open();

    EXPECT_TRUE(button(exactName)->isChecked());
    EXPECT_TRUE(added().exactTwoPass);
}

TEST_F(TargetSizePanelTest, without_the_preference_the_exact_mode_starts_off_and_a_choice_survives)
{
    startWithFilm();
    m_model->setPreferExactMode(false);
    showPanel<TargetSizePanel>();
    EXPECT_FALSE(button(exactName)->isChecked());

    click(button(exactName));
    const VideoFile next = take(u"next.mp4"_s);
    m_model->setSelectedFileID(next.id);
    settle();

    EXPECT_TRUE(button(exactName)->isChecked());
}

TEST_F(TargetSizePanelTest, without_x264_a_line_stands_in_place_of_the_exact_mode)
{
    installFFmpeg("exit 1");
    m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\nprintf ' V....D %s x\\n' h264_videotoolbox\n");
    start();
    m_file = take(u"film.mp4"_s);
    m_model->setPreferExactMode(true);
    showPanel<TargetSizePanel>();

    EXPECT_EQ(button(exactName), nullptr);
    EXPECT_TRUE(
        shows(u"2-pass exact mode unavailable — install a GPL ffmpeg with libx264 to enable"_s));
    EXPECT_FALSE(added().exactTwoPass);
}

TEST_F(TargetSizePanelTest, a_hopeless_target_warns_and_disables_adding)
{
    open({.seconds = 30'000});
    take(u"another.mp4"_s);

    click(card(u"8 MB"_s));

    EXPECT_TRUE(shows(u"Target is unreachable for this length even at minimum bitrate. Trim the "
                      "clip or raise the target."_s));
    EXPECT_FALSE(button(addName)->isEnabled());
    EXPECT_FALSE(button(u"Add All Files (2)"_s)->isEnabled());
}

TEST_F(TargetSizePanelTest, a_low_bitrate_warns_and_allows)
{
    open({.seconds = 900});

    EXPECT_TRUE(shows(
        u"Bitrate budget is very low — quality will drop noticeably. Trim or mute to help."_s));
    EXPECT_TRUE(button(addName)->isEnabled());
}

TEST_F(TargetSizePanelTest, the_estimate_feeds_the_list_of_files_and_follows_each_choice)
{
    open();
    const auto expected = [this](double megabytes, std::optional<double> head) {
        TargetSizeParams params;
        params.targetMB = megabytes;
        params.exactTwoPass = true;
        params.skipHeadSeconds = head;
        return Estimator::targetSize(m_file, params).estimatedBytes;
    };
    EXPECT_EQ(storedEstimate(), expected(25, {}));

    click(card(u"8 MB"_s));
    EXPECT_EQ(storedEstimate(), expected(8, {}));

    type(field(headName), u"80"_s);
    EXPECT_EQ(storedEstimate(), expected(8, 80));
}

TEST_F(TargetSizePanelTest, adding_all_makes_a_job_a_film_with_the_same_parameters)
{
    open();
    take(u"second.mp4"_s);
    take(u"third.mp4"_s);
    click(card(u"16 MB"_s));

    click(button(u"Add All Files (3)"_s));

    ASSERT_EQ(m_model->jobs().size(), 3);
    for (const auto &job : m_model->jobs()) {
        EXPECT_EQ(std::get<TargetSizeParams>(job->mode).targetMB, 16);
    }
}

TEST_F(TargetSizePanelTest, an_applied_preset_fills_the_panel_once)
{
    open();
    TargetSizeParams params;
    params.targetMB = 50;
    params.muted = true;
    params.skipHeadSeconds = 12.9;

    m_model->applyPreset(preset(params));
    settle();

    EXPECT_THAT(litCards(), ElementsAre(u"50 MB"_s));
    EXPECT_TRUE(button(muteName)->isChecked());
    EXPECT_EQ(field(headName)->text(), u"12"_s);
    EXPECT_EQ(field(tailName)->text(), QString());
    EXPECT_EQ(m_model->appliedPreset(), std::nullopt);
}

TEST_F(TargetSizePanelTest, a_presets_skip_of_less_than_nothing_is_cut_towards_zero)
{
    open();
    TargetSizeParams params;
    params.skipHeadSeconds = -0.5;
    params.skipTailSeconds = -1.5;

    m_model->applyPreset(preset(params));
    settle();

    EXPECT_EQ(field(headName)->text(), u"0"_s);
    EXPECT_EQ(field(tailName)->text(), u"-1"_s);
}

TEST_F(TargetSizePanelTest, a_preset_that_is_deleted_once_applied_is_taken_up_all_the_same)
{
    startWithFilm();
    showPanel<TargetSizePanel>();
    TargetSizeParams params;
    params.targetMB = 50;
    const UserPreset applied = preset(params);

    m_model->applyPreset(applied);
    m_model->deletePreset(applied.id);
    settle();

    EXPECT_THAT(litCards(), ElementsAre(u"50 MB"_s));
}

TEST_F(TargetSizePanelTest, parameters_can_be_saved_after_their_film_and_their_panel_are_gone)
{
    const TempFolder data;
    const auto presets = std::make_shared<PresetStore>(QUrl::fromLocalFile(data.path()));
    installObedientFFmpeg();
    start({.collections = {presets, nullptr}});
    m_file = take(u"film.mp4"_s);
    auto *panel = new TargetSizePanel(context());
    auto *window = new QWidget;
    panel->setParent(window);
    show(window, {780, 1200});
    panel->setGeometry(window->rect());
    settle();
    click(card(u"50 MB"_s));
    click(button(u"Save as Preset…"_s));

    m_model->removeFile(m_file.id);
    delete panel;
    settle();
    type(field(u"Preset name"_s), u"Fifty"_s);
    press(Qt::Key_Return);

    ASSERT_EQ(presets->presets().size(), 1);
    EXPECT_EQ(std::get<TargetSizeParams>(presets->presets().first().spec).targetMB, 50);
}

TEST_F(TargetSizePanelTest, the_same_preset_applied_again_fills_the_panel_again)
{
    open();
    TargetSizeParams params;
    params.targetMB = 50;
    m_model->applyPreset(preset(params));
    settle();
    click(card(u"8 MB"_s));

    m_model->applyPreset(preset(params));
    settle();

    EXPECT_THAT(litCards(), ElementsAre(u"50 MB"_s));
}

TEST_F(TargetSizePanelTest, a_preset_of_another_action_is_left_for_its_own_panel)
{
    open();
    const UserPreset other = preset(ConvertParams());

    m_model->applyPreset(other);
    settle();

    EXPECT_EQ(m_model->appliedPreset(), other);
}

TEST_F(TargetSizePanelTest, a_preset_that_was_applied_before_the_panel_appeared_is_taken_up)
{
    startWithFilm();
    TargetSizeParams params;
    params.targetMB = 10;
    m_model->applyPreset(preset(params));

    showPanel<TargetSizePanel>();

    EXPECT_THAT(litCards(), ElementsAre(u"10 MB"_s));
    EXPECT_EQ(m_model->appliedPreset(), std::nullopt);
}

TEST_F(TargetSizePanelTest, a_job_can_be_made_with_the_keyboard_alone)
{
    open();
    for (int i = 0; i < 60 && QApplication::focusWidget() != card(u"16 MB"_s); ++i) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Space);
    for (int i = 0; i < 60 && QApplication::focusWidget() != button(addName); ++i) {
        press(Qt::Key_Tab);
    }
    press(Qt::Key_Space);

    ASSERT_EQ(m_model->jobs().size(), 1);
    EXPECT_EQ(lastJobParams<TargetSizeParams>().targetMB, 16);
}
