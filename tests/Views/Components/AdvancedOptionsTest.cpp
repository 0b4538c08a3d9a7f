// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/AdvancedOptionsView.h"

#include "ViewFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Slider.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextField.h"

#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray allEncoders = R"(#!/bin/sh
printf ' V....D %s x\n' libx264 libsvtav1 prores_videotoolbox
)";

class AdvancedOptionsTest : public ViewFixture
{
protected:
    /// With whatever tools are installed by now.
    void showOptions()
    {
        start();
        m_view = new AdvancedOptionsView(context());
        QObject::connect(m_view, &AdvancedOptionsView::changed, m_view,
                         [this](const AdvancedOptions &options) { m_told += options; });
        show(m_view, {640, 560});
    }

    using Edit = void (*)(AdvancedOptions &options);

    static AdvancedOptions with(Edit edit)
    {
        AdvancedOptions options;
        edit(options);
        return options;
    }

    /// All others are the untouched ones.
    void setOptions(Edit edit)
    {
        m_view->setOptions(with(edit));
        settle();
    }

    void setFile(const AdvancedOptionsView::FileTraits &file)
    {
        m_view->setFile(file);
        settle();
    }

    static QStringList itemsOf(const MenuPicker *picker)
    {
        QStringList items;
        for (int i = 0; picker && i < picker->count(); ++i) {
            items += picker->itemText(i);
        }
        return items;
    }

    /// Opens the menu and picks as a person does by keys.
    void pick(MenuPicker *picker, const QString &item)
    {
        ASSERT_NE(picker, nullptr);
        picker->setFocus();
        press(Qt::Key_Home);
        while (picker->currentText() != item && picker->currentIndex() + 1 < picker->count()) {
            press(Qt::Key_Down);
        }
        ASSERT_EQ(picker->currentText(), item);
    }

    MenuPicker *codec() { return find<MenuPicker>(u"Video codec"_s); }
    MenuPicker *crf() { return find<MenuPicker>(u"CRF (software codec only)"_s); }
    MenuPicker *fpsCap() { return find<MenuPicker>(u"FPS cap"_s); }
    MenuPicker *audioBitrate() { return find<MenuPicker>(u"Audio bitrate (kbps)"_s); }
    Slider *volume() { return find<Slider>(u"Volume"_s); }
    const AdvancedOptions &options() const { return m_view->options(); }

    AdvancedOptionsView *m_view = nullptr;
    QList<AdvancedOptions> m_told;
};

} // namespace

TEST_F(AdvancedOptionsTest, codecs_are_offered_as_the_tools_can_make_them)
{
    showOptions();

    EXPECT_EQ(itemsOf(codec()),
              QStringList({u"Auto (H.264 VideoToolbox)"_s, u"H.264 · VideoToolbox"_s,
                           u"HEVC · VideoToolbox"_s, u"H.264 · Software (x264)"_s}));
}

TEST_F(AdvancedOptionsTest, with_every_encoder_the_codecs_stand_in_their_order)
{
    m_tools.writeExecutable(u"ffmpeg"_s, allEncoders);
    showOptions();

    EXPECT_EQ(itemsOf(codec()),
              QStringList({u"Auto (H.264 VideoToolbox)"_s, u"H.264 · VideoToolbox"_s,
                           u"HEVC · VideoToolbox"_s, u"ProRes · VideoToolbox"_s,
                           u"AV1 · SVT (GPL ffmpeg)"_s, u"H.264 · Software (x264)"_s}));
    pick(codec(), u"AV1 · SVT (GPL ffmpeg)"_s);
    EXPECT_EQ(options().codec, CodecChoice::svtAV1);
}

TEST_F(AdvancedOptionsTest, without_tools_the_three_that_need_them_are_not_offered)
{
    removeTools();
    showOptions();

    EXPECT_EQ(itemsOf(codec()), QStringList({u"Auto (H.264 VideoToolbox)"_s,
                                             u"H.264 · VideoToolbox"_s, u"HEVC · VideoToolbox"_s}));
}

