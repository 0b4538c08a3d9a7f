// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/Settings.h"

#include "Engine/Text.h"

#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString Settings::defaultPath()
{
    return Text::joinedPath(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
                            u"Morvix/Morvix.conf"_s);
}

Settings::Settings(const QString &path, Writing writing)
    : m_store(std::make_unique<QSettings>(path, QSettings::IniFormat))
    , m_writing(writing)
{
}

Settings::Settings(Settings &&) noexcept = default;
Settings &Settings::operator=(Settings &&) noexcept = default;
Settings::~Settings() = default;

// The file holds nothing but texts; a list is what an unquoted comma reads as.
std::optional<QString> Settings::text(const QString &key) const
{
    const QVariant value = m_store->value(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> Settings::boolean(const QString &key) const
{
    const std::optional<QString> word = text(key);
    if (word == u"true"_s || word == u"false"_s) {
        return word == u"true"_s;
    }
    return std::nullopt;
}

std::optional<qint64> Settings::integer(const QString &key) const
{
    const std::optional<QString> digits = text(key);
    return digits ? Text::toInteger(*digits) : std::nullopt;
}

void Settings::setText(const QString &key, const QString &value)
{
    if (m_writing == Writing::kept) {
        m_store->setValue(key, value);
    }
}

void Settings::setBoolean(const QString &key, bool value)
{
    setText(key, value ? u"true"_s : u"false"_s);
}

void Settings::setInteger(const QString &key, qint64 value)
{
    setText(key, QString::number(value));
}

void Settings::remove(const QString &key)
{
    if (m_writing == Writing::kept) {
        m_store->remove(key);
    }
}
