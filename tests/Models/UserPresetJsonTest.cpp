// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/UserPresetJson.h"

#include "support/Printing.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct SpecForm {
    ActionKind action;
    PresetSpec spec;
    QByteArray document;
};

void PrintTo(const SpecForm &form, std::ostream *out)
{
    *out << rawValue(form.action).toStdString();
}

AdvancedOptions fullAdvancedOptions()
{
    AdvancedOptions options;
    options.codec = CodecChoice::softwareX264;
    options.crf = 18;
    options.fpsCap = 24;
    options.audioBitrateKbps = 96;
    options.volumeDb = -4.5;
    options.replacementAudioURL = QUrl::fromLocalFile(u"/music/a song.mp3"_s);
    options.crop = CropSpec{CropSpec::Aspect::free, 640, 360};
    options.hdrPassthrough = true;
    options.preserveAlpha = true;
    options.extraArgs = u"-tune \"film\""_s;
    return options;
}

const QByteArray plainAdvanced =
    R"({"codec":"auto","extraArgs":"","hdrPassthrough":false,"preserveAlpha":false})";

const QByteArray fullAdvanced =
    R"({"audioBitrateKbps":96,"codec":"softwareX264","crf":18,)"
    R"("crop":{"aspect":"free","customHeight":360,"customWidth":640},"extraArgs":"-tune \"film\"",)"
    R"("fpsCap":24,"hdrPassthrough":true,"preserveAlpha":true,)"
    R"("replacementAudioURL":"file:///music/a%20song.mp3","volumeDb":-4.5})";

// One row a case, in the order of the cases; the text is what is written, to the letter.
std::vector<SpecForm> specForms()
{
    return {
        {ActionKind::targetSize, TargetSizeParams{8.5, true, 1.5, 2, true, fullAdvancedOptions()},
         R"({"targetSize":{"_0":{"advanced":)" + fullAdvanced +
             R"(,"exactTwoPass":true,"muted":true,"skipHeadSeconds":1.5,"skipTailSeconds":2,)"
             R"("targetMB":8.5}}})"},
        {ActionKind::convert,
         ConvertParams{OutputContainer::mkv, ConvertParams::AudioFormat::flac, true, {}},
         R"({"convert":{"_0":{"advanced":)" + plainAdvanced +
             R"(,"audioFormat":"flac","container":"mkv","forceReencode":true}}})"},
        {ActionKind::compress,
         CompressParams{CompressParams::Mode::quality,
                        CompressParams::QualityTier::tiny,
                        CompressParams::ResTier::custom,
                        700,
                        true,
                        {}},
         R"({"compress":{"_0":{"advanced":)" + plainAdvanced +
             R"(,"customHeight":700,"mode":"quality","muted":true,"quality":"tiny",)"
             R"("resolution":"custom"}}})"},
        {ActionKind::extract, ExtractParams{ExtractParams::AudioFormat::wav, 320, 1},
         R"({"extract":{"_0":{"audioTrackIndex":1,"bitrateKbps":320,"format":"wav"}}})"},
        {ActionKind::gif, GifParams{0.5, 3, 320, 10, false, true, true},
         R"({"gif":{"_0":{"bounce":true,"end":3,"fps":10,"loopForever":false,)"
         R"("screenContent":true,"start":0.5,"width":320}}})"},
        {ActionKind::enhance,
         EnhanceParams{EnhanceParams::DenoiseLevel::strong,
                       EnhanceParams::SharpenLevel::off,
                       EnhanceParams::UpscaleFactor::x15,
                       true,
                       {}},
         R"({"enhance":{"_0":{"advanced":)" + plainAdvanced +
             R"(,"denoise":"strong","muted":true,"sharpen":"off","upscale":"x15"}}})"},
        {ActionKind::merge, MergeParams{OutputContainer::mov, true, {}},
         R"({"merge":{"_0":{"advanced":)" + plainAdvanced +
             R"(,"container":"mov","forceReencode":true}}})"},
        {ActionKind::split, SplitParams{SplitParams::Mode::byParts, 10, 30.5, 4, {}},
         R"({"split":{"_0":{"advanced":)" + plainAdvanced +
             R"(,"durationPerPartSeconds":30.5,"mode":"byParts","parts":4,"sizePerPartMB":10}}})"},
        {ActionKind::adjust,
         AdjustParams{AdjustParams::Rotation::ccw90, true, true, 2, true, true, {}},
         R"({"adjust":{"_0":{"advanced":)" + plainAdvanced +
             R"(,"flipH":true,"flipV":true,"muted":true,"reverse":true,"rotation":"ccw90",)"
             R"("speed":2}}})"},
    };
}

