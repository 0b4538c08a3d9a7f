// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/JobParamsJson.h"

#include "support/Printing.h"

#include <QJsonDocument>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// What a key holds.
enum class Kind { flag, integer, real, word, text, url, object, list, neverRead };

enum class Presence { required, optional };

struct Key {
    QString name;
    Kind kind;
    Presence presence = Presence::required;
};

/// One record's JSON form: its keys, and two whole documents with the records that they stand for.
struct Form {
    const char *name;
    QList<Key> keys;
    /// As new, every optional absent.
    QByteArray bareDocument;
    QByteArray bareEncoded;
    /// No field at its default, every optional present.
    QByteArray fullDocument;
    QByteArray fullEncoded;
    /// Decodes and encodes again; identities, which no decoder reads, are zeroed.
    std::function<QJsonValue(const QJsonValue &)> again;
    std::function<bool(const QJsonValue &)> decodesToBare;
    std::function<bool(const QJsonValue &)> decodesToFull;
};

void PrintTo(const Form &form, std::ostream *out)
{
    *out << form.name;
}

// The value in a document of the form {"value": …}, so that every JSON value can be written down.
QJsonValue parsed(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson("{\"value\":" + json + '}', &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError)
        << error.errorString().toStdString() << " in " << json.toStdString();
    return document.object().value("value"_L1);
}

// One spelling for equal values: keys sorted, no blanks.
QByteArray compact(const QJsonValue &value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
}

QByteArray compact(const QByteArray &json)
{
    return compact(parsed(json));
}

template <typename Value> bool isRefused(const QJsonValue &json)
{
    try {
        Json::decode<Value>(json);
        return false;
    } catch (const Json::DecodeError &) {
        return true;
    }
}

template <typename Value> QString errorOf(const QByteArray &json)
{
    try {
        Json::decode<Value>(parsed(json));
        return {};
    } catch (const Json::DecodeError &error) {
        return error.errorDescription();
    }
}

template <typename Value> Value withoutIdentities(Value value)
{
    return value;
}

TrimSegment withoutIdentities(TrimSegment segment)
{
    segment.id = QUuid();
    return segment;
}

TrimParams withoutIdentities(TrimParams params)
{
    for (TrimSegment &segment : params.segments) {
        segment.id = QUuid();
    }
    return params;
}

template <typename Type> struct Documented {
    Type record;
    QByteArray document;
};

template <typename Type>
Form formOf(const char *name, const QList<Key> &keys, const Documented<Type> &bare,
            const Documented<Type> &full)
{
    const auto decodesTo = [](const Type &record) {
        return [record](const QJsonValue &json) {
            return withoutIdentities(Json::decode<Type>(json)) == withoutIdentities(record);
        };
    };
    return {.name = name,
            .keys = keys,
            .bareDocument = bare.document,
            .bareEncoded = compact(Json::encode(bare.record)),
            .fullDocument = full.document,
            .fullEncoded = compact(Json::encode(full.record)),
            .again =
                [](const QJsonValue &json) {
                    return Json::encode(withoutIdentities(Json::decode<Type>(json)));
                },
            .decodesToBare = decodesTo(bare.record),
            .decodesToFull = decodesTo(full.record)};
}

// Short for the tables of keys.
constexpr auto optional = Presence::optional;

const QUuid someIdentity(u"10293847-5610-4293-8475-610293847561"_s);

const QByteArray bareAdvanced =
    R"({"codec": "auto", "hdrPassthrough": false, "preserveAlpha": false, "extraArgs": ""})";

const QByteArray fullAdvanced = R"({
    "codec": "softwareX264",
    "crf": 18,
    "fpsCap": 24,
    "audioBitrateKbps": 96,
    "volumeDb": -4.5,
    "replacementAudioURL": "file:///music/a%20song.mp3",
    "crop": {"aspect": "free", "customWidth": 640, "customHeight": 360},
    "hdrPassthrough": true,
    "preserveAlpha": true,
    "extraArgs": "-tune \"film\""
})";

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

TrimSegment segmentOf(double start, double end)
{
    TrimSegment segment;
    segment.id = someIdentity;
    segment.start = start;
    segment.end = end;
    return segment;
}

Form cropSpec()
{
    return formOf<CropSpec>(
        "CropSpec",
        {{u"aspect"_s, Kind::word},
         {u"customWidth"_s, Kind::integer, optional},
         {u"customHeight"_s, Kind::integer, optional}},
        {CropSpec{CropSpec::Aspect::ratio16x9, {}, {}}, R"({"aspect": "ratio16x9"})"},
        {CropSpec{CropSpec::Aspect::ratio1x1, 320, 240},
         R"({"aspect": "ratio1x1", "customWidth": 320, "customHeight": 240})"});
}

Form advancedOptions()
{
    return formOf<AdvancedOptions>("AdvancedOptions",
                                   {{u"codec"_s, Kind::word},
                                    {u"crf"_s, Kind::integer, optional},
                                    {u"fpsCap"_s, Kind::integer, optional},
                                    {u"audioBitrateKbps"_s, Kind::integer, optional},
                                    {u"volumeDb"_s, Kind::real, optional},
                                    {u"replacementAudioURL"_s, Kind::url, optional},
                                    {u"crop"_s, Kind::object, optional},
                                    {u"hdrPassthrough"_s, Kind::flag},
                                    {u"preserveAlpha"_s, Kind::flag},
                                    {u"extraArgs"_s, Kind::text}},
                                   {AdvancedOptions(), bareAdvanced},
                                   {fullAdvancedOptions(), fullAdvanced});
}