TEST_F(AdvancedOptionsTest, a_codec_that_is_not_offered_is_shown_and_kept)
{
    showOptions();

    setOptions([](AdvancedOptions &options) { options.codec = CodecChoice::svtAV1; });

    EXPECT_EQ(codec()->currentIndex(), -1);
    EXPECT_EQ(codec()->placeholderText(), u"AV1 · SVT (GPL ffmpeg)"_s);
    EXPECT_EQ(options().codec, CodecChoice::svtAV1);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(AdvancedOptionsTest, the_factor_is_there_for_the_software_codec_only)
{
    showOptions();
    EXPECT_EQ(crf(), nullptr);

    pick(codec(), u"H.264 · Software (x264)"_s);

    ASSERT_NE(crf(), nullptr);
    EXPECT_EQ(itemsOf(crf()), QStringList({u"CRF 18"_s, u"CRF 20"_s, u"CRF 23"_s, u"CRF 26"_s,
                                           u"CRF 28"_s, u"CRF 30"_s}));
    EXPECT_EQ(crf()->currentText(), u"CRF 23"_s);
    EXPECT_EQ(options().crf, std::nullopt);
}

TEST_F(AdvancedOptionsTest, switching_the_codec_away_hides_the_factor_and_keeps_it)
{
    showOptions();
    pick(codec(), u"H.264 · Software (x264)"_s);
    pick(crf(), u"CRF 28"_s);

    pick(codec(), u"HEVC · VideoToolbox"_s);

    EXPECT_EQ(crf(), nullptr);
    EXPECT_EQ(options().crf, 28);
    pick(codec(), u"H.264 · Software (x264)"_s);
    EXPECT_EQ(crf()->currentText(), u"CRF 28"_s);
}

TEST_F(AdvancedOptionsTest, picking_the_factor_that_is_shown_stores_it)
{
    showOptions();
    setOptions([](AdvancedOptions &options) { options.codec = CodecChoice::softwareX264; });

    // The open menu stands on the shown one.
    click(crf());
    QWidget *menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : menu,
                    Qt::Key_Return);
    settle();

    EXPECT_EQ(options().crf, 23);
}

TEST_F(AdvancedOptionsTest, a_dash_stands_for_no_cap_and_stores_none)
{
    showOptions();
    EXPECT_EQ(itemsOf(fpsCap()), QStringList({u"—"_s, u"24"_s, u"30"_s, u"60"_s}));
    EXPECT_EQ(fpsCap()->currentText(), u"—"_s);

    pick(fpsCap(), u"30"_s);
    EXPECT_EQ(options().fpsCap, 30);
    pick(fpsCap(), u"—"_s);

    EXPECT_EQ(options(), AdvancedOptions());
}

TEST_F(AdvancedOptionsTest, a_stored_cap_of_zero_reads_as_none)
{
    showOptions();

    setOptions([](AdvancedOptions &options) { options.fpsCap = 0; });

    EXPECT_EQ(fpsCap()->currentText(), u"—"_s);
}

TEST_F(AdvancedOptionsTest, a_dash_stands_for_the_automatic_audio_rate)
{
    showOptions();
    EXPECT_EQ(itemsOf(audioBitrate()),
              QStringList({u"—"_s, u"64"_s, u"96"_s, u"128"_s, u"160"_s, u"192"_s, u"256"_s}));

    pick(audioBitrate(), u"192"_s);
    EXPECT_EQ(options().audioBitrateKbps, 192);
    pick(audioBitrate(), u"—"_s);

    EXPECT_EQ(options(), AdvancedOptions());
}

