// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the parsed form of a JSON document no longer shows: of two members of one object that have
/// the same key it holds the last one alone. Readers differ in which one they take, so that such a
/// document says two things at once.
namespace JsonKeys {

/// The first key that stands a second time in its object, at whatever depth and however either is
/// spelt; absent when there is none. Only for text that QJsonDocument has accepted. Linear in its
/// length. Any thread.
std::optional<QString> firstRepeated(const QByteArray &json);

/// Throws Json::DecodeError, which names such a key. Under the same conditions.
void requireDistinct(const QByteArray &json);

} // namespace JsonKeys
