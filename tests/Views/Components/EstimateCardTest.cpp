// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/EstimateCard.h"

#include "ViewFixture.h"

#include "Views/Controls/NumberLabel.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"

using namespace Qt::StringLiterals;

namespace {

class EstimateCardTest : public ViewFixture
{
protected:
    EstimateCardTest()
    {
        start();
        m_card = new EstimateCard(context());
        show(m_card, {620, 300});
    }

    void setEstimate(const EstimateInfo &estimate, std::optional<double> guaranteeMB = {})
    {
        m_card->setEstimate(estimate, guaranteeMB);
        settle();
    }

    void setSizes(qint64 originalBytes, qint64 estimatedBytes)
    {
        setEstimate({originalBytes, estimatedBytes, {}, {}});
    }

    bool showsPercentage() const { return !visibleTexts().filter(u"%"_s).isEmpty(); }

    int placeOf(const QString &text)
    {
        return find<NumberLabel>(text)->mapTo(m_card, QPoint()).x();
    }

    EstimateCard *m_card;
};

} // namespace

TEST_F(EstimateCardTest, the_sizes_stand_under_their_headings_and_the_saving_behind)
{
    setSizes(100'000'000, 24'300'000);

    EXPECT_EQ(visibleTexts(), QStringList({u"Original"_s, u"100 MB"_s, u"Estimated"_s,
                                           u"≈ 24.3 MB"_s, u"\u221275%"_s}));
    EXPECT_LT(placeOf(u"100 MB"_s), placeOf(u"≈ 24.3 MB"_s));
    EXPECT_LT(placeOf(u"≈ 24.3 MB"_s), placeOf(u"\u221275%"_s));
}

TEST_F(EstimateCardTest, an_estimate_as_large_as_the_original_or_larger_has_no_percentage)
{
    for (const qint64 estimated : {1'000'000, 1'000'001, 2'000'000}) {
        setSizes(1'000'000, estimated);
        EXPECT_FALSE(showsPercentage()) << estimated;
    }
}