TEST_F(AdvancedOptionsTest, a_number_that_is_not_on_the_list_is_shown_and_kept)
{
    showOptions();

    setOptions([](AdvancedOptions &options) {
        options.codec = CodecChoice::softwareX264;
        options.crf = 21;
        options.audioBitrateKbps = 320;
    });

    EXPECT_EQ(crf()->currentIndex(), -1);
    EXPECT_EQ(crf()->placeholderText(), u"CRF 21"_s);
    EXPECT_EQ(audioBitrate()->placeholderText(), u"320"_s);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(AdvancedOptionsTest, the_volume_moves_in_whole_decibels_between_its_ends)
{
    showOptions();
    EXPECT_TRUE(shows(u"0 dB"_s));
    volume()->setFocus();

    press(Qt::Key_Right);
    EXPECT_EQ(options().volumeDb, 1.0);
    EXPECT_TRUE(shows(u"+1 dB"_s));
    press(Qt::Key_End);
    press(Qt::Key_Right);
    EXPECT_EQ(options().volumeDb, 12.0);
    press(Qt::Key_Home);
    press(Qt::Key_Left);
    EXPECT_EQ(options().volumeDb, -30.0);
    EXPECT_TRUE(shows(u"-30 dB"_s));
}

TEST_F(AdvancedOptionsTest, volume_brought_back_to_zero_is_as_if_untouched)
{
    showOptions();
    volume()->setFocus();
    press(Qt::Key_Right);
    ASSERT_EQ(options().volumeDb, 1.0);

    press(Qt::Key_Left);

    EXPECT_EQ(options(), AdvancedOptions());
    EXPECT_FALSE(options().isActive());
    EXPECT_TRUE(shows(u"0 dB"_s));
}

TEST_F(AdvancedOptionsTest, a_click_on_the_slider_brings_it_there)
{
    showOptions();

    click(volume(), {volume()->width() - 1, volume()->height() / 2});
    EXPECT_EQ(options().volumeDb, 12.0);
    click(volume(), {0, volume()->height() / 2});

    EXPECT_EQ(options().volumeDb, -30.0);
}

TEST_F(AdvancedOptionsTest, a_volume_between_two_steps_is_kept_until_it_is_moved)
{
    showOptions();

    setOptions([](AdvancedOptions &options) { options.volumeDb = 2.5; });
    EXPECT_TRUE(shows(u"+2 dB"_s));
    EXPECT_TRUE(m_told.isEmpty());
    setOptions([](AdvancedOptions &options) { options.volumeDb = 0.0; });

    EXPECT_TRUE(shows(u"+0 dB"_s));
    EXPECT_EQ(options().volumeDb, 0.0);
}

TEST_F(AdvancedOptionsTest, a_chosen_file_takes_the_place_of_the_sound)
{
    showOptions();
    m_dialogs.answer = {QUrl(u"file:///music/my%20song%20100%25.m4a"_s)};

    click(find<Button>(u"Replace audio with…"_s));

    EXPECT_EQ(m_dialogs.opened, QStringList({u"one audio"_s}));
    EXPECT_EQ(options().replacementAudioURL, m_dialogs.answer.first());
    EXPECT_TRUE(shows(u"my song 100%.m4a"_s));
    EXPECT_EQ(find<Button>(u"Replace audio with…"_s), nullptr);
}

TEST_F(AdvancedOptionsTest, the_original_sound_comes_back_without_a_dialog)
{
    showOptions();
    setOptions([](AdvancedOptions &options) {
        options.replacementAudioURL = QUrl(u"file:///music/song.m4a"_s);
    });
    ASSERT_TRUE(shows(u"song.m4a"_s));

    click(find<Button>(u"Keep original audio"_s));

    EXPECT_EQ(options(), AdvancedOptions());
    EXPECT_TRUE(m_dialogs.opened.isEmpty());
    EXPECT_FALSE(shows(u"song.m4a"_s));
}

TEST_F(AdvancedOptionsTest, a_cancelled_dialog_leaves_the_sound_alone)
{
    showOptions();

    click(find<Button>(u"Replace audio with…"_s));

    EXPECT_EQ(m_dialogs.opened.size(), 1);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(AdvancedOptionsTest, a_file_that_is_chosen_after_the_panel_has_gone_is_for_nobody)
{
    showOptions();
    m_dialogs.answer = {QUrl(u"file:///music/song.m4a"_s)};
    m_dialogs.isHolding = true;
    click(find<Button>(u"Replace audio with…"_s));

    m_window.reset();
    m_dialogs.answerHeld();

    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(AdvancedOptionsTest, the_crop_is_part_of_the_options)
{
    showOptions();

    click(find<Switch>(u"Crop"_s));
    EXPECT_EQ(options().crop, (CropSpec{CropSpec::Aspect::ratio16x9, {}, {}}));
    click(find<Switch>(u"Crop"_s));

    EXPECT_EQ(options(), AdvancedOptions());
}

TEST_F(AdvancedOptionsTest, what_is_for_pictures_goes_with_the_picture)
{
    showOptions();
    const QString hdr = u"Keep HDR (HEVC output)"_s;
    const QString alpha = u"Keep alpha channel (ProRes 4444 · use MOV)"_s;
    EXPECT_TRUE(find<Switch>(u"Crop"_s));
    EXPECT_FALSE(shows(hdr));
    EXPECT_FALSE(shows(alpha));

    setFile({.hasVideo = true, .isHDR = true, .hasAlpha = true});
    EXPECT_TRUE(shows(hdr));
    EXPECT_TRUE(shows(m_model->t(u"advanced.hdr.hint"_s)));
    EXPECT_TRUE(shows(alpha));
    EXPECT_TRUE(shows(m_model->t(u"advanced.alpha.hint"_s)));
    setFile({.hasVideo = false, .isHDR = true, .hasAlpha = true});

    EXPECT_FALSE(find<Switch>(u"Crop"_s));
    EXPECT_FALSE(shows(hdr));
    EXPECT_FALSE(shows(alpha));
    EXPECT_FALSE(shows(m_model->t(u"advanced.hdr.hint"_s)));
}

TEST_F(AdvancedOptionsTest, each_switch_stores_its_own_option)
{
    showOptions();
    setFile({.hasVideo = true, .isHDR = true, .hasAlpha = true});

    click(find<Switch>(u"Keep HDR (HEVC output)"_s), {20, 10});
    EXPECT_EQ(options(), with([](AdvancedOptions &options) { options.hdrPassthrough = true; }));
    click(find<Switch>(u"Keep alpha channel (ProRes 4444 · use MOV)"_s), {20, 10});
    EXPECT_EQ(options(), with([](AdvancedOptions &options) {
                  options.hdrPassthrough = true;
                  options.preserveAlpha = true;
              }));
    click(find<Switch>(u"Keep HDR (HEVC output)"_s), {20, 10});

    EXPECT_EQ(options(), with([](AdvancedOptions &options) { options.preserveAlpha = true; }));
}

TEST_F(AdvancedOptionsTest, extra_arguments_are_stored_as_typed)
{
    showOptions();

    type(find<TextField>(u"Extra FFmpeg arguments"_s), u" -tune film  "_s);

    EXPECT_EQ(options().extraArgs, u" -tune film  "_s);
    EXPECT_EQ(m_told.last(), options());
}

TEST_F(AdvancedOptionsTest, options_that_are_set_are_shown_and_not_told)
{
    showOptions();

    setOptions([](AdvancedOptions &options) {
        options.codec = CodecChoice::hevcVideoToolbox;
        options.fpsCap = 60;
        options.audioBitrateKbps = 96;
        options.volumeDb = -6;
        options.crop = CropSpec{CropSpec::Aspect::ratio1x1, {}, {}};
        options.extraArgs = u"-an"_s;
    });

    EXPECT_EQ(codec()->currentText(), u"HEVC · VideoToolbox"_s);
    EXPECT_EQ(fpsCap()->currentText(), u"60"_s);
    EXPECT_EQ(audioBitrate()->currentText(), u"96"_s);
    EXPECT_EQ(volume()->value(), -6);
    EXPECT_TRUE(find<Switch>(u"Crop"_s)->isChecked());
    EXPECT_EQ(find<TextField>(u"Extra FFmpeg arguments"_s)->text(), u"-an"_s);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(AdvancedOptionsTest, tab_goes_from_top_to_bottom)
{
    showOptions();
    setOptions([](AdvancedOptions &options) { options.codec = CodecChoice::softwareX264; });
    setFile({.hasVideo = true, .isHDR = true, .hasAlpha = true});
    codec()->setFocus();

    QStringList names;
    for (int i = 0; i < 10; ++i) {
        const QWidget *here = QApplication::focusWidget();
        ASSERT_NE(here, nullptr);
        names += here->accessibleName();
        press(Qt::Key_Tab);
    }

    EXPECT_EQ(names, QStringList({u"Video codec"_s, u"CRF (software codec only)"_s, u"FPS cap"_s,
                                  u"Audio bitrate (kbps)"_s, u"Volume"_s, u"Replace audio with…"_s,
                                  u"Crop"_s, u"Keep HDR (HEVC output)"_s,
                                  u"Keep alpha channel (ProRes 4444 · use MOV)"_s,
                                  u"Extra FFmpeg arguments"_s}));
}

TEST_F(AdvancedOptionsTest, the_controls_keep_their_column_when_a_row_comes_and_goes)
{
    showOptions();
    const int before = fpsCap()->mapTo(m_view, QPoint()).x();

    setOptions([](AdvancedOptions &options) { options.codec = CodecChoice::softwareX264; });

    EXPECT_EQ(fpsCap()->mapTo(m_view, QPoint()).x(), before);
    EXPECT_EQ(crf()->mapTo(m_view, QPoint()).x(), before);
}

TEST_F(AdvancedOptionsTest, all_fits_the_narrowest_panel_in_both_languages)
{
    // What is left of 920 beside the list of files and within the margins.
    constexpr int narrowest = 643;
    showOptions();
    setOptions([](AdvancedOptions &options) {
        options.replacementAudioURL = QUrl(u"file:///"_s + QString(200, u'n') + u".m4a"_s);
        options.crop = CropSpec{CropSpec::Aspect::free, {}, {}};
    });

    for (const AppLanguage language : {AppLanguage::english, AppLanguage::simplifiedChinese}) {
        m_model->setLanguage(language);
        settle();
        EXPECT_LE(m_view->minimumSizeHint().width(), narrowest);
    }
}

TEST_F(AdvancedOptionsTest, the_words_follow_the_language)
{
    showOptions();

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_TRUE(shows(u"视频编码"_s));
    EXPECT_EQ(itemsOf(find<MenuPicker>(u"视频编码"_s)).first(), u"自动（H.264 VideoToolbox）"_s);
    EXPECT_TRUE(find<Slider>(u"音量"_s));
    EXPECT_TRUE(find<Switch>(u"画面裁切"_s));
}