class UserPresetJsonSpec : public ::testing::TestWithParam<SpecForm>
{
};

// The value in a document of the form [value], so that every JSON value can be written down.
QJsonValue parsed(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson('[' + json + ']', &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError)
        << error.errorString().toStdString() << " in " << json.toStdString();
    return document.array().at(0);
}

QByteArray compact(const QJsonValue &json)
{
    return QJsonDocument(json.toObject()).toJson(QJsonDocument::Compact);
}

// Empty when the document is taken.
template <typename Value> QString refusalOf(const QByteArray &json)
{
    try {
        Json::decode<Value>(parsed(json));
        return {};
    } catch (const Json::DecodeError &error) {
        return error.errorDescription();
    }
}

// A preset whose keys are replaced by others; an empty value leaves the key out.
QByteArray presetWith(const QMap<QString, QByteArray> &changes)
{
    QMap<QString, QByteArray> members{
        {u"id"_s, R"("10293847-5610-4293-8475-610293847561")"},
        {u"name"_s, R"("For the web")"},
        {u"createdAt"_s, R"("2026-03-01T14:05:09Z")"},
        {u"spec"_s, R"({"extract":{"_0":{"format":"mp3","bitrateKbps":128,"audioTrackIndex":0}}})"},
        {u"outputDirectoryPath"_s, R"("/films")"},
    };
    members.insert(changes);
    QByteArrayList texts;
    for (auto [key, value] : members.asKeyValueRange()) {
        if (!value.isEmpty()) {
            texts.append('"' + key.toUtf8() + "\":" + value);
        }
    }
    return '{' + texts.join(',') + '}';
}

const QString notOneKey = u"Invalid number of keys found, expected one."_s;
const QString noDate = u"a date and time such as 2026-03-01T14:05:09Z is expected"_s;

} // namespace

TEST_P(UserPresetJsonSpec, is_written_as_one_key_over_one_nameless_argument)
{
    EXPECT_EQ(compact(Json::encode(GetParam().spec)), GetParam().document);
}

TEST_P(UserPresetJsonSpec, comes_back_as_it_was)
{
    EXPECT_EQ(Json::decode<PresetSpec>(parsed(GetParam().document)), GetParam().spec);
}

TEST_P(UserPresetJsonSpec, belongs_to_the_action_of_its_name)
{
    EXPECT_EQ(actionOf(GetParam().spec), GetParam().action);
}

TEST_P(UserPresetJsonSpec, is_refused_when_any_key_of_its_parameters_is_missing)
{
    const QString name = rawValue(GetParam().action);
    const QJsonObject params =
        parsed(GetParam().document).toObject().value(name).toObject().value("_0"_L1).toObject();
    const QStringList optionals{u"skipHeadSeconds"_s, u"skipTailSeconds"_s, u"end"_s};
    for (const QString &key : params.keys()) {
        QJsonObject less = params;
        less.remove(key);
        const QJsonObject document{{name, QJsonObject{{u"_0"_s, less}}}};

        EXPECT_EQ(refusalOf<PresetSpec>(compact(document)),
                  optionals.contains(key) ? QString()
                                          : name + u"._0."_s + key + u": the key is missing"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(AllCases, UserPresetJsonSpec, ::testing::ValuesIn(specForms()),
                         [](const auto &row) { return rawValue(row.param.action).toStdString(); });

TEST(UserPresetJson, every_action_but_trim_and_play_has_a_spec)
{
    QList<ActionKind> actions;
    for (const SpecForm &form : specForms()) {
        actions.append(form.action);
    }
    EXPECT_EQ(actions,
              (QList<ActionKind>{ActionKind::targetSize, ActionKind::convert, ActionKind::compress,
                                 ActionKind::extract, ActionKind::gif, ActionKind::enhance,
                                 ActionKind::merge, ActionKind::split, ActionKind::adjust}));
}

TEST(UserPresetJson, a_spec_without_one_known_case_is_refused)
{
    const QByteArray gif = specForms().at(4).document.chopped(1).sliced(1);
    const QByteArray extract = specForms().at(3).document.chopped(1).sliced(1);
    EXPECT_EQ(refusalOf<PresetSpec>("{}"), notOneKey);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"trim":{"_0":{}}})"), notOneKey);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"play":{}})"), notOneKey);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"GIF":{"_0":{}}})"), notOneKey);
    EXPECT_EQ(refusalOf<PresetSpec>('{' + gif + ',' + extract + '}'), notOneKey);
    EXPECT_EQ(refusalOf<PresetSpec>('{' + gif + R"(,"convert":null})"), notOneKey);
}