Form targetSizeParams()
{
    TargetSizeParams full;
    full.targetMB = 9.75;
    full.muted = true;
    full.skipHeadSeconds = 1.5;
    full.skipTailSeconds = 2.25;
    full.exactTwoPass = true;
    full.advanced = fullAdvancedOptions();
    return formOf<TargetSizeParams>(
        "TargetSizeParams",
        {{u"targetMB"_s, Kind::real},
         {u"muted"_s, Kind::flag},
         {u"skipHeadSeconds"_s, Kind::real, optional},
         {u"skipTailSeconds"_s, Kind::real, optional},
         {u"exactTwoPass"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {TargetSizeParams(),
         R"({"targetMB": 25, "muted": false, "exactTwoPass": false, "advanced": )" + bareAdvanced +
             "}"},
        {full, R"({"targetMB": 9.75, "muted": true, "skipHeadSeconds": 1.5,
                   "skipTailSeconds": 2.25, "exactTwoPass": true, "advanced": )" +
                   fullAdvanced + "}"});
}

Form convertParams()
{
    ConvertParams full;
    full.container = OutputContainer::mkv;
    full.audioFormat = ConvertParams::AudioFormat::flac;
    full.forceReencode = true;
    full.advanced = fullAdvancedOptions();
    return formOf<ConvertParams>(
        "ConvertParams",
        {{u"container"_s, Kind::word},
         {u"audioFormat"_s, Kind::word},
         {u"forceReencode"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {ConvertParams(),
         R"({"container": "mp4", "audioFormat": "keep", "forceReencode": false, "advanced": )" +
             bareAdvanced + "}"},
        {full,
         R"({"container": "mkv", "audioFormat": "flac", "forceReencode": true, "advanced": )" +
             fullAdvanced + "}"});
}

Form compressParams()
{
    CompressParams full;
    full.mode = CompressParams::Mode::quality;
    full.quality = CompressParams::QualityTier::tiny;
    full.resolution = CompressParams::ResTier::custom;
    full.customHeight = 900;
    full.muted = true;
    full.advanced = fullAdvancedOptions();
    return formOf<CompressParams>(
        "CompressParams",
        {{u"mode"_s, Kind::word},
         {u"quality"_s, Kind::word},
         {u"resolution"_s, Kind::word},
         {u"customHeight"_s, Kind::integer},
         {u"muted"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {CompressParams(), R"({"mode": "smart", "quality": "balanced", "resolution": "original",
                               "customHeight": 1080, "muted": false, "advanced": )" +
                               bareAdvanced + "}"},
        {full, R"({"mode": "quality", "quality": "tiny", "resolution": "custom",
                   "customHeight": 900, "muted": true, "advanced": )" +
                   fullAdvanced + "}"});
}

Form extractParams()
{
    ExtractParams full;
    full.format = ExtractParams::AudioFormat::wav;
    full.bitrateKbps = 320;
    full.audioTrackIndex = 2;
    return formOf<ExtractParams>(
        "ExtractParams",
        {{u"format"_s, Kind::word},
         {u"bitrateKbps"_s, Kind::integer},
         {u"audioTrackIndex"_s, Kind::integer}},
        {ExtractParams(), R"({"format": "m4a", "bitrateKbps": 192, "audioTrackIndex": 0})"},
        {full, R"({"format": "wav", "bitrateKbps": 320, "audioTrackIndex": 2})"});
}

Form trimSegment()
{
    return formOf<TrimSegment>(
        "TrimSegment",
        {{u"id"_s, Kind::neverRead}, {u"start"_s, Kind::real}, {u"end"_s, Kind::real}},
        {segmentOf(0, 0),
         R"({"id": "10293847-5610-4293-8475-610293847561", "start": 0, "end": 0})"},
        {segmentOf(1.25, 3.5),
         R"({"id": "10293847-5610-4293-8475-610293847561", "start": 1.25, "end": 3.5})"});
}

Form trimParams()
{
    TrimParams full;
    full.segments = {segmentOf(4, 6.5), segmentOf(0.5, 1)};
    full.separateFiles = true;
    full.exactReencode = true;
    full.advanced = fullAdvancedOptions();
    return formOf<TrimParams>(
        "TrimParams",
        {{u"segments"_s, Kind::list},
         {u"separateFiles"_s, Kind::flag},
         {u"exactReencode"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {TrimParams(),
         R"({"segments": [], "separateFiles": false, "exactReencode": false, "advanced": )" +
             bareAdvanced + "}"},
        {full,
         R"({"segments": [
                {"id": "10293847-5610-4293-8475-610293847561", "start": 4, "end": 6.5},
                {"id": "10293847-5610-4293-8475-610293847561", "start": 0.5, "end": 1}],
             "separateFiles": true, "exactReencode": true, "advanced": )" +
             fullAdvanced + "}"});
}

Form gifParams()
{
    GifParams full;
    full.start = 1.5;
    full.end = 4.25;
    full.width = 640;
    full.fps = 24;
    full.loopForever = false;
    full.bounce = true;
    full.screenContent = true;
    return formOf<GifParams>("GifParams",
                             {{u"start"_s, Kind::real},
                              {u"end"_s, Kind::real, optional},
                              {u"width"_s, Kind::integer},
                              {u"fps"_s, Kind::integer},
                              {u"loopForever"_s, Kind::flag},
                              {u"bounce"_s, Kind::flag},
                              {u"screenContent"_s, Kind::flag}},
                             {GifParams(), R"({"start": 0, "width": 480, "fps": 15,
                                 "loopForever": true, "bounce": false, "screenContent": false})"},
                             {full, R"({"start": 1.5, "end": 4.25, "width": 640, "fps": 24,
                                 "loopForever": false, "bounce": true, "screenContent": true})"});
}

Form enhanceParams()
{
    EnhanceParams full;
    full.denoise = EnhanceParams::DenoiseLevel::strong;
    full.sharpen = EnhanceParams::SharpenLevel::medium;
    full.upscale = EnhanceParams::UpscaleFactor::x15;
    full.muted = true;
    full.advanced = fullAdvancedOptions();
    return formOf<EnhanceParams>(
        "EnhanceParams",
        {{u"denoise"_s, Kind::word},
         {u"sharpen"_s, Kind::word},
         {u"upscale"_s, Kind::word},
         {u"muted"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {EnhanceParams(), R"({"denoise": "light", "sharpen": "light", "upscale": "x1",
                              "muted": false, "advanced": )" +
                              bareAdvanced + "}"},
        {full, R"({"denoise": "strong", "sharpen": "medium", "upscale": "x15",
                   "muted": true, "advanced": )" +
                   fullAdvanced + "}"});
}

Form mergeParams()
{
    MergeParams full;
    full.container = OutputContainer::webm;
    full.forceReencode = true;
    full.advanced = fullAdvancedOptions();
    return formOf<MergeParams>(
        "MergeParams",
        {{u"container"_s, Kind::word},
         {u"forceReencode"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {MergeParams(),
         R"({"container": "mp4", "forceReencode": false, "advanced": )" + bareAdvanced + "}"},
        {full,
         R"({"container": "webm", "forceReencode": true, "advanced": )" + fullAdvanced + "}"});
}

Form splitParams()
{
    SplitParams full;
    full.mode = SplitParams::Mode::byParts;
    full.sizePerPartMB = 8.5;
    full.durationPerPartSeconds = 12.25;
    full.parts = 7;
    full.advanced = fullAdvancedOptions();
    return formOf<SplitParams>(
        "SplitParams",
        {{u"mode"_s, Kind::word},
         {u"sizePerPartMB"_s, Kind::real},
         {u"durationPerPartSeconds"_s, Kind::real},
         {u"parts"_s, Kind::integer},
         {u"advanced"_s, Kind::object}},
        {SplitParams(), R"({"mode": "bySize", "sizePerPartMB": 25, "durationPerPartSeconds": 60,
                            "parts": 2, "advanced": )" +
                            bareAdvanced + "}"},
        {full, R"({"mode": "byParts", "sizePerPartMB": 8.5, "durationPerPartSeconds": 12.25,
                   "parts": 7, "advanced": )" +
                   fullAdvanced + "}"});
}

Form adjustParams()
{
    AdjustParams full;
    full.rotation = AdjustParams::Rotation::ccw90;
    full.flipH = true;
    full.flipV = true;
    full.speed = 0.5;
    full.reverse = true;
    full.muted = true;
    full.advanced = fullAdvancedOptions();
    return formOf<AdjustParams>(
        "AdjustParams",
        {{u"rotation"_s, Kind::word},
         {u"flipH"_s, Kind::flag},
         {u"flipV"_s, Kind::flag},
         {u"speed"_s, Kind::real},
         {u"reverse"_s, Kind::flag},
         {u"muted"_s, Kind::flag},
         {u"advanced"_s, Kind::object}},
        {AdjustParams(), R"({"rotation": "none", "flipH": false, "flipV": false, "speed": 1,
                             "reverse": false, "muted": false, "advanced": )" +
                             bareAdvanced + "}"},
        {full, R"({"rotation": "ccw90", "flipH": true, "flipV": true, "speed": 0.5,
                   "reverse": true, "muted": true, "advanced": )" +
                   fullAdvanced + "}"});
}

