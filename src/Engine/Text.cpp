// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/Text.h"

#include <QVarLengthArray>

#include <algorithm>
#include <charconv>

namespace {

using Characters = QVarLengthArray<char, 64>;

// from_chars() also reads "inf" and "nan"; letters other than an exponent's are refused here.
bool isNumberCharacter(QChar c)
{
    return (c >= u'0' && c <= u'9') || c == u'-' || c == u'+' || c == u'.' || c == u'e' ||
           c == u'E';
}

// Empty when the text holds anything that no number holds.
Characters numberCharacters(QStringView text)
{
    Characters characters;
    for (const QChar c : text) {
        if (!isNumberCharacter(c)) {
            return {};
        }
        characters.append(static_cast<char>(c.unicode()));
    }
    return characters;
}

template <typename Number> std::optional<Number> readWhole(QStringView text)
{
    const Characters characters = numberCharacters(text);
    Number value{};
    const char *end = characters.cend();
    const auto [stop, problem] = std::from_chars(characters.cbegin(), end, value);
    if (problem != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

} // namespace

QString Text::fixed(double value, int decimals)
{
    // Room for the longest double (309 digits before the point), its sign and its decimals.
    QVarLengthArray<char, 512> buffer(320 + decimals);
    const auto [end, problem] =
        std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, decimals);
    Q_ASSERT(problem == std::errc());
    return QString::fromLatin1(buffer.constData(), end - buffer.constData());
}

std::optional<double> Text::toDouble(QStringView text)
{
    return readWhole<double>(text);
}

std::optional<qint64> Text::toInteger(QStringView text)
{
    return readWhole<qint64>(text);
}

QString Text::lastCharacters(const QString &text, qsizetype count)
{
    qsizetype start = text.size();
    for (qsizetype taken = 0; taken < count && start > 0; ++taken) {
        --start;
        if (start > 0 && text.at(start).isLowSurrogate() && text.at(start - 1).isHighSurrogate()) {
            --start;
        }
    }
    return text.sliced(start);
}

QString Text::path(const QUrl &url)
{
    return url.isLocalFile() ? url.toLocalFile() : url.path();
}

QString Text::joinedPath(const QString &directory, const QString &name)
{
    const bool hasSlash = directory.endsWith(u'/') || name.startsWith(u'/');
    return hasSlash ? directory + name : directory + u'/' + name;
}

Text::SplitPath Text::splitExtension(const QString &path)
{
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    if (dot <= nameStart || dot == path.size() - 1) {
        return {path, {}};
    }
    return {path.first(dot), path.sliced(dot + 1)};
}

void Text::sortPlainly(QStringList &texts)
{
    // QString's own order is that of UTF-16 units, which puts what lies beyond the first plane
    // before the last private characters of it.
    QList<std::pair<QList<uint>, QString>> keyed;
    keyed.reserve(texts.size());
    for (const QString &text : std::as_const(texts)) {
        keyed.emplaceBack(text.normalized(QString::NormalizationForm_C).toUcs4(), text);
    }
    std::ranges::stable_sort(keyed, {},
                             [](const auto &entry) -> const QList<uint> & { return entry.first; });
    texts.clear();
    for (const auto &entry : std::as_const(keyed)) {
        texts.append(entry.second);
    }
}

QString Text::uuid(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}