TEST(UserPresetJson, keys_that_name_no_case_are_not_counted)
{
    const QByteArray gif = specForms().at(4).document.chopped(1);
    EXPECT_EQ(Json::decode<PresetSpec>(parsed(gif + R"(,"foo":1})")), specForms().at(4).spec);
    EXPECT_EQ(Json::decode<PresetSpec>(parsed(gif + R"(,"trim":{"_0":{}},"play":null})")),
              specForms().at(4).spec);
}

TEST(UserPresetJson, keys_beside_the_nameless_argument_are_ignored)
{
    QJsonObject payload = parsed(specForms().at(4).document)["gif"_L1].toObject();
    payload.insert("_1"_L1, 5);
    EXPECT_EQ(Json::decode<PresetSpec>(QJsonObject{{u"gif"_s, payload}}), specForms().at(4).spec);
}

TEST(UserPresetJson, a_spec_of_a_wrong_shape_is_refused_with_the_place)
{
    EXPECT_EQ(refusalOf<PresetSpec>("[]"), u"an object is expected"_s);
    EXPECT_EQ(refusalOf<PresetSpec>("\"gif\""), u"an object is expected"_s);
    EXPECT_EQ(refusalOf<PresetSpec>("null"), u"an object is expected"_s);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"gif":null})"), u"gif: an object is expected"_s);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"gif":[]})"), u"gif: an object is expected"_s);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"gif":{}})"), u"gif._0: the key is missing"_s);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"gif":{"_0":null}})"), u"gif._0: an object is expected"_s);
    EXPECT_EQ(refusalOf<PresetSpec>(R"({"gif":{"_0":3}})"), u"gif._0: an object is expected"_s);
}

TEST(UserPresetJson, a_preset_is_written_with_sorted_keys_and_comes_back)
{
    UserPreset preset;
    preset.id = QUuid(u"10293847-5610-4293-8475-610293847561"_s);
    preset.name = u"Für das Web 🎬"_s;
    preset.createdAt = QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9), Qt::UTC);
    preset.spec = ExtractParams{};
    preset.outputDirectoryPath = u"/films/out"_s;
    const QByteArray document =
        R"({"createdAt":"2026-03-01T14:05:09Z","id":"10293847-5610-4293-8475-610293847561",)"
        R"("name":"Für das Web 🎬","outputDirectoryPath":"/films/out",)"
        R"("spec":{"extract":{"_0":{"audioTrackIndex":0,"bitrateKbps":192,"format":"m4a"}}}})";

    EXPECT_EQ(compact(Json::encode(preset)), document);
    EXPECT_EQ(Json::decode<UserPreset>(parsed(document)), preset);
}

TEST(UserPresetJson, a_preset_without_a_folder_is_written_without_the_key)
{
    UserPreset preset;
    preset.createdAt = QDateTime::currentDateTimeUtc();
    EXPECT_FALSE(Json::encode(preset).toObject().contains("outputDirectoryPath"_L1));
}

TEST(UserPresetJson, the_folder_may_be_missing_or_null_and_nothing_else)
{
    EXPECT_EQ(Json::decode<UserPreset>(parsed(presetWith({{u"outputDirectoryPath"_s, "null"}})))
                  .outputDirectoryPath,
              std::nullopt);
    EXPECT_EQ(Json::decode<UserPreset>(parsed(presetWith({{u"outputDirectoryPath"_s, ""}})))
                  .outputDirectoryPath,
              std::nullopt);
    for (const QString &key : {u"id"_s, u"name"_s, u"createdAt"_s, u"spec"_s}) {
        EXPECT_EQ(refusalOf<UserPreset>(presetWith({{key, ""}})), key + u": the key is missing"_s);
        EXPECT_NE(refusalOf<UserPreset>(presetWith({{key, "null"}})), u""_s) << key.toStdString();
    }
}

