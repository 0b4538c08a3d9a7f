// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "LayoutCheck.h"
#include "SceneFixture.h"

#include <QDir>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Shown {
    Scene scene;
    Look::Scheme scheme;
    AppLanguage language;
    QSize size;
};

constexpr QSize usual{1040, 700};
constexpr QSize least{920, 640};

QString fileNameOf(const Shown &shown)
{
    return QString::fromLatin1(shown.scene.name) +
           (shown.language == AppLanguage::english ? u"_en"_s : u"_zh"_s) +
           (shown.scheme == Look::Scheme::light ? u"_light"_s : u"_dark"_s) +
           (shown.size == usual ? QString() : u"_small"_s);
}

std::vector<Shown> allShown()
{
    std::vector<Shown> all;
    for (const Scene &scene : scenes()) {
        for (const auto language : {AppLanguage::english, AppLanguage::simplifiedChinese}) {
            all.push_back({scene, Look::Scheme::light, language, usual});
            all.push_back({scene, Look::Scheme::dark, language, usual});
            all.push_back({scene, Look::Scheme::light, language, least});
        }
    }
    return all;
}

/// Pictures are kept only where somebody asked for them.
void keepPicture(const QPixmap &picture, const QString &name)
{
    const QString folder = qEnvironmentVariable("MORVIX_SCREENSHOTS");
    if (!folder.isEmpty()) {
        EXPECT_TRUE(picture.save(QDir(folder).absoluteFilePath(name + u".png"_s)));
    }
}

} // namespace

class Scenes : public SceneFixture, public ::testing::WithParamInterface<Shown>
{
};

TEST_P(Scenes, show_all_words_whole_and_all_controls_named_and_within_reach)
{
    const Shown &shown = GetParam();
    open(Dress{shown.scheme, shown.language, shown.size},
         shown.scene.isWithoutTools ? Tools::missing : Tools::found);

    shown.scene.set(*this);
    settle();

    keepPicture(picture(), fileNameOf(shown));
    EXPECT_EQ(LayoutCheck::clippedTexts(window()), QStringList());
    EXPECT_EQ(LayoutCheck::overlaps(window()), QStringList());
    EXPECT_EQ(LayoutCheck::namelessControls(window()), QStringList());
    EXPECT_EQ(LayoutCheck::unreachableControls(window()), QStringList());
}

INSTANTIATE_TEST_SUITE_P(All, Scenes, ::testing::ValuesIn(allShown()),
                         [](const auto &shown) { return fileNameOf(shown.param).toStdString(); });
