// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/PreviewSection.h"

#include "ViewFixture.h"

#include "Views/Components/CompareArea.h"
#include "Views/Components/PreviewCompareView.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/TextField.h"
#include "support/EventLoop.h"

#include <QBuffer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray png(const QColor &color)
{
    QImage image(64, 36, QImage::Format_RGB32);
    image.fill(color);
    QByteArray data;
    QBuffer file(&data);
    file.open(QIODevice::WriteOnly);
    image.save(&file, "PNG");
    return data;
}

class PreviewSectionTest : public ViewFixture
{
protected:
    PreviewSectionTest()
    {
        m_stills.write(u"before.png"_s, png(Qt::red));
        m_stills.write(u"after.png"_s, png(Qt::blue));
    }

    /// An ffmpeg that writes down where it takes the source's still, and copies ready stills.
    void installStills()
    {
        installFFmpeg("await_gate\n"
                      "still=" +
                      m_stills.path().toUtf8() +
                      "/${out##*/}\n"
                      "case $out in *before.png) echo \"$*\" >> " +
                      notes().toUtf8() +
                      ";; esac\n"
                      "if [ -f \"$still\" ]; then cp \"$still\" \"$out\"; else result 10; fi");
    }

    /// Shows the section for the film that is selected.
    void showSection(const FilmFacts &facts = {})
    {
        start();
        m_film = take(u"film.mp4"_s, facts);
        m_section = new PreviewSection(context());
        m_section->setFile(m_film);
        m_section->setRequest(TargetSizeParams{});
        show(m_section, {640, 300});
    }

    QString notes() const { return m_stills.path(u"notes"_s); }
    Button *generate() { return find<Button>(u"Quality Preview"_s); }
    TextField *position() { return find<TextField>(u"Sample position (sec)"_s); }
    CompareArea *area()
    {
        auto *area = m_section->findChild<CompareArea *>();
        return area->isVisible() ? area : nullptr;
    }
    bool spins() const { return m_section->findChild<Spinner *>()->isVisible(); }

    void waitForTheEnd()
    {
        ASSERT_TRUE(EventLoop::waitFor([this] { return !m_model->previewRunning(); }, m_model.get(),
                                       &AppModel::previewRunningChanged));
        settle();
    }

    const TempFolder m_stills;
    VideoFile m_film;
    PreviewSection *m_section = nullptr;
};

} // namespace

TEST_F(PreviewSectionTest, a_click_makes_both_stills_and_shows_them)
{
    installStills();
    showSection();
    EXPECT_EQ(area(), nullptr);

    click(generate());
    waitForTheEnd();

    ASSERT_NE(area(), nullptr);
    EXPECT_FALSE(area()->isEmpty());
    EXPECT_TRUE(shows(u"Original"_s));
    EXPECT_TRUE(shows(u"Compressed"_s));
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(PreviewSectionTest, while_one_is_made_it_says_so_and_takes_no_other)
{
    installStills();
    showSection();
    const Gate gate(m_film);
    EXPECT_FALSE(spins());

    click(generate());

    EXPECT_TRUE(spins());
    EXPECT_TRUE(shows(u"Generating preview…"_s));
    EXPECT_FALSE(generate()->isEnabled());
    // Two of its steps read the film.
    gate.open();
    gate.open();
    waitForTheEnd();
    EXPECT_FALSE(spins());
    EXPECT_FALSE(shows(u"Generating preview…"_s));
    EXPECT_TRUE(generate()->isEnabled());
}

TEST_F(PreviewSectionTest, the_typed_position_is_where_the_sample_is_taken)
{
    installStills();
    showSection();

    type(position(), u"12.5"_s);
    EXPECT_EQ(m_section->samplePosition(), 12.5);
    EXPECT_EQ(m_model->previewSeconds(), 0);
    click(generate());
    waitForTheEnd();

    EXPECT_EQ(m_model->previewSeconds(), 12.5);
    EXPECT_TRUE(contentOf(notes()).contains("-ss 12.500"));
}

TEST_F(PreviewSectionTest, an_emptied_field_is_the_zero_that_it_shows)
{
    showSection();
    EXPECT_EQ(position()->text(), QString());
    EXPECT_EQ(position()->placeholderText(), u"0"_s);
    type(position(), u"30"_s);

    type(position(), QString());

    EXPECT_EQ(m_section->samplePosition(), 0);
}

TEST_F(PreviewSectionTest, what_is_no_number_is_not_taken_and_goes)
{
    showSection();
    type(position(), u"7"_s);

    QTest::keyClicks(position(), u"s"_s);
    EXPECT_EQ(m_section->samplePosition(), 7);
    press(Qt::Key_Tab);
    EXPECT_EQ(position()->text(), u"7"_s);

    for (const QString &text : {u"seven"_s, u"nan"_s, u"inf"_s}) {
        type(position(), text);
        EXPECT_EQ(m_section->samplePosition(), 0) << text.toStdString();
        press(Qt::Key_Tab);
        EXPECT_EQ(position()->text(), QString());
    }
}

TEST_F(PreviewSectionTest, a_position_that_is_set_is_shown)
{
    showSection();

    m_section->setSamplePosition(4.25);
    EXPECT_EQ(position()->text(), u"4.25"_s);
    m_section->setSamplePosition(0);

    EXPECT_EQ(position()->text(), QString());
}

TEST_F(PreviewSectionTest, a_file_without_a_picture_or_a_known_width_has_no_preview)
{
    showSection({.videoCodec = QString()});
    EXPECT_FALSE(generate()->isEnabled());

    const VideoFile unmeasured = take(u"unmeasured.mp4"_s, {.width = 0});
    m_section->setFile(unmeasured);
    settle();
    EXPECT_FALSE(generate()->isEnabled());

    const VideoFile whole = take(u"whole.mp4"_s);
    m_section->setFile(whole);
    settle();
    EXPECT_TRUE(generate()->isEnabled());
}

TEST_F(PreviewSectionTest, a_failure_is_the_models_to_tell_and_leaves_no_pictures)
{
    installFFmpeg("exit 1");
    showSection();

    click(generate());
    waitForTheEnd();

    ASSERT_TRUE(m_model->lastError().has_value());
    EXPECT_TRUE(m_model->lastError()->startsWith(u"Preview failed: "_s));
    EXPECT_EQ(area(), nullptr);
    EXPECT_TRUE(generate()->isEnabled());
}

TEST_F(PreviewSectionTest, stills_that_cannot_be_read_leave_the_area_empty)
{
    m_stills.write(u"after.png"_s, "no picture");
    installStills();
    showSection();

    click(generate());
    waitForTheEnd();

    ASSERT_NE(area(), nullptr);
    EXPECT_TRUE(area()->isEmpty());
}

TEST_F(PreviewSectionTest, a_new_pair_is_looked_at_anew)
{
    installStills();
    showSection();
    click(generate());
    waitForTheEnd();
    click(area(), {20, 90});
    ASSERT_NE(area()->divider(), 0.5);

    click(generate());
    waitForTheEnd();

    EXPECT_EQ(area()->divider(), 0.5);
}

TEST_F(PreviewSectionTest, the_words_follow_the_language)
{
    showSection();

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_TRUE(find<Button>(u"画质预览"_s));
    EXPECT_TRUE(find<TextField>(u"取样位置（秒）"_s));
}
