// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Models/UserPresetJson.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// The key over the parameters of a case: its only, nameless, argument.
constexpr QLatin1StringView payloadKey("_0");

struct SpecCase {
    ActionKind action;
    PresetSpec (*decode)(const QJsonValue &json);
};

template <typename Params> PresetSpec decodeParams(const QJsonValue &json)
{
    return Json::decode<Params>(json);
}

constexpr std::array specCases{
    SpecCase{ActionKind::targetSize, decodeParams<TargetSizeParams>},
    SpecCase{ActionKind::convert, decodeParams<ConvertParams>},
    SpecCase{ActionKind::compress, decodeParams<CompressParams>},
    SpecCase{ActionKind::extract, decodeParams<ExtractParams>},
    SpecCase{ActionKind::gif, decodeParams<GifParams>},
    SpecCase{ActionKind::enhance, decodeParams<EnhanceParams>},
    SpecCase{ActionKind::merge, decodeParams<MergeParams>},
    SpecCase{ActionKind::split, decodeParams<SplitParams>},
    SpecCase{ActionKind::adjust, decodeParams<AdjustParams>},
};
static_assert(specCases.size() == std::variant_size_v<PresetSpec>);

PresetSpec decodePayload(const SpecCase &specCase, const QJsonValue &json)
{
    if (!json.isObject()) {
        throw Json::DecodeError(u"an object is expected"_s);
    }
    const QJsonValue params = json.toObject().value(payloadKey);
    try {
        if (params.isUndefined()) {
            throw Json::DecodeError(u"the key is missing"_s);
        }
        return specCase.decode(params);
    } catch (Json::DecodeError &error) {
        error.prepend(payloadKey);
        throw;
    }
}

// A key counts whatever it holds, null too.
const SpecCase &onlyCase(const QJsonObject &object)
{
    const SpecCase *only = nullptr;
    qsizetype count = 0;
    for (const SpecCase &specCase : specCases) {
        if (object.contains(rawValue(specCase.action))) {
            only = &specCase;
            ++count;
        }
    }
    if (count != 1) {
        throw Json::DecodeError(u"Invalid number of keys found, expected one."_s);
    }
    return *only;
}

// Years of four digits only: others couldn't be written back.
bool isWritable(const QDateTime &moment)
{
    return moment.isValid() && moment.date().year() >= 1 && moment.date().year() <= 9999;
}

} // namespace

namespace Json {

QJsonValue Codec<PresetSpec>::encode(const PresetSpec &spec)
{
    const QJsonValue params =
        std::visit([](const auto &record) { return Json::encode(record); }, spec);
    return QJsonObject{{rawValue(actionOf(spec)), QJsonObject{{payloadKey, params}}}};
}

PresetSpec Codec<PresetSpec>::decode(const QJsonValue &json)
{
    if (!json.isObject()) {
        throw DecodeError(u"an object is expected"_s);
    }
    const QJsonObject object = json.toObject();
    const SpecCase &specCase = onlyCase(object);
    const QString key = rawValue(specCase.action);
    try {
        return decodePayload(specCase, object.value(key));
    } catch (DecodeError &error) {
        error.prepend(key);
        throw;
    }
}

QJsonValue Codec<QDateTime>::encode(const QDateTime &moment)
{
    return moment.toUTC().toString(Qt::ISODate);
}

QDateTime Codec<QDateTime>::decode(const QJsonValue &json)
{
    // Qt alone would also take dates without a time, local times and fractions.
    static const QRegularExpression form(
        u"\\A\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(Z|[+-]\\d\\d:?\\d\\d)\\z"_s);
    const QString text = Json::decode<QString>(json);
    if (form.match(text).hasMatch()) {
        QDateTime moment = QDateTime::fromString(text, Qt::ISODate).toUTC();
        if (isWritable(moment)) {
            return moment;
        }
    }
    throw DecodeError(u"a date and time such as 2026-03-01T14:05:09Z is expected"_s);
}

} // namespace Json
