// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/AdaptiveGrid.h"

#include <QLabel>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 220;

class AdaptiveGridTest : public ::testing::Test
{
protected:
    AdaptiveGridTest()
    {
        m_label->setWordWrap(true);
        m_grid->addWidget(m_label);
    }

    QWidget m_cells;
    AdaptiveGrid *m_grid = new AdaptiveGrid({.leastColumnWidth = 100}, &m_cells);
    QLabel *m_label = new QLabel(u"short"_s);
};

} // namespace

TEST_F(AdaptiveGridTest, grows_with_the_text_of_a_cell)
{
    const int before = m_grid->heightForWidth(width);

    m_label->setText(u"words that take more than a single line in so narrow a column of text"_s);

    EXPECT_GT(m_grid->heightForWidth(width), before);
}

TEST_F(AdaptiveGridTest, grows_with_each_row_of_cells)
{
    const int before = m_grid->heightForWidth(width);

    for (int i = 0; i < 2; ++i) {
        m_grid->addWidget(new QLabel(u"another"_s));
    }

    EXPECT_GT(m_grid->heightForWidth(width), before);
}
