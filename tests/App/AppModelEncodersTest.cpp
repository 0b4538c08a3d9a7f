// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "support/EventLoop.h"

using namespace Qt::StringLiterals;

namespace {

using Encoders = QList<AppModel::CodecEncoder>;

class AppModelEncoders : public AppFixture
{
protected:
    void startWith(const QStringList &names, const QByteArray &trial = "exit 1")
    {
        installEncoders(names, trial);
        start();
    }

    // How often the stand-ins were told to have changed by the time that a check has ended.
    int changesByCheck()
    {
        int changes = 0;
        const QObject whileHere;
        QObject::connect(m_model.get(), &AppModel::encoderStandInsChanged, &whileHere,
                         [&changes] { ++changes; });
        m_model->checkHardwareEncoders();
        EXPECT_TRUE(EventLoop::waitFor([&] { return changes > 0; }, m_model.get(),
                                       &AppModel::encoderStandInsChanged));
        return changes;
    }
};

} // namespace

TEST_F(AppModelEncoders, each_codec_tells_the_software_that_does_its_work)
{
    startWith({u"libx264"_s, u"libx265"_s, u"prores_ks"_s});

    EXPECT_EQ(m_model->encoderStandIns(), (Encoders{{u"H.264"_s, u"libx264"_s},
                                                    {u"HEVC"_s, u"libx265"_s},
                                                    {u"ProRes"_s, u"prores_ks"_s}}));
}

TEST_F(AppModelEncoders, a_codec_whose_planned_encoder_is_there_or_that_nothing_can_do_is_left_out)
{
    startWith({u"h264_videotoolbox"_s, u"libx264"_s, u"libx265"_s});

    EXPECT_EQ(m_model->encoderStandIns(), (Encoders{{u"HEVC"_s, u"libx265"_s}}));
}

TEST_F(AppModelEncoders, encoders_of_sound_are_not_told)
{
    startWith({u"libshine"_s, u"opus"_s});

    EXPECT_EQ(m_model->encoderStandIns(), Encoders());
}

TEST_F(AppModelEncoders, hardware_that_works_takes_the_place_of_software_when_the_check_ends)
{
    startWith({u"libx264"_s, u"libx265"_s, u"h264_nvenc"_s}, "exit 0");
    ASSERT_EQ(m_model->encoderStandIns().first().encoder, u"libx264"_s);

    EXPECT_EQ(changesByCheck(), 1);

    EXPECT_EQ(m_model->encoderStandIns(),
              (Encoders{{u"H.264"_s, u"h264_nvenc"_s}, {u"HEVC"_s, u"libx265"_s}}));
}

TEST_F(AppModelEncoders, without_tools_there_is_neither_an_encoder_nor_the_exact_mode)
{
    removeTools();
    start();

    EXPECT_EQ(m_model->encoderStandIns(), Encoders());
    EXPECT_FALSE(m_model->offersExactMode());
}

TEST_F(AppModelEncoders, the_exact_mode_needs_its_encoder)
{
    startWith({u"libx265"_s});
    EXPECT_FALSE(m_model->offersExactMode());

    startWith({u"libx264"_s});
    EXPECT_TRUE(m_model->offersExactMode());
}
