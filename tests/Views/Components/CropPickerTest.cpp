// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/CropPicker.h"

#include "ViewFixture.h"

#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/TextField.h"

#include <QTest>

using Aspect = CropSpec::Aspect;
using Crop = std::optional<CropSpec>;
using namespace Qt::StringLiterals;

namespace {

class CropPickerTest : public ViewFixture
{
protected:
    CropPickerTest()
    {
        start();
        m_picker = new CropPicker(context());
        QObject::connect(m_picker, &CropPicker::changed, m_picker,
                         [this](const Crop &crop) { m_told += crop; });
        show(m_picker, {640, 60});
    }

    void setCrop(const Crop &crop)
    {
        m_picker->setCrop(crop);
        settle();
    }

    void clickSwitch() { click(find<Switch>(u"Crop"_s)); }
    MenuPicker *aspects() { return find<MenuPicker>(u"Crop"_s); }
    IntegerField *width() { return find<IntegerField>(u"Width"_s); }
    IntegerField *height() { return find<IntegerField>(u"Height"_s); }

    CropPicker *m_picker;
    QList<Crop> m_told;
};

} // namespace

TEST_F(CropPickerTest, off_there_is_a_switch_alone)
{
    EXPECT_FALSE(find<Switch>(u"Crop"_s)->isChecked());
    EXPECT_EQ(aspects(), nullptr);
    EXPECT_EQ(width(), nullptr);
}

TEST_F(CropPickerTest, turned_on_it_begins_with_sixteen_to_nine)
{
    clickSwitch();

    EXPECT_EQ(m_told, QList<Crop>({CropSpec{Aspect::ratio16x9, {}, {}}}));
    EXPECT_EQ(aspects()->currentText(), u"16:9 · YouTube"_s);
    EXPECT_EQ(width(), nullptr);
}

TEST_F(CropPickerTest, off_and_on_again_forgets_the_shape)
{
    setCrop(CropSpec{Aspect::free, 640, 480});

    clickSwitch();
    EXPECT_EQ(m_picker->crop(), std::nullopt);
    clickSwitch();

    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::ratio16x9, {}, {}}));
    EXPECT_EQ(m_told.size(), 2);
}

TEST_F(CropPickerTest, the_shapes_stand_in_their_order)
{
    setCrop(CropSpec{Aspect::ratio16x9, {}, {}});

    QStringList words;
    for (int i = 0; i < aspects()->count(); ++i) {
        words += aspects()->itemText(i);
    }

    EXPECT_EQ(words, QStringList({u"16:9 · YouTube"_s, u"9:16 · TikTok / Shorts"_s, u"4:3"_s,
                                  u"1:1"_s, u"Free"_s}));
}

TEST_F(CropPickerTest, the_arrow_keys_pick_a_shape_and_the_sizes_stay)
{
    setCrop(CropSpec{Aspect::ratio1x1, 640, 480});
    aspects()->setFocus();

    press(Qt::Key_Down);
    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::free, 640, 480}));
    press(Qt::Key_Home);

    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::ratio16x9, 640, 480}));
}

TEST_F(CropPickerTest, only_a_free_crop_has_fields_and_they_store_nothing_by_themselves)
{
    setCrop(CropSpec{Aspect::ratio4x3, {}, {}});
    EXPECT_EQ(width(), nullptr);

    setCrop(CropSpec{Aspect::free, {}, {}});

    EXPECT_EQ(width()->text(), u"1280"_s);
    EXPECT_EQ(height()->text(), u"720"_s);
    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::free, {}, {}}));
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(CropPickerTest, what_is_typed_is_stored)
{
    setCrop(CropSpec{Aspect::free, {}, {}});

    type(width(), u"640"_s);
    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::free, 640, {}}));
    type(height(), u"362"_s);

    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::free, 640, 362}));
    EXPECT_EQ(width()->text(), u"640"_s);
    EXPECT_EQ(height()->text(), u"362"_s);
}

TEST_F(CropPickerTest, typing_five_stores_sixteen_and_the_field_says_so_in_the_end)
{
    setCrop(CropSpec{Aspect::free, {}, {}});

    type(width(), u"5"_s);
    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::free, 16, {}}));
    EXPECT_EQ(width()->text(), u"5"_s) << "more may be typed behind it";
    press(Qt::Key_Tab);

    EXPECT_EQ(width()->text(), u"16"_s);
}

TEST_F(CropPickerTest, what_is_no_number_is_not_stored_and_goes)
{
    setCrop(CropSpec{Aspect::free, 640, {}});

    type(width(), u"wide"_s);
    press(Qt::Key_Tab);
    type(height(), QString());
    press(Qt::Key_Tab);

    EXPECT_EQ(m_picker->crop(), (CropSpec{Aspect::free, 640, {}}));
    EXPECT_EQ(width()->text(), u"640"_s);
    EXPECT_EQ(height()->text(), u"720"_s);
}

TEST_F(CropPickerTest, a_side_beyond_every_picture_is_not_taken_and_goes)
{
    setCrop(CropSpec{Aspect::free, 640, 480});

    width()->setFocus();
    width()->selectAll();
    QTest::keyClicks(width(), u"99999999999999999999"_s);
    settle();
    const std::optional<CropSpec> typed = m_picker->crop();
    press(Qt::Key_Tab);

    // The digits on the way to it are numbers of their own.
    EXPECT_EQ(typed, (CropSpec{Aspect::free, 999'999'999, 480}));
    EXPECT_EQ(width()->text(), u"999999999"_s);
}

TEST_F(CropPickerTest, a_crop_that_is_set_is_shown_and_not_told)
{
    setCrop(CropSpec{Aspect::free, 8, 900});

    EXPECT_TRUE(find<Switch>(u"Crop"_s)->isChecked());
    EXPECT_EQ(width()->text(), u"8"_s);
    EXPECT_EQ(height()->text(), u"900"_s);
    EXPECT_TRUE(m_told.isEmpty());
}

TEST_F(CropPickerTest, the_row_keeps_its_height)
{
    const int height = m_picker->sizeHint().height();

    setCrop(CropSpec{Aspect::free, {}, {}});

    EXPECT_EQ(m_picker->sizeHint().expandedTo(m_picker->minimumSize()).height(),
              std::max(height, m_picker->minimumHeight()));
}