std::vector<Form> allForms()
{
    return {cropSpec(),       advancedOptions(), targetSizeParams(), convertParams(),
            compressParams(), extractParams(),   trimSegment(),      trimParams(),
            gifParams(),      enhanceParams(),   mergeParams(),      splitParams(),
            adjustParams()};
}

// Values that no key of the kind takes. None of them is null, which an optional key does take.
QList<QByteArray> wrongValues(Kind kind)
{
    switch (kind) {
    case Kind::flag:
        return {"0", "1", "\"true\"", "\"false\"", "\"\"", "[]", "{}", "[true]"};
    case Kind::integer:
        return {"25.5", "true", "false", "\"25\"", "\"\"", "[]",
                "{}",   "[25]", "-0.5",  "1e300",  "1e19", "9223372036854775808"};
    case Kind::real:
        return {"true", "false", "\"25\"", "\"25.5\"", "\"\"", "\"nan\"", "[]", "{}", "[1.5]"};
    case Kind::word:
        return {"0", "1", "true", "\"\"", "\"nosuchword\"", "[]", "{}"};
    case Kind::text:
        return {"0", "25", "1.5", "true", "[]", "{}", "[\"a\"]"};
    case Kind::url:
        return {"0", "25", "true", "[]", "{}", "\"\"", "\"http://[\"", "\"file:///%zz\""};
    case Kind::object:
        return {"0", "25", "true", "\"\"", "\"{}\"", "[]", "[{}]", "{}"};
    case Kind::list:
        return {"0", "25", "true", "\"\"", "\"[]\"", "{}", "[null]", "[1]", "[{}]", "[[]]"};
    case Kind::neverRead:
        return {};
    }
    Q_UNREACHABLE();
}

