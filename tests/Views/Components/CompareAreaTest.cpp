// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/CompareArea.h"

#include "ViewFixture.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QImage plain(QSize size, const QColor &color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// An area of 320 by 180 in a larger window.
class CompareAreaTest : public ViewFixture
{
protected:
    CompareAreaTest()
    {
        auto *window = new QWidget;
        m_area = new CompareArea(window);
        m_area->setGeometry(10, 10, 320, 180);
        m_area->setPictures(plain({1280, 720}, Qt::red), plain({1280, 720}, Qt::blue));
        show(window, {400, 220});
    }

    QColor colorAt(int x, int y = 90)
    {
        const QImage seen = m_area->grab().toImage();
        const qreal ratio = seen.devicePixelRatio();
        return seen.pixelColor((QPointF(x, y) * ratio).toPoint());
    }

    void drag(int from, int to)
    {
        const auto place = [this](int x) { return m_area->mapTo(m_window.get(), QPoint(x, 90)); };
        QWindow *window = m_window->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, place(from));
        QTest::mouseMove(window, place(to));
        QTest::mouseRelease(window, Qt::LeftButton, {}, place(to));
        settle();
    }

    CompareArea *m_area;
};

} // namespace

TEST_F(CompareAreaTest, the_sample_lies_over_the_source_up_to_the_divider)
{
    EXPECT_EQ(m_area->divider(), 0.5);
    EXPECT_EQ(colorAt(40), QColor(Qt::blue));
    EXPECT_EQ(colorAt(160), QColor(Qt::white));
    EXPECT_EQ(colorAt(280), QColor(Qt::red));
}

TEST_F(CompareAreaTest, a_drag_takes_the_divider_along)
{
    drag(20, 240);

    EXPECT_DOUBLE_EQ(m_area->divider(), 0.75);
    EXPECT_EQ(colorAt(200), QColor(Qt::blue));
    EXPECT_EQ(colorAt(300), QColor(Qt::red));
    QTest::mouseMove(m_window->windowHandle(), QPoint(50, 50));
    settle();
    EXPECT_DOUBLE_EQ(m_area->divider(), 0.75);
}

TEST_F(CompareAreaTest, a_click_brings_the_divider_there)
{
    click(m_area, {80, 20});

    EXPECT_DOUBLE_EQ(m_area->divider(), 0.25);
}

TEST_F(CompareAreaTest, the_divider_is_never_lost_at_an_edge)
{
    drag(160, 2000);
    EXPECT_DOUBLE_EQ(m_area->divider(), 0.98);

    drag(160, -2000);
    EXPECT_DOUBLE_EQ(m_area->divider(), 0.02);
}

TEST_F(CompareAreaTest, an_area_without_width_leaves_the_divider_alone)
{
    m_area->setFixedWidth(1);
    settle();

    click(m_area, {0, 90});

    EXPECT_EQ(m_area->divider(), 0.5);
}

TEST_F(CompareAreaTest, the_arrow_keys_move_the_divider_by_a_fiftieth)
{
    const QSignalSpy moved(m_area, &CompareArea::dividerChanged);
    m_area->setFocus();

    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_DOUBLE_EQ(m_area->divider(), 0.54);
    press(Qt::Key_Left);
    EXPECT_DOUBLE_EQ(m_area->divider(), 0.52);
    press(Qt::Key_End);
    press(Qt::Key_Right);
    EXPECT_DOUBLE_EQ(m_area->divider(), 0.98);
    press(Qt::Key_Home);

    EXPECT_DOUBLE_EQ(m_area->divider(), 0.02);
    EXPECT_EQ(moved.count(), 5);
}

TEST_F(CompareAreaTest, it_is_as_wide_as_the_picture_so_that_both_lie_on_each_other)
{
    EXPECT_EQ(m_area->sizeHint(), QSize(320, 180));

    m_area->setPictures(plain({720, 1280}, Qt::red), plain({720, 1280}, Qt::blue));
    EXPECT_EQ(m_area->sizeHint(), QSize(101, 180));

    m_area->setPictures({}, {});
    EXPECT_EQ(m_area->sizeHint().height(), 180);
}

TEST_F(CompareAreaTest, in_a_wider_area_the_source_is_fitted_and_the_sample_fills_its_box)
{
    m_area->setPictures(plain({100, 100}, Qt::red), plain({100, 100}, Qt::blue));
    settle();

    // The source is 180 wide, in the middle of 320; the sample reaches from the edge to 160.
    EXPECT_EQ(colorAt(20), QColor(Qt::blue));
    EXPECT_EQ(colorAt(150), QColor(Qt::blue));
    EXPECT_EQ(colorAt(200), QColor(Qt::red));
    EXPECT_NE(colorAt(300), QColor(Qt::red));
}

TEST_F(CompareAreaTest, without_one_of_the_pictures_it_is_empty)
{
    m_area->setPictures(plain({1280, 720}, Qt::red), {});
    settle();

    EXPECT_TRUE(m_area->isEmpty());
    EXPECT_EQ(colorAt(40), colorAt(280));
    EXPECT_NE(colorAt(280), QColor(Qt::red));
}

TEST_F(CompareAreaTest, assistive_technology_sees_a_slider)
{
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(m_area);
    ASSERT_NE(seen, nullptr);
    QAccessibleValueInterface *value = seen->valueInterface();
    ASSERT_NE(value, nullptr);

    EXPECT_EQ(seen->role(), QAccessible::Slider);
    EXPECT_EQ(value->currentValue().toDouble(), 0.5);
    EXPECT_EQ(value->minimumValue().toDouble(), 0.02);
    EXPECT_EQ(value->maximumValue().toDouble(), 0.98);
    EXPECT_EQ(value->minimumStepSize().toDouble(), 0.02);
    value->setCurrentValue(0.3);
    EXPECT_EQ(m_area->divider(), 0.3);
}
