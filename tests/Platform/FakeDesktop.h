// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <optional>

/// A service of the desktop on a bus of the test's, as far as all of them are alike: it notes its
/// calls and answers, refuses or keeps them back.
class FakeDesktopService : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    enum class Manner { answers, refuses, hangs };

    ~FakeDesktopService() override;

    void setManner(Manner manner) { m_manner = manner; }
    /// Answers what was kept back, in the manner of now.
    void answerKept();

protected:
    FakeDesktopService(const QDBusConnection &bus, const QString &service, const QString &path,
                       Manner manner);

    /// Answers the call of this moment with what `answer` gives at the time of the answer.
    void reply(const std::function<QVariantList()> &answer);
    QDBusConnection m_bus;

private:
    struct Kept {
        QDBusMessage call;
        std::function<QVariantList()> answer;
    };

    void answer(const Kept &kept);

    const QString m_service;
    Manner m_manner;
    QList<Kept> m_kept;
};

/// The notification service. Its ids count from 41.
class FakeNotifications : public FakeDesktopService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit FakeNotifications(const QDBusConnection &bus, Manner manner = Manner::answers);

    struct Call {
        QString application;
        uint replaces = 0;
        QString icon;
        QString summary;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
    };
    QList<Call> calls() const { return m_calls; }
    QStringList bodies() const;

public Q_SLOTS:
    uint Notify(const QString &application, uint replaces, const QString &icon,
                const QString &summary, const QString &body, const QStringList &actions,
                const QVariantMap &hints, int timeout);

private:
    QList<Call> m_calls;
    uint m_latestID = 40;
};

/// A file manager.
class FakeFileManager : public FakeDesktopService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    explicit FakeFileManager(const QDBusConnection &bus, Manner manner = Manner::answers);

    struct Call {
        QStringList uris;
        QString startupID;
    };
    QList<Call> calls() const { return m_calls; }

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &startupID);

private:
    QList<Call> m_calls;
};

/// The desktop portal, as far as it begins e-mails.
class FakeMailPortal : public FakeDesktopService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Email")

public:
    explicit FakeMailPortal(const QDBusConnection &bus, Manner manner = Manner::answers);

    struct Call {
        QString parentWindow;
        /// Without the attachments.
        QVariantMap options;
        /// The paths behind the descriptors.
        QStringList attachments;
    };
    QList<Call> calls() const { return m_calls; }

public Q_SLOTS:
    QDBusObjectPath ComposeEmail(const QString &parentWindow, const QVariantMap &options);

private:
    QList<Call> m_calls;
};

/// The desktop portal, as far as it tells settings. A setting that isn't set is refused.
class FakeSettingsPortal : public FakeDesktopService
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit FakeSettingsPortal(const QDBusConnection &bus, Manner manner = Manner::answers);

    /// Sets without a word.
    void set(const QString &key, const QVariant &value) { m_values.insert(key, value); }
    /// Sets and tells all who listen.
    void change(const QString &key, const QVariant &value);
    /// Tells of a setting, which may be one that is none of the looks.
    void tell(const QString &group, const QString &key, const QVariant &value);
    /// As D-Bus writes a colour.
    static QVariant color(double red, double green, double blue);
    QStringList askedFor() const { return m_askedFor; }

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key);

private:
    QVariantMap m_values;
    QStringList m_askedFor;
};

/// A dock that draws bars.
class FakeLauncher : public QObject
{
    Q_OBJECT

public:
    explicit FakeLauncher(QDBusConnection bus);

    struct Update {
        QString path;
        QString entry;
        QVariantMap properties;
    };
    QList<Update> updates() const { return m_updates; }

private Q_SLOTS:
    void take(const QDBusMessage &signal);

private:
    QList<Update> m_updates;
};