class JobParamsJson : public testing::TestWithParam<Form>
{
protected:
    QJsonObject full() const { return parsed(GetParam().fullDocument).toObject(); }

    QJsonObject fullWith(const QString &key, const QJsonValue &value) const
    {
        QJsonObject object = full();
        object.insert(key, value);
        return object;
    }

    QJsonObject fullWithout(const QString &key) const
    {
        QJsonObject object = full();
        object.remove(key);
        return object;
    }

    bool refuses(const QJsonValue &json) const
    {
        try {
            GetParam().again(json);
            return false;
        } catch (const Json::DecodeError &) {
            return true;
        }
    }

    QString errorOf(const QJsonValue &json) const
    {
        try {
            GetParam().again(json);
            return {};
        } catch (const Json::DecodeError &error) {
            return error.errorDescription();
        }
    }
};

// Every word of an enumeration at one key of a document.
template <typename Record, typename Enum>
void expectWords(const Form &form, const QString &key, Enum Record::*member,
                 const QStringList &words)
{
    ASSERT_EQ(static_cast<std::size_t>(words.size()), allCases<Enum>().size());
    QJsonObject object = parsed(form.fullDocument).toObject();
    for (qsizetype i = 0; i < words.size(); ++i) {
        object.insert(key, words.at(i));
        const Record record = Json::decode<Record>(object);
        EXPECT_EQ(static_cast<qsizetype>(record.*member), i) << words.at(i).toStdString();
        EXPECT_EQ(Json::encode(record).toObject().value(key).toString(), words.at(i));
    }
}

// Documents that differ from a word in a hair.
template <typename Record>
void expectUnknownWords(const Form &form, const QString &key, const QStringList &words)
{
    QJsonObject object = parsed(form.fullDocument).toObject();
    for (const QString &word : words) {
        object.insert(key, word);
        EXPECT_TRUE(isRefused<Record>(object)) << key.toStdString() << ' ' << word.toStdString();
    }
}

} // namespace

TEST_P(JobParamsJson, the_new_record_is_written_as_its_document_without_absent_keys)
{
    EXPECT_EQ(GetParam().bareEncoded, compact(GetParam().bareDocument));
}

TEST_P(JobParamsJson, the_full_record_is_written_as_its_document)
{
    EXPECT_EQ(GetParam().fullEncoded, compact(GetParam().fullDocument));
}

TEST_P(JobParamsJson, the_documents_are_read_as_their_records)
{
    EXPECT_TRUE(GetParam().decodesToBare(parsed(GetParam().bareDocument)));
    EXPECT_TRUE(GetParam().decodesToFull(parsed(GetParam().fullDocument)));
    EXPECT_FALSE(GetParam().decodesToFull(parsed(GetParam().bareDocument)));
}

TEST_P(JobParamsJson, the_full_document_has_exactly_the_keys_of_the_record)
{
    QStringList expected;
    for (const Key &key : GetParam().keys) {
        expected.append(key.name);
    }
    expected.sort();
    EXPECT_EQ(full().keys(), expected);
}

TEST_P(JobParamsJson, each_missing_required_key_refuses_the_document)
{
    for (const Key &key : GetParam().keys) {
        if (key.presence == Presence::required && key.kind != Kind::neverRead) {
            EXPECT_TRUE(refuses(fullWithout(key.name))) << key.name.toStdString();
        }
    }
}

TEST_P(JobParamsJson, null_at_a_required_key_refuses_the_document)
{
    for (const Key &key : GetParam().keys) {
        if (key.presence == Presence::required && key.kind != Kind::neverRead) {
            EXPECT_TRUE(refuses(fullWith(key.name, QJsonValue::Null))) << key.name.toStdString();
        }
    }
}

TEST_P(JobParamsJson, a_missing_or_null_optional_is_absent_and_left_out_when_written)
{
    for (const Key &key : GetParam().keys) {
        if (key.presence == Presence::optional) {
            const QJsonObject without = fullWithout(key.name);
            EXPECT_EQ(compact(GetParam().again(without)), compact(QJsonValue(without)))
                << key.name.toStdString();
            EXPECT_EQ(compact(GetParam().again(fullWith(key.name, QJsonValue::Null))),
                      compact(QJsonValue(without)))
                << key.name.toStdString();
        }
    }
}

