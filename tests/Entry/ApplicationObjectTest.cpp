// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/ApplicationObject.h"

#include "Platform/FakeBus.h"

#include <QDBusPendingCallWatcher>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString objectPath = u"/app/morvix/Morvix"_s;

/// The object on a bus, called over it by somebody else.
class CalledObject : public ::testing::Test
{
protected:
    CalledObject()
    {
        m_bus.start();
        m_caller = std::make_unique<QDBusConnection>(
            QDBusConnection::connectToBus(m_bus.address(), u"caller"_s));
        QDBusConnection callee = m_bus.connection();
        EXPECT_TRUE(callee.registerObject(objectPath, &m_object, QDBusConnection::ExportAllSlots));
        const auto note = [this](const QString &word, const QList<QUrl> &urls,
                                 const QString &token) {
            m_told += word;
            m_urls = urls;
            m_token = token;
        };
        QObject::connect(&m_object, &ApplicationObject::activated, &m_object,
                         [=](const QString &token) { note(u"activate"_s, {}, token); });
        QObject::connect(
            &m_object, &ApplicationObject::opened, &m_object,
            [=](const QList<QUrl> &urls, const QString &token) { note(u"open"_s, urls, token); });
        QObject::connect(&m_object, &ApplicationObject::serviceCalled, &m_object,
                         [=](QuickAction action, const QList<QUrl> &urls, const QString &token) {
                             note(u"service "_s + QString::number(static_cast<int>(action)), urls,
                                  token);
                         });
    }
    ~CalledObject() override { QDBusConnection::disconnectFromBus(u"caller"_s); }

    /// The name of the error that the call ends in; empty when it is answered.
    QString call(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            m_bus.connection().baseService(), objectPath, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        QDBusPendingCallWatcher watcher(m_caller->asyncCall(message));
        EXPECT_TRUE(happens([&] { return watcher.isFinished(); }));
        return watcher.reply().errorName();
    }

    FakeBus m_bus;
    std::unique_ptr<QDBusConnection> m_caller;
    ApplicationObject m_object;
    QStringList m_told;
    QList<QUrl> m_urls;
    QString m_token;
};

const QString invalidArguments = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
const QString unknownMethod = u"org.freedesktop.DBus.Error.UnknownMethod"_s;

} // namespace

TEST_F(CalledObject, Activate_hands_the_token_on)
{
    EXPECT_EQ(call(u"Activate"_s, {QVariantMap{{u"activation-token"_s, u"new"_s},
                                               {u"desktop-startup-id"_s, u"old"_s}}}),
              QString());
    EXPECT_EQ(m_told, QStringList{u"activate"_s});
    EXPECT_EQ(m_token, u"new"_s);

    call(u"Activate"_s, {QVariantMap{{u"desktop-startup-id"_s, u"old"_s}}});
    EXPECT_EQ(m_token, u"old"_s);

    call(u"Activate"_s, {QVariantMap{{u"activation-token"_s, 5}, {u"nonsense"_s, true}}});
    EXPECT_EQ(m_told.size(), 3);
}

TEST_F(CalledObject, Open_hands_the_files_on)
{
    EXPECT_EQ(call(u"Open"_s, {QStringList{u"file:///films/a%20film.mp4"_s, u"file:///films/"_s},
                               QVariantMap()}),
              QString());

    EXPECT_EQ(m_told, QStringList{u"open"_s});
    EXPECT_EQ(m_urls, (QList{QUrl(u"file:///films/a%20film.mp4"_s), QUrl(u"file:///films/"_s)}));
}

TEST_F(CalledObject, ActivateAction_takes_the_five_services)
{
    const QVariantList oneFile{QStringList{u"file:///films/a.mp4"_s}};

    for (const QString &name : {u"compressWithMorvix"_s, u"compressTo25MB"_s, u"convertToMP4"_s,
                                u"extractAudioService"_s, u"createGIFService"_s}) {
        EXPECT_EQ(call(u"ActivateAction"_s, {name, oneFile, QVariantMap()}), QString());
        EXPECT_EQ(m_urls, QList{QUrl(u"file:///films/a.mp4"_s)});
    }

    EXPECT_EQ(m_told, (QStringList{u"service 0"_s, u"service 1"_s, u"service 2"_s, u"service 3"_s,
                                   u"service 4"_s}));
}

TEST_F(CalledObject, an_action_of_a_launcher_comes_without_files)
{
    EXPECT_EQ(call(u"ActivateAction"_s, {u"convertToMP4"_s, QVariantList(), QVariantMap()}),
              QString());

    EXPECT_EQ(m_told, QStringList{u"service 2"_s});
    EXPECT_TRUE(m_urls.isEmpty());
}

TEST_F(CalledObject, wrong_names_and_types_are_refused_with_an_error)
{
    const QVariantMap none;
    const QVariantList oneFile{QStringList{u"file:///films/a.mp4"_s}};

    EXPECT_EQ(call(u"ActivateAction"_s, {u"convertToMP5"_s, oneFile, none}), invalidArguments);
    EXPECT_EQ(call(u"ActivateAction"_s, {QString(), oneFile, none}), invalidArguments);
    EXPECT_EQ(call(u"ActivateAction"_s, {u"convertToMP4"_s, QVariantList{u"file:///a"_s}, none}),
              invalidArguments);
    EXPECT_EQ(call(u"ActivateAction"_s, {u"convertToMP4"_s, QVariantList{5}, none}),
              invalidArguments);
    EXPECT_EQ(call(u"ActivateAction"_s, {u"convertToMP4"_s, oneFile + oneFile, none}),
              invalidArguments);
    EXPECT_EQ(call(u"ActivateAction"_s, {u"convertToMP4"_s}), unknownMethod);
    EXPECT_EQ(call(u"Open"_s, {u"file:///films/a.mp4"_s, none}), unknownMethod);
    EXPECT_EQ(call(u"Open"_s, {}), unknownMethod);
    EXPECT_EQ(call(u"Quit"_s, {}), unknownMethod);
    EXPECT_EQ(call(u"deleteLater"_s, {}), unknownMethod);

    EXPECT_EQ(m_told, QStringList());
}