TEST_F(EstimateCardTest, a_saving_of_exactly_a_hundredth_has_no_percentage)
{
    setSizes(1'000'000, 990'000);
    EXPECT_FALSE(showsPercentage());

    setSizes(1'000'000, 989'000);
    EXPECT_TRUE(shows(u"\u22121%"_s));
}

TEST_F(EstimateCardTest, of_an_empty_original_there_is_no_percentage)
{
    setSizes(0, 5'000'000);

    EXPECT_TRUE(shows(u"Zero KB"_s));
    EXPECT_FALSE(showsPercentage());
}

TEST_F(EstimateCardTest, a_percentage_goes_again_when_the_saving_does)
{
    setSizes(1000, 500);
    ASSERT_TRUE(showsPercentage());

    setSizes(1000, 1000);

    EXPECT_FALSE(showsPercentage());
}

TEST_F(EstimateCardTest, the_badge_is_there_only_when_the_estimate_has_one)
{
    setEstimate({1000, 1000, u"convert.badge.remux"_s, {}});
    EXPECT_TRUE(shows(u"Lossless · instant"_s));

    setEstimate({1000, 1000, {}, {}});
    EXPECT_FALSE(shows(u"Lossless · instant"_s));
}

TEST_F(EstimateCardTest, a_guarantee_tells_the_size_and_the_limit)
{
    setEstimate({100'000'000, 24'300'000, {}, {}}, 25);
    EXPECT_TRUE(shows(u"Estimated ~24.3 MB · guaranteed under 25 MB"_s));

    setEstimate({100'000'000, 24'300'000, {}, {}}, 25.5);
    EXPECT_TRUE(shows(u"Estimated ~24.3 MB · guaranteed under 25.5 MB"_s));

    setEstimate({100'000'000, 24'300'000, {}, {}});
    EXPECT_TRUE(visibleTexts().filter(u"guaranteed"_s).isEmpty());
}

TEST_F(EstimateCardTest, the_rows_stand_in_the_order_of_weight)
{
    setEstimate({100'000'000,
                 24'300'000,
                 u"target.alreadyfits"_s,
                 {{u"target.warn.floor"_s, {}}, {u"extract.noaudio"_s, {}}}},
                25);

    QStringList expected{u"Original"_s, u"100 MB"_s, u"Estimated"_s, u"≈ 24.3 MB"_s,
                         u"\u221275%"_s};
    expected +=
        {m_model->t(u"target.alreadyfits"_s), u"Estimated ~24.3 MB · guaranteed under 25 MB"_s,
         m_model->t(u"target.warn.floor"_s), m_model->t(u"extract.noaudio"_s)};
    EXPECT_EQ(visibleTexts(), expected);
}

TEST_F(EstimateCardTest, each_warning_has_its_sign_and_a_repaired_one_goes)
{
    const auto signs = [this] {
        int count = 0;
        for (const QWidget *view : m_card->findChildren<SymbolView *>()) {
            count += view->isVisible() ? 1 : 0;
        }
        // One is the arrow.
        return count - 1;
    };
    setEstimate({10, 10, {}, {{u"target.warn.floor"_s, {}}, {u"extract.noaudio"_s, {}}}});
    EXPECT_EQ(signs(), 2);

    setEstimate({10, 10, {}, {{u"extract.noaudio"_s, {}}}});
    EXPECT_EQ(signs(), 1);
    EXPECT_TRUE(shows(u"This file has no audio track."_s));
    EXPECT_FALSE(shows(m_model->t(u"target.warn.floor"_s)));

    setEstimate({10, 10, {}, {}});
    EXPECT_EQ(signs(), 0);
}

TEST_F(EstimateCardTest, a_warnings_arguments_are_filled_in_and_without_them_the_places_stay)
{
    setEstimate({10, 10, {}, {{u"extract.warn.generation"_s, {u"AC3"_s, u"MP3"_s}}}});
    EXPECT_TRUE(
        shows(u"Source audio is AC3; converting to MP3 re-encodes and loses some quality."_s));

    setEstimate({10, 10, {}, {{u"extract.warn.generation"_s, {}}}});
    EXPECT_TRUE(
        shows(u"Source audio is %1$@; converting to %2$@ re-encodes and loses some quality."_s));
}

TEST_F(EstimateCardTest, a_long_warning_breaks_into_lines_within_the_card)
{
    m_window->resize(300, 400);
    setEstimate({10, 10, {}, {{u"target.warn.hopeless"_s, {}}}});

    const auto *words = find<TextLabel>(m_model->t(u"target.warn.hopeless"_s));
    ASSERT_TRUE(words);

    EXPECT_GT(words->height(), 2 * words->fontMetrics().height());
    EXPECT_LE(words->mapTo(m_card, words->rect().bottomRight()).x(), m_card->width());
}

TEST_F(EstimateCardTest, nothing_moves_while_the_numbers_change)
{
    setSizes(104'300'000, 24'300'000);
    const int estimated = placeOf(u"≈ 24.3 MB"_s);
    const int saving = placeOf(u"\u221276%"_s);
    const int height = m_card->sizeHint().height();

    for (const auto &[bytes, text, percentage] :
         std::initializer_list<std::tuple<qint64, QString, QString>>{
             {9'000'000, u"≈ 9 MB"_s, u"\u221291%"_s},
             {11'100'000, u"≈ 11.1 MB"_s, u"\u221289%"_s},
             {88'800'000, u"≈ 88.8 MB"_s, u"\u221214%"_s}}) {
        setSizes(104'300'000, bytes);
        EXPECT_EQ(placeOf(text), estimated);
        EXPECT_EQ(placeOf(percentage), saving);
        EXPECT_EQ(m_card->sizeHint().height(), height);
    }
    setSizes(104'300'000, 104'300'000);
    EXPECT_EQ(m_card->sizeHint().height(), height);
}

TEST_F(EstimateCardTest, the_words_follow_the_language)
{
    setEstimate({10, 10, u"extract.direct"_s, {{u"extract.noaudio"_s, {}}}}, 25);

    m_model->setLanguage(AppLanguage::simplifiedChinese);
    settle();

    EXPECT_TRUE(shows(u"预估"_s));
    EXPECT_TRUE(shows(u"直拷 · 快 · 无损"_s));
    EXPECT_TRUE(shows(u"预估 ~10 bytes · 保证不超过 25 MB"_s));
    EXPECT_TRUE(shows(u"这个文件没有音轨。"_s));
}