TEST_P(JobParamsJson, values_of_a_wrong_type_refuse_the_document)
{
    for (const Key &key : GetParam().keys) {
        for (const QByteArray &value : wrongValues(key.kind)) {
            EXPECT_TRUE(refuses(fullWith(key.name, parsed(value))))
                << key.name.toStdString() << ": " << value.toStdString();
        }
    }
}

TEST_P(JobParamsJson, whole_numbers_are_integers_however_they_are_written)
{
    for (const Key &key : GetParam().keys) {
        if (key.kind != Kind::integer) {
            continue;
        }
        const std::pair<QByteArray, QByteArray> table[] = {
            {"25.0", "25"},
            {"1e3", "1000"},
            {"2.5e1", "25"},
            {"0", "0"},
            {"-7", "-7"},
            {"9007199254740993", "9007199254740993"},
            {"9223372036854775807", "9223372036854775807"},
            {"-9223372036854775808", "-9223372036854775808"},
        };
        for (const auto &[written, read] : table) {
            EXPECT_EQ(compact(GetParam()
                                  .again(fullWith(key.name, parsed(written)))
                                  .toObject()
                                  .value(key.name)),
                      '[' + read + ']')
                << key.name.toStdString() << ": " << written.toStdString();
        }
    }
}

TEST_P(JobParamsJson, real_numbers_take_every_spelling_and_keep_every_digit)
{
    for (const Key &key : GetParam().keys) {
        if (key.kind != Kind::real) {
            continue;
        }
        const std::pair<QByteArray, double> table[] = {
            {"25", 25.0},     {"25.0", 25.0},
            {"-0.25", -0.25}, {"1e3", 1000},
            {"0.1", 0.1},     {"1e300", 1e300},
            {"3e-7", 3e-7},   {"12.345678901234567", 12.345678901234567}};
        for (const auto &[written, read] : table) {
            const QByteArray document =
                compact(GetParam().again(fullWith(key.name, parsed(written))).toObject());
            const QJsonObject object = QJsonDocument::fromJson(document).array().at(0).toObject();
            EXPECT_EQ(object.value(key.name).toDouble(), read)
                << key.name.toStdString() << ": " << written.toStdString();
        }
    }
}

TEST_P(JobParamsJson, unknown_keys_are_ignored_and_not_written_again)
{
    QJsonObject object = fullWith(u"unheardOf"_s, QJsonArray{1, 2});
    object.insert(u"Muted"_s, u"yes"_s);
    EXPECT_TRUE(GetParam().decodesToFull(object));
    const QJsonObject written = GetParam().again(object).toObject();
    EXPECT_FALSE(written.contains(u"unheardOf"_s));
    EXPECT_FALSE(written.contains(u"Muted"_s));
}

TEST_P(JobParamsJson, a_document_that_is_no_object_is_refused)
{
    for (const QByteArray json : {"null", "true", "1", "\"x\"", "[]", "[{}]"}) {
        EXPECT_TRUE(refuses(parsed(json))) << json.toStdString();
    }
    EXPECT_TRUE(refuses(QJsonValue(QJsonValue::Undefined)));
}

