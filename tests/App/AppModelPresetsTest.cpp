// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "Engine/PresetStore.h"

using namespace Qt::StringLiterals;

namespace {

GifParams smallGif()
{
    GifParams params;
    params.width = 320;
    params.end = 2.5;
    return params;
}

struct NamedSpec {
    PresetSpec spec;
    ActionKind action;
    JobMode mode;
};

QList<NamedSpec> oneOfEachKind()
{
    TargetSizeParams targetSize;
    targetSize.targetMB = 8;
    ConvertParams convert;
    convert.container = OutputContainer::mkv;
    CompressParams compress;
    compress.customHeight = 700;
    ExtractParams extract;
    extract.audioTrackIndex = 1;
    EnhanceParams enhance;
    enhance.muted = true;
    MergeParams merge;
    merge.forceReencode = true;
    SplitParams split;
    split.parts = 5;
    AdjustParams adjust;
    adjust.speed = 2;
    return {{targetSize, ActionKind::targetSize, targetSize},
            {convert, ActionKind::convert, convert},
            {compress, ActionKind::compress, compress},
            {extract, ActionKind::extract, extract},
            {smallGif(), ActionKind::gif, smallGif()},
            {enhance, ActionKind::enhance, enhance},
            {merge, ActionKind::merge, merge},
            {split, ActionKind::split, split},
            {adjust, ActionKind::adjust, adjust}};
}

UserPreset presetOf(const PresetSpec &spec, const QString &name = u"Mine"_s)
{
    UserPreset preset;
    preset.name = name;
    preset.createdAt = QDateTime::fromSecsSinceEpoch(1'770'000'000, Qt::UTC);
    preset.spec = spec;
    return preset;
}

class AppModelPresets : public AppFixture
{
protected:
    AppModelPresets()
    {
        start({.collections = {std::make_shared<PresetStore>(m_data.url({})), nullptr}});
        count(&AppModel::presetsChanged, m_changes);
        count(&AppModel::presetBannerChanged, m_banners);
    }

    void count(void (AppModel::*changed)(), int &times)
    {
        QObject::connect(m_model.get(), changed, m_model.get(), [&times] { ++times; });
    }

    const QList<UserPreset> &presets() const { return m_model->presets()->presets(); }
    // What the next start of the program would find.
    QList<UserPreset> storedPresets() const { return PresetStore(m_data.url({})).presets(); }

    const TempFolder m_data;
    int m_changes = 0;
    int m_banners = 0;
};

} // namespace

TEST_F(AppModelPresets, a_saved_preset_is_in_the_list_and_in_the_file_and_is_told)
{
    m_model->savePreset(u"Little"_s, smallGif(), QUrl::fromLocalFile(u"/films/out"_s));

    ASSERT_EQ(presets().size(), 1);
    EXPECT_EQ(presets().first().name, u"Little"_s);
    EXPECT_EQ(presets().first().spec, PresetSpec(smallGif()));
    EXPECT_EQ(presets().first().outputDirectoryPath, u"/films/out"_s);
    EXPECT_EQ(storedPresets().value(0).id, presets().first().id);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(AppModelPresets, a_preset_saved_without_an_output_folder_has_none)
{
    m_model->savePreset(u"Little"_s, smallGif(), QUrl::fromLocalFile(u"/films/out"_s));
    m_model->savePreset(u"Little"_s, smallGif(), std::nullopt);

    EXPECT_EQ(presets().value(0).outputDirectoryPath, std::nullopt);
}

TEST_F(AppModelPresets, saving_under_a_name_again_keeps_identity_and_place)
{
    m_model->savePreset(u"Old"_s, CompressParams(), std::nullopt);
    m_model->savePreset(u"New"_s, SplitParams(), std::nullopt);
    const UserPreset before = presets().at(1);

    m_model->savePreset(u"Old"_s, ConvertParams(), std::nullopt);

    ASSERT_EQ(presets().size(), 2);
    EXPECT_EQ(presets().at(0).name, u"New"_s);
    EXPECT_EQ(presets().at(1).id, before.id);
    EXPECT_EQ(presets().at(1).createdAt, before.createdAt);
    EXPECT_EQ(presets().at(1).spec, PresetSpec(ConvertParams()));
    EXPECT_EQ(m_changes, 3);
}

TEST_F(AppModelPresets, a_deleted_preset_is_gone_from_list_and_file_and_is_told)
{
    m_model->savePreset(u"Stays"_s, smallGif(), std::nullopt);
    m_model->savePreset(u"Goes"_s, smallGif(), std::nullopt);
    m_changes = 0;

    m_model->deletePreset(presets().first().id);

    ASSERT_EQ(presets().size(), 1);
    EXPECT_EQ(presets().first().name, u"Stays"_s);
    ASSERT_EQ(storedPresets().size(), 1);
    EXPECT_EQ(storedPresets().first().name, u"Stays"_s);
    EXPECT_EQ(m_changes, 1);
}

TEST_F(AppModelPresets, the_list_already_holds_the_change_when_it_is_told)
{
    QList<qsizetype> sizes;
    QObject::connect(m_model.get(), &AppModel::presetsChanged, m_model.get(),
                     [&] { sizes += presets().size(); });

    m_model->savePreset(u"Little"_s, smallGif(), std::nullopt);
    m_model->deletePreset(presets().first().id);

    EXPECT_EQ(sizes, (QList<qsizetype>{1, 0}));
}

TEST_F(AppModelPresets, applying_brings_up_the_action_and_hands_over_the_preset)
{
    for (const NamedSpec &kind : oneOfEachKind()) {
        m_model->setAction(ActionKind::play);
        const UserPreset preset = presetOf(kind.spec, rawValue(kind.action));

        m_model->applyPreset(preset);

        EXPECT_EQ(m_model->action(), kind.action) << preset.name.toStdString();
        EXPECT_EQ(m_model->appliedPreset(), preset) << preset.name.toStdString();
        EXPECT_EQ(m_model->presetBanner(), preset.name);
    }
    EXPECT_EQ(m_banners, 9);
}

TEST_F(AppModelPresets, action_and_preset_stand_when_the_banner_is_told)
{
    const UserPreset preset = presetOf(smallGif());
    bool stood = false;
    QObject::connect(m_model.get(), &AppModel::presetBannerChanged, m_model.get(), [&] {
        stood = m_model->action() == ActionKind::gif && m_model->appliedPreset() == preset;
    });

    m_model->applyPreset(preset);

    EXPECT_TRUE(stood);
}

TEST_F(AppModelPresets, an_applied_preset_waits_for_its_panel)
{
    const UserPreset merge = presetOf(MergeParams());
    m_model->applyPreset(merge);
    turnTheLoop();
    EXPECT_EQ(m_model->appliedPreset(), merge);

    m_model->setAction(ActionKind::gif);
    EXPECT_EQ(m_model->appliedPreset(), merge) << "another panel doesn't take it away";

    m_model->setAppliedPreset(std::nullopt);
    EXPECT_EQ(m_model->action(), ActionKind::gif);
    EXPECT_EQ(m_model->presetBanner(), u"Mine"_s) << "the banner outlives the uptake";
}

TEST_F(AppModelPresets, applying_makes_no_job_and_changes_no_preset)
{
    m_model->savePreset(u"Little"_s, smallGif(), std::nullopt);
    const QList<UserPreset> before = presets();
    m_changes = 0;

    m_model->applyPreset(before.first());

    EXPECT_EQ(presets(), before);
    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_EQ(m_changes, 0);
}

// The panels look at the preset when the banner changes, and a banner that stays is no change.
TEST_F(AppModelPresets, applying_a_preset_of_the_same_name_again_brings_no_new_banner)
{
    m_model->applyPreset(presetOf(smallGif()));
    m_model->setAppliedPreset(std::nullopt);

    const UserPreset second = presetOf(CompressParams());
    m_model->applyPreset(second);

    EXPECT_EQ(m_banners, 1);
    EXPECT_EQ(m_model->action(), ActionKind::compress);
    EXPECT_EQ(m_model->appliedPreset(), second);
}

TEST_F(AppModelPresets, a_deleted_preset_stays_applied)
{
    m_model->savePreset(u"Little"_s, smallGif(), std::nullopt);
    const UserPreset preset = presets().first();
    m_model->applyPreset(preset);

    m_model->deletePreset(preset.id);

    EXPECT_EQ(m_model->appliedPreset(), preset);
    EXPECT_EQ(m_model->presetBanner(), u"Little"_s);
}

TEST_F(AppModelPresets, a_spec_is_the_mode_of_the_same_name_and_back)
{
    for (const NamedSpec &kind : oneOfEachKind()) {
        EXPECT_EQ(AppModel::modeFrom(kind.spec), kind.mode);
        EXPECT_EQ(AppModel::specOf(kind.mode), kind.spec);
    }
}

TEST_F(AppModelPresets, a_trim_has_no_spec)
{
    EXPECT_EQ(AppModel::specOf(TrimParams()), std::nullopt);
}

TEST_F(AppModelPresets, a_program_without_collections_has_no_presets_and_does_without)
{
    start();
    count(&AppModel::presetsChanged, m_changes);

    m_model->savePreset(u"Little"_s, smallGif(), std::nullopt);
    m_model->deletePreset(QUuid::createUuid());

    EXPECT_EQ(m_model->presets(), nullptr);
    EXPECT_EQ(m_model->watchEngine(), nullptr);
    EXPECT_EQ(m_changes, 0);
    EXPECT_EQ(m_data.names(), QStringList());

    m_model->applyPreset(presetOf(smallGif()));
    EXPECT_EQ(m_model->action(), ActionKind::gif);
}