TEST(UserPresetJson, values_of_a_wrong_type_are_refused_with_the_place)
{
    struct Case {
        QString key;
        QByteArray value;
        QString problem;
    };
    const QList<Case> cases{
        {u"id"_s, "5", u"a text is expected"_s},
        {u"id"_s, R"("five")", u"a UUID is expected"_s},
        {u"id"_s, R"("{10293847-5610-4293-8475-610293847561}")", u"a UUID is expected"_s},
        {u"name"_s, "[]", u"a text is expected"_s},
        {u"createdAt"_s, "794066709", u"a text is expected"_s},
        {u"spec"_s, R"({"gif":5})", u"gif: an object is expected"_s},
        {u"spec"_s, "{}", notOneKey},
        {u"outputDirectoryPath"_s, "true", u"a text is expected"_s},
    };
    for (const Case &wrong : cases) {
        const QString separator = wrong.problem.startsWith(u"gif"_s) ? u"."_s : u": "_s;
        EXPECT_EQ(refusalOf<UserPreset>(presetWith({{wrong.key, wrong.value}})),
                  wrong.key + separator + wrong.problem);
    }
}

TEST(UserPresetJson, half_a_character_is_refused)
{
    const QString problem = u"name: a text of whole characters is expected"_s;
    for (const QByteArray &text : {R"("half \ud83c of one")"_ba, R"("\udfac\ud83c")"_ba}) {
        EXPECT_EQ(refusalOf<UserPreset>(presetWith({{u"name"_s, text}})), problem)
            << text.toStdString();
    }
    EXPECT_EQ(refusalOf<UserPreset>(presetWith({{u"name"_s, R"("\ud83c\udfac")"}})), u""_s);
}

TEST(UserPresetJson, one_broken_preset_refuses_the_list_and_is_named)
{
    const QByteArray list =
        '[' + presetWith({}) + ',' + presetWith({{u"spec"_s, R"({"gif":{"_0":{}}})"}}) + ']';
    EXPECT_EQ(refusalOf<QList<UserPreset>>(list), u"[1].spec.gif._0.start: the key is missing"_s);
}

TEST(UserPresetJsonDate, is_written_in_utc_and_cut_to_the_second)
{
    const QDateTime elsewhere(QDate(2026, 3, 1), QTime(16, 5, 9, 999), Qt::OffsetFromUTC, 7200);
    EXPECT_EQ(Json::encode(elsewhere), QJsonValue(u"2026-03-01T14:05:09Z"_s));
}

TEST(UserPresetJsonDate, other_offsets_are_read_as_the_moment_that_they_mean)
{
    const QDateTime moment(QDate(2026, 3, 1), QTime(14, 5, 9), Qt::UTC);
    for (const QByteArray &text :
         {"\"2026-03-01T14:05:09Z\""_ba, "\"2026-03-01T16:05:09+02:00\""_ba,
          "\"2026-03-01T12:35:09-0130\""_ba, "\"2026-03-01T14:05:09+00:00\""_ba}) {
        const auto read = Json::decode<QDateTime>(parsed(text));
        EXPECT_EQ(read, moment) << text.toStdString();
        EXPECT_EQ(read.timeSpec(), Qt::UTC);
    }
}

TEST(UserPresetJsonDate, anything_else_is_refused)
{
    for (const QByteArray &text :
         {"\"\""_ba, "\"yesterday\""_ba, "\"2026-03-01\""_ba, "\"2026-03-01T14:05:09\""_ba,
          "\"2026-03-01T14:05Z\""_ba, "\"2026-03-01T14:05:09.5Z\""_ba,
          "\"2026-03-01 14:05:09Z\""_ba, "\"2026-03-01t14:05:09z\""_ba, "\"2026-3-1T14:05:09Z\""_ba,
          "\"2026-02-30T14:05:09Z\""_ba, "\"2026-13-01T14:05:09Z\""_ba,
          "\"2026-03-01T14:05:61Z\""_ba, "\"2026-03-01T14:05:09+99:00\""_ba,
          "\" 2026-03-01T14:05:09Z\""_ba, "\"2026-03-01T14:05:09Z\\n\""_ba,
          "\"12026-03-01T14:05:09Z\""_ba, "\"0000-03-01T14:05:09Z\""_ba,
          "\"0001-01-01T00:00:00+01:00\""_ba, "\"9999-12-31T23:59:59-01:00\""_ba}) {
        EXPECT_EQ(refusalOf<QDateTime>(text), noDate) << text.toStdString();
    }
    EXPECT_EQ(refusalOf<QDateTime>("5"), u"a text is expected"_s);
    EXPECT_EQ(refusalOf<QDateTime>("null"), u"a text is expected"_s);
}