TEST_P(JobParamsJson, the_error_names_the_key_that_is_to_blame)
{
    for (const Key &key : GetParam().keys) {
        if (key.kind == Kind::neverRead) {
            continue;
        }
        const QString wrong = errorOf(fullWith(key.name, parsed(wrongValues(key.kind).first())));
        EXPECT_TRUE(wrong.startsWith(key.name + u": "_s)) << wrong.toStdString();
        if (key.presence == Presence::required) {
            const QString missing = errorOf(fullWithout(key.name));
            EXPECT_TRUE(missing.startsWith(key.name + u": "_s)) << missing.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Records, JobParamsJson, testing::ValuesIn(allForms()),
                         [](const auto &instance) { return std::string(instance.param.name); });

TEST(JobParamsJsonWords, every_enumeration_is_written_by_its_words)
{
    expectWords(cropSpec(), u"aspect"_s, &CropSpec::aspect,
                {u"free"_s, u"ratio16x9"_s, u"ratio9x16"_s, u"ratio4x3"_s, u"ratio1x1"_s});
    expectWords(advancedOptions(), u"codec"_s, &AdvancedOptions::codec,
                {u"auto"_s, u"h264VideoToolbox"_s, u"hevcVideoToolbox"_s, u"softwareX264"_s,
                 u"proresVideoToolbox"_s, u"svtAV1"_s});
    expectWords(convertParams(), u"container"_s, &ConvertParams::container,
                {u"mp4"_s, u"mov"_s, u"mkv"_s, u"webm"_s, u"avi"_s});
    expectWords(convertParams(), u"audioFormat"_s, &ConvertParams::audioFormat,
                {u"keep"_s, u"aac"_s, u"mp3"_s, u"wav"_s, u"flac"_s});
    expectWords(compressParams(), u"mode"_s, &CompressParams::mode, {u"smart"_s, u"quality"_s});
    expectWords(compressParams(), u"quality"_s, &CompressParams::quality,
                {u"maximum"_s, u"high"_s, u"balanced"_s, u"small"_s, u"tiny"_s});
    expectWords(
        compressParams(), u"resolution"_s, &CompressParams::resolution,
        {u"original"_s, u"p2160"_s, u"p1440"_s, u"p1080"_s, u"p720"_s, u"p480"_s, u"custom"_s});
    expectWords(extractParams(), u"format"_s, &ExtractParams::format,
                {u"m4a"_s, u"mp3"_s, u"aac"_s, u"wav"_s});
    expectWords(enhanceParams(), u"denoise"_s, &EnhanceParams::denoise,
                {u"off"_s, u"light"_s, u"medium"_s, u"strong"_s});
    expectWords(enhanceParams(), u"sharpen"_s, &EnhanceParams::sharpen,
                {u"off"_s, u"light"_s, u"medium"_s});
    expectWords(enhanceParams(), u"upscale"_s, &EnhanceParams::upscale,
                {u"x1"_s, u"x15"_s, u"x2"_s});
    expectWords(mergeParams(), u"container"_s, &MergeParams::container,
                {u"mp4"_s, u"mov"_s, u"mkv"_s, u"webm"_s, u"avi"_s});
    expectWords(splitParams(), u"mode"_s, &SplitParams::mode,
                {u"bySize"_s, u"byDuration"_s, u"byParts"_s});
    expectWords(adjustParams(), u"rotation"_s, &AdjustParams::rotation,
                {u"none"_s, u"cw90"_s, u"r180"_s, u"ccw90"_s});
}

TEST(JobParamsJsonWords, words_of_other_enumerations_and_other_spellings_are_refused)
{
    expectUnknownWords<CropSpec>(cropSpec(), u"aspect"_s, {u"16x9"_s, u"Free"_s, u"ratio16x10"_s});
    expectUnknownWords<AdvancedOptions>(advancedOptions(), u"codec"_s,
                                        {u"automatic"_s, u"h264"_s, u"AUTO"_s, u"auto "_s});
    expectUnknownWords<ConvertParams>(convertParams(), u"container"_s,
                                      {u"MP4"_s, u".mp4"_s, u"m4a"_s, u"gif"_s});
    expectUnknownWords<ConvertParams>(convertParams(), u"audioFormat"_s, {u"m4a"_s, u"Keep"_s});
    expectUnknownWords<CompressParams>(compressParams(), u"mode"_s, {u"Smart"_s, u"balanced"_s});
    expectUnknownWords<CompressParams>(compressParams(), u"quality"_s, {u"max"_s, u"light"_s});
    expectUnknownWords<CompressParams>(compressParams(), u"resolution"_s, {u"1080p"_s, u"p360"_s});
    expectUnknownWords<ExtractParams>(extractParams(), u"format"_s, {u"flac"_s, u"keep"_s});
    expectUnknownWords<EnhanceParams>(enhanceParams(), u"denoise"_s, {u"none"_s, u"Off"_s});
    expectUnknownWords<EnhanceParams>(enhanceParams(), u"sharpen"_s, {u"strong"_s, u"Light"_s});
    expectUnknownWords<EnhanceParams>(enhanceParams(), u"upscale"_s, {u"1.5"_s, u"x3"_s, u"X2"_s});
    expectUnknownWords<MergeParams>(mergeParams(), u"container"_s, {u"MOV"_s, u"ts"_s});
    expectUnknownWords<SplitParams>(splitParams(), u"mode"_s, {u"size"_s, u"bysize"_s});
    expectUnknownWords<AdjustParams>(adjustParams(), u"rotation"_s, {u"90"_s, u"cw180"_s, u""_s});
}

TEST(JobParamsJsonNumbers, integers_beyond_64_bits_are_refused_on_both_sides)
{
    EXPECT_EQ(Json::decode<qint64>(parsed("9223372036854775807")),
              std::numeric_limits<qint64>::max());
    EXPECT_EQ(Json::decode<qint64>(parsed("-9223372036854775808")),
              std::numeric_limits<qint64>::min());
    for (const QByteArray json :
         {"9223372036854775808", "18446744073709551616", "1e19", "-1e19", "1e300", "-1e300",
          "-9223372036854777856", "100000000000000000000000000"}) {
        EXPECT_TRUE(isRefused<qint64>(parsed(json))) << json.toStdString();
    }
}

TEST(JobParamsJsonNumbers, a_number_too_large_for_a_double_is_refused)
{
    for (const QByteArray number : {"1e400", "-1e400", "1e99999"}) {
        const QJsonDocument document = QJsonDocument::fromJson("{\"value\":" + number + '}');
        EXPECT_TRUE(document.isNull() || isRefused<double>(document.object().value("value"_L1)))
            << number.toStdString();
        EXPECT_TRUE(document.isNull() || isRefused<qint64>(document.object().value("value"_L1)))
            << number.toStdString();
    }
}

TEST(JobParamsJsonNumbers, true_text_and_a_fraction_are_no_integers)
{
    for (const QByteArray json : {"true", "false", "\"25\"", "25.5", "null", "0.1", "-0.5"}) {
        EXPECT_TRUE(isRefused<qint64>(parsed(json))) << json.toStdString();
    }
}

TEST(JobParamsJsonGif, a_document_without_an_end_has_none_and_one_without_fps_fails)
{
    QJsonObject object = parsed(gifParams().fullDocument).toObject();
    object.remove(u"end"_s);
    EXPECT_FALSE(Json::decode<GifParams>(object).end);
    object.remove(u"fps"_s);
    EXPECT_TRUE(isRefused<GifParams>(object));
}

TEST(JobParamsJsonCompress, a_document_without_muted_fails_as_a_whole_although_muted_has_a_default)
{
    QJsonObject object = parsed(compressParams().bareDocument).toObject();
    object.remove(u"muted"_s);
    EXPECT_TRUE(isRefused<CompressParams>(object));
}

TEST(JobParamsJsonSegment, the_identity_in_a_document_is_never_taken)
{
    const QJsonValue json = Json::encode(segmentOf(1, 2));
    const TrimSegment first = Json::decode<TrimSegment>(json);
    const TrimSegment second = Json::decode<TrimSegment>(json);
    EXPECT_EQ(first.start, 1);
    EXPECT_EQ(first.end, 2);
    EXPECT_FALSE(first.id.isNull());
    EXPECT_NE(first.id, someIdentity);
    EXPECT_NE(first.id, second.id);
}

TEST(JobParamsJsonSegment, whatever_stands_in_the_place_of_the_identity_is_accepted)
{
    for (const QByteArray id : {"null", "1", "\"rubbish\"", "{}", "[]", "true"}) {
        const auto segment =
            Json::decode<TrimSegment>(parsed(R"({"start": 1, "end": 2, "id": )" + id + '}'));
        EXPECT_EQ(segment.end, 2) << id.toStdString();
    }
    EXPECT_EQ(Json::decode<TrimSegment>(parsed(R"({"start": 1, "end": 2})")).start, 1);
}

TEST(JobParamsJsonSegment, decoded_segments_keep_their_order_and_have_identities_of_their_own)
{
    const auto params = Json::decode<TrimParams>(parsed(trimParams().fullDocument));
    ASSERT_EQ(params.segments.size(), 2);
    EXPECT_EQ(params.segments.at(0).start, 4);
    EXPECT_EQ(params.segments.at(1).start, 0.5);
    EXPECT_NE(params.segments.at(0).id, params.segments.at(1).id);
}

TEST(JobParamsJsonIdentity, it_is_written_in_its_standard_form_without_braces)
{
    static const QRegularExpression form(u"^[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}$"_s);
    const QUuid id = QUuid::createUuid();
    const QString text = Json::encode(id).toString();
    EXPECT_TRUE(form.match(text).hasMatch()) << text.toStdString();
    EXPECT_EQ(QUuid::fromString(text), id);
    EXPECT_EQ(Json::encode(someIdentity).toString(), u"10293847-5610-4293-8475-610293847561"_s);
}

TEST(JobParamsJsonIdentity, both_cases_of_letters_are_read)
{
    const QUuid id(u"0e984725-c51c-4bf4-9960-e1c80e27aba0"_s);
    EXPECT_EQ(Json::decode<QUuid>(QJsonValue(u"0e984725-c51c-4bf4-9960-e1c80e27aba0"_s)), id);
    EXPECT_EQ(Json::decode<QUuid>(QJsonValue(u"0E984725-C51C-4BF4-9960-E1C80E27ABA0"_s)), id);
    EXPECT_EQ(Json::decode<QUuid>(QJsonValue(u"00000000-0000-0000-0000-000000000000"_s)), QUuid());
}

TEST(JobParamsJsonIdentity, other_forms_and_rubbish_are_refused)
{
    for (const QByteArray json :
         {"null", "1", "true", "{}", "\"\"", "\"{0e984725-c51c-4bf4-9960-e1c80e27aba0}\"",
          "\"0e984725c51c4bf49960e1c80e27aba0\"", "\"0e984725-c51c-4bf4-9960-e1c80e27aba\"",
          "\"0e984725-c51c-4bf4-9960-e1c80e27aba00\"", "\"0g984725-c51c-4bf4-9960-e1c80e27aba0\"",
          "\"0e984725 c51c 4bf4 9960 e1c80e27aba0\"", "\" e984725-c51c-4bf4-9960-e1c80e27aba0\"",
          "\"+e984725-c51c-4bf4-9960-e1c80e27aba0\"", "\"0x984725-c51c-4bf4-9960-e1c80e27aba0\"",
          "\"0e984725-c51c-4bf4-9960-e1c80e27abaé\""}) {
        EXPECT_TRUE(isRefused<QUuid>(parsed(json))) << json.toStdString();
    }
}

TEST(JobParamsJsonUrl, it_is_written_whole_and_encoded)
{
    const std::pair<QUrl, QString> table[] = {
        {QUrl::fromLocalFile(u"/music/song.mp3"_s), u"file:///music/song.mp3"_s},
        {QUrl::fromLocalFile(u"/music/a b #1?.mp3"_s), u"file:///music/a%20b%20%231%3F.mp3"_s},
        {QUrl::fromLocalFile(u"/music/100%20.mp3"_s), u"file:///music/100%2520.mp3"_s},
        {QUrl::fromLocalFile(u"/music/é.mp3"_s), u"file:///music/%C3%A9.mp3"_s},
        {QUrl(u"https://example.org/a.mp3?x=1#y"_s), u"https://example.org/a.mp3?x=1#y"_s},
    };
    for (const auto &[url, text] : table) {
        EXPECT_EQ(Json::encode(url).toString(), text);
        EXPECT_EQ(Json::decode<QUrl>(QJsonValue(text)), url);
    }
}

TEST(JobParamsJsonUrl, every_file_name_survives_the_way_through_a_document)
{
    QStringList names{u"片 😀"_s, u"e\u0301"_s, u"a\nb"_s, u"%2F"_s, u"%"_s, u"%25"_s, u"\u00a0"_s};
    for (char16_t c = 0x01; c < 0x80; ++c) {
        if (c != u'/') {
            names.append(QString(QChar(c)) + u"x"_s);
            names.append(u"x"_s + QChar(c) + u"y"_s);
        }
    }
    for (const QString &name : names) {
        const QUrl url = QUrl::fromLocalFile(u"/music/"_s + name + u".mp3"_s);
        const QByteArray document = compact(Json::encode(url));
        const QUrl read = Json::decode<QUrl>(QJsonDocument::fromJson(document).array().at(0));
        EXPECT_EQ(read, url) << document.toStdString();
        EXPECT_EQ(read.toLocalFile(), url.toLocalFile()) << document.toStdString();
    }
}

TEST(JobParamsJsonUrl, a_text_that_is_no_url_is_refused)
{
    for (const QByteArray json : {"\"\"", "\"http://[\"", "\"file:///%zz\"", "\"file:///a b\"", "1",
                                  "null", "{}", "\"http://a:b:c/\""}) {
        EXPECT_TRUE(isRefused<QUrl>(parsed(json))) << json.toStdString();
    }
}

TEST(JobParamsJsonText, every_character_survives)
{
    for (const QString &text : {u""_s, u" "_s, u"\n\t\r"_s, u"\"quoted\" \\ 'x'"_s, u"片😀"_s,
                                u"null"_s, u"-vf \"scale=640:-2\""_s, QString(QChar(u'\0'))}) {
        AdvancedOptions options;
        options.extraArgs = text;
        const QByteArray document = compact(Json::encode(options));
        EXPECT_EQ(Json::decode<AdvancedOptions>(QJsonDocument::fromJson(document).array().at(0)),
                  options)
            << document.toStdString();
    }
}

TEST(JobParamsJsonErrors, the_path_leads_through_records_and_lists)
{
    const auto adjusted = [](const QByteArray &advanced) {
        return R"({"rotation": "none", "flipH": false, "flipV": false, "speed": 1, "reverse": false,
                   "muted": false, "advanced": )" +
               advanced + '}';
    };
    const auto advanced = [](const QByteArray &more) {
        return R"({"codec": "auto", "hdrPassthrough": false, "preserveAlpha": false,
                   "extraArgs": "", )" +
               more + '}';
    };
    const auto trimmed = [](const QByteArray &segments) {
        return R"({"separateFiles": false, "exactReencode": false, "advanced": )" + bareAdvanced +
               R"(, "segments": )" + segments + '}';
    };
    const std::pair<QString, QString> table[] = {
        {errorOf<AdjustParams>(adjusted("1")), u"advanced: "_s},
        {errorOf<AdjustParams>(adjusted("{}")), u"advanced.codec: "_s},
        {errorOf<AdjustParams>(adjusted(advanced(R"("crf": 20.5)"))), u"advanced.crf: "_s},
        {errorOf<AdjustParams>(adjusted(advanced(R"("crop": [])"))), u"advanced.crop: "_s},
        {errorOf<AdjustParams>(adjusted(advanced(R"("crop": {})"))), u"advanced.crop.aspect: "_s},
        {errorOf<AdjustParams>(
             adjusted(advanced(R"("crop": {"aspect": "free", "customWidth": true})"))),
         u"advanced.crop.customWidth: "_s},
        {errorOf<TrimParams>(trimmed("7")), u"segments: "_s},
        {errorOf<TrimParams>(trimmed("[7]")), u"segments[0]: "_s},
        {errorOf<TrimParams>(trimmed(R"([{"start": 1, "end": 2}, {"start": 1}])")),
         u"segments[1].end: "_s},
        {errorOf<TrimParams>(trimmed(R"([{"start": 1, "end": 2}, {"start": "1", "end": 2}])")),
         u"segments[1].start: "_s},
    };
    for (const auto &[error, path] : table) {
        EXPECT_TRUE(error.startsWith(path)) << error.toStdString() << " for " << path.toStdString();
        EXPECT_GT(error.size(), path.size());
    }
}

TEST(JobParamsJsonErrors, an_unknown_word_is_repeated_in_the_error)
{
    const QString error = errorOf<CropSpec>(R"({"aspect": "round"})");
    EXPECT_TRUE(error.startsWith(u"aspect: "_s)) << error.toStdString();
    EXPECT_TRUE(error.contains(u"round"_s)) << error.toStdString();
}

TEST(JobParamsJsonErrors, a_refused_document_itself_has_no_path)
{
    const QString error = errorOf<GifParams>("[]");
    EXPECT_FALSE(error.isEmpty());
    EXPECT_FALSE(error.contains(u':')) << error.toStdString();
}
