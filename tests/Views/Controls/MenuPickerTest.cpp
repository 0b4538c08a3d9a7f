// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/MenuPicker.h"

#include "ViewFixture.h"

using namespace Qt::StringLiterals;

namespace {

class MenuPickerTest : public ViewFixture
{
protected:
    /// The upper half of the last letter's place, before the arrow.
    static QImage endOfTheWords(MenuPicker &picker)
    {
        const QImage image = picker.grab().toImage();
        return image.copy(image.width() - 36, 6, 8, 8);
    }
};

TEST_F(MenuPickerTest, words_that_are_too_long_end_in_dots_and_not_in_half_a_letter)
{
    auto *picker = new MenuPicker;
    picker->setWords({QString(60, u'W'), u"W"_s});
    picker->setShown(0);
    start();
    show(picker, {150, 30});

    const QImage longEnd = endOfTheWords(*picker);
    picker->setShown(1);
    settle();

    EXPECT_EQ(longEnd, endOfTheWords(*picker)) << "nothing is as high as a letter there";
}

} // namespace
