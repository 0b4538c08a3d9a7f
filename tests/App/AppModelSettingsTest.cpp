// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "Engine/FFmpegLocator.h"
#include "Platform/SilentServices.h"
#include "support/TempFolder.h"
#include "support/Unprivileged.h"

#include <QDir>
#include <QFile>
#include <QMetaProperty>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <sched.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

QList<QMetaProperty> properties()
{
    const QMetaObject &meta = AppModel::staticMetaObject;
    QList<QMetaProperty> found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        found += meta.property(i);
    }
    return found;
}

QMetaProperty property(const char *name)
{
    const QMetaObject &meta = AppModel::staticMetaObject;
    return meta.property(meta.indexOfProperty(name));
}

/// Notes which properties tell a change, in order. Receives the signals by number, as it doesn't
/// know them by name: a table of the properties alone says what there is.
class ChangeRecorder : public QObject
{
public:
    explicit ChangeRecorder(const AppModel &model)
    {
        const int firstSlot = QObject::staticMetaObject.methodCount();
        for (const QMetaProperty &observed : properties()) {
            QMetaObject::connect(&model, observed.notifySignalIndex(), this,
                                 firstSlot + static_cast<int>(m_names.size()));
            m_names += QString::fromLatin1(observed.name());
        }
    }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        const int slot = QObject::qt_metacall(call, id, arguments);
        if (slot >= 0 && call == QMetaObject::InvokeMetaMethod) {
            m_changes += m_names.at(slot);
        }
        return slot < 0 ? slot : -1;
    }

    QStringList take() { return std::exchange(m_changes, {}); }

private:
    QStringList m_names;
    QStringList m_changes;
};

std::optional<QString> some(const QString &text)
{
    return text;
}

template <typename Value> QVariant variant(const Value &value)
{
    return QVariant::fromValue(value);
}

UserPreset preset(const QString &name)
{
    UserPreset made;
    made.name = name;
    return made;
}

/// Two values of a property that differ from each other and from what it starts as.
struct Change {
    const char *property;
    QVariant first;
    QVariant second;
};

std::vector<Change> changes()
{
    return {
        {"selectedFileID", variant(std::optional(QUuid::createUuid())),
         variant(std::optional<QUuid>())},
        {"action", variant(ActionKind::adjust), variant(ActionKind::play)},
        {"showSettings", true, false},
        {"showQueue", true, false},
        {"lastError", variant(some(u"a"_s)), variant(std::optional<QString>())},
        {"showDropZonePanel", true, false},
        {"queuePaused", true, false},
        {"appliedPreset", variant(std::optional(preset(u"a"_s))),
         variant(std::optional(preset(u"b"_s)))},
        {"presetBanner", variant(some(u"a"_s)), variant(some(QString()))},
        {"previewSeconds", 2.5, 0.0},
        {"outputTemplate", u"{name}"_s, QString()},
        {"keepFolderStructure", true, false},
        {"notifyOnFinish", false, true},
        {"language", variant(AppLanguage::simplifiedChinese), variant(AppLanguage::english)},
        {"playDoneSound", false, true},
        {"preferExactMode", false, true},
        {"queueConcurrency", variant(qint64(3)), variant(qint64(-1))},
        {"outputDirectoryPath", variant(some(u"/films"_s)), variant(std::optional<QString>())},
    };
}

/// A setting in the file and in the model.
struct Setting {
    const char *property;
    QString key;
    QVariant whenAbsent;
    /// What the file says and what is then read.
    QByteArray stored;
    QVariant value;
    /// What the file may say without being understood.
    QByteArrayList wrong;
};

// "Active" processors are those that this process may run on.
qint64 expectedConcurrency()
{
    cpu_set_t usable;
    CPU_ZERO(&usable);
    EXPECT_EQ(::sched_getaffinity(0, sizeof(usable), &usable), 0);
    return CPU_COUNT(&usable) >= 8 ? 2 : 1;
}

std::vector<Setting> settings()
{
    const QByteArrayList noTexts{"a, b", "@Invalid()", "@Size(1 2)"};
    const QByteArrayList noBooleans{"maybe", "", "2", "true, true", "@Invalid()"};
    return {
        {"outputTemplate", u"mx.template"_s, QString(), "{name}", u"{name}"_s, noTexts},
        {"keepFolderStructure", u"mx.structure"_s, false, "true", true, noBooleans},
        {"notifyOnFinish", u"mx.notify"_s, true, "false", false, noBooleans},
        {"language", u"mx.language"_s, variant(AppLanguage::english), "zh-Hans",
         variant(AppLanguage::simplifiedChinese),
         noTexts + QByteArrayList{"fr", "", "zh", "zh-hans", "zh-Hans ,", "zh-Hant", "EN", "1"}},
        {"playDoneSound", u"mx.sound"_s, true, "false", false, noBooleans},
        {"preferExactMode", u"mx.exact"_s, true, "false", false, noBooleans},
        {"queueConcurrency",
         u"mx.concurrency"_s,
         variant(expectedConcurrency()),
         "5",
         variant(qint64(5)),
         {"two", "", "2.5", "1, 2", "true", "99999999999999999999"}},
        {"outputDirectoryPath", u"mx.outdir"_s, variant(std::optional<QString>()), "/films",
         variant(some(u"/films"_s)), noTexts},
    };
}

// Without tools: none of this needs them.
class AppModelSettingsTest : public ::testing::Test
{
protected:
    QString path() const { return m_folder.path(u"Morvix.conf"_s); }

    std::unique_ptr<AppModel> model(Settings::Writing writing = Settings::Writing::kept) const
    {
        return modelOver(path(), writing);
    }

    std::unique_ptr<AppModel> modelOver(const QString &file,
                                        Settings::Writing writing = Settings::Writing::kept) const
    {
        return std::make_unique<AppModel>(Settings(file, writing), makeSilentServices());
    }

    /// A model that starts with this file; each call has a file of its own.
    std::unique_ptr<AppModel> modelReading(const QByteArray &content)
    {
        return modelOver(m_folder.write(QString::number(++m_files) + u".conf"_s, content));
    }

    std::unique_ptr<AppModel> modelReading(const Setting &setting, const QByteArray &value)
    {
        return modelReading("[General]\n" + setting.key.toLatin1() + '=' + value + '\n');
    }

    /// The lines of the file as it stands on the disk.
    QByteArrayList lines() const { return contentOf(path()).split('\n'); }

    static void expectDefaults(const AppModel &model)
    {
        for (const Setting &setting : settings()) {
            EXPECT_EQ(property(setting.property).read(&model), setting.whenAbsent)
                << setting.property;
        }
    }

    const TempFolder m_folder;
    const TempFolder m_temporary;
    const ScopedEnvironment m_path{"PATH", m_temporary.path().toUtf8()};
    const ScopedEnvironment m_temporaryDirectory{"TMPDIR", m_temporary.path().toUtf8()};
    const ScopedEnvironment m_configurations{"XDG_CONFIG_HOME",
                                             m_temporary.path(u"config"_s).toUtf8()};
    int m_files = 0;
};

} // namespace

TEST_F(AppModelSettingsTest, the_observable_fields_stand_in_their_order)
{
    QStringList names;
    for (const QMetaProperty &field : properties()) {
        names += QString::fromLatin1(field.name());
    }
    EXPECT_EQ(names, (QStringList{u"files"_s,
                                  u"selectedFileID"_s,
                                  u"action"_s,
                                  u"jobs"_s,
                                  u"showSettings"_s,
                                  u"showQueue"_s,
                                  u"probingCount"_s,
                                  u"lastError"_s,
                                  u"showDropZonePanel"_s,
                                  u"queuePaused"_s,
                                  u"fileEstimates"_s,
                                  u"appliedPreset"_s,
                                  u"presetBanner"_s,
                                  u"previewImages"_s,
                                  u"previewRunning"_s,
                                  u"previewSeconds"_s,
                                  u"outputTemplate"_s,
                                  u"keepFolderStructure"_s,
                                  u"notifyOnFinish"_s,
                                  u"language"_s,
                                  u"playDoneSound"_s,
                                  u"preferExactMode"_s,
                                  u"queueConcurrency"_s,
                                  u"outputDirectoryPath"_s}));
}

TEST_F(AppModelSettingsTest, each_field_has_a_change_signal_of_its_own)
{
    for (const QMetaProperty &field : properties()) {
        EXPECT_TRUE(field.hasNotifySignal()) << field.name();
        EXPECT_EQ(field.notifySignal().name(), QByteArray(field.name()) + "Changed");
        EXPECT_FALSE(field.isConstant()) << field.name();
    }
}

TEST_F(AppModelSettingsTest, the_fields_that_are_not_kept_start_empty)
{
    const auto fresh = model();

    EXPECT_TRUE(fresh->files().isEmpty());
    EXPECT_EQ(fresh->selectedFileID(), std::nullopt);
    EXPECT_EQ(fresh->selectedFile(), std::nullopt);
    EXPECT_EQ(fresh->action(), ActionKind::targetSize);
    EXPECT_TRUE(fresh->jobs().isEmpty());
    EXPECT_FALSE(fresh->showSettings());
    EXPECT_FALSE(fresh->showQueue());
    EXPECT_EQ(fresh->probingCount(), 0);
    EXPECT_EQ(fresh->lastError(), std::nullopt);
    EXPECT_FALSE(fresh->showDropZonePanel());
    EXPECT_FALSE(fresh->queuePaused());
    EXPECT_TRUE(fresh->fileEstimates().isEmpty());
    EXPECT_EQ(fresh->appliedPreset(), std::nullopt);
    EXPECT_EQ(fresh->presetBanner(), std::nullopt);
    EXPECT_EQ(fresh->previewImages(), std::nullopt);
    EXPECT_FALSE(fresh->previewRunning());
    EXPECT_EQ(fresh->previewSeconds(), 0);
    EXPECT_EQ(fresh->sourceRoot(), std::nullopt);
}

TEST_F(AppModelSettingsTest, every_writable_field_is_tried)
{
    QStringList writable;
    for (const QMetaProperty &field : properties()) {
        if (field.isWritable()) {
            writable += QString::fromLatin1(field.name());
        }
    }
    QStringList tried;
    for (const Change &change : changes()) {
        tried += QString::fromLatin1(change.property);
    }
    EXPECT_EQ(tried, writable);
}

TEST_F(AppModelSettingsTest, a_field_tells_a_change_once_and_no_other_field_does)
{
    for (const Change &change : changes()) {
        const auto fresh = modelReading("");
        ChangeRecorder recorder(*fresh);
        const QMetaProperty field = property(change.property);
        const QStringList told{QString::fromLatin1(change.property)};

        for (const QVariant &value : {change.first, change.second, change.first}) {
            ASSERT_TRUE(field.write(fresh.get(), value)) << change.property;
            EXPECT_EQ(recorder.take(), told);
            EXPECT_EQ(field.read(fresh.get()), value) << change.property;
            EXPECT_TRUE(field.write(fresh.get(), value));
            EXPECT_EQ(recorder.take(), QStringList()) << change.property << " hasn't changed";
        }
    }
}

TEST_F(AppModelSettingsTest, setting_a_field_to_what_it_starts_as_tells_nothing)
{
    const auto fresh = model();
    ChangeRecorder recorder(*fresh);

    for (const QMetaProperty &field : properties()) {
        if (field.isWritable()) {
            field.write(fresh.get(), field.read(fresh.get()));
        }
    }

    EXPECT_EQ(recorder.take(), QStringList());
}

TEST_F(AppModelSettingsTest, an_observer_sees_the_new_value)
{
    const auto fresh = model();
    std::optional<AppLanguage> seen;
    QObject::connect(fresh.get(), &AppModel::languageChanged, fresh.get(),
                     [&] { seen = fresh->language(); });

    fresh->setLanguage(AppLanguage::simplifiedChinese);

    EXPECT_EQ(seen, AppLanguage::simplifiedChinese);
}

TEST_F(AppModelSettingsTest, an_estimate_tells_a_change_when_it_differs)
{
    const auto fresh = model();
    ChangeRecorder recorder(*fresh);
    const QUuid film = QUuid::createUuid();
    const QStringList told{u"fileEstimates"_s};

    fresh->setFileEstimate(film, 0);
    EXPECT_EQ(recorder.take(), told) << "an estimate of 0 isn't an absent one";
    fresh->setFileEstimate(film, 0);
    EXPECT_EQ(recorder.take(), QStringList());
    fresh->setFileEstimate(film, 7);
    EXPECT_EQ(recorder.take(), told);
    fresh->setFileEstimate(QUuid::createUuid(), 7);
    EXPECT_EQ(recorder.take(), told);

    EXPECT_EQ(fresh->fileEstimates().size(), 2);
    EXPECT_EQ(fresh->fileEstimates().value(film), 7);
}

TEST_F(AppModelSettingsTest, the_list_of_jobs_tells_when_it_grows_and_shrinks)
{
    const auto fresh = model();
    fresh->setQueuePaused(true);
    ChangeRecorder recorder(*fresh);
    const QStringList told{u"jobs"_s};

    fresh->enqueueProbed(VideoFile(), TargetSizeParams());
    EXPECT_EQ(recorder.take(), told);
    fresh->clearFinished();
    EXPECT_EQ(recorder.take(), QStringList()) << "a waiting job stays";
    fresh->cancelJob(fresh->jobs().first()->id);
    EXPECT_EQ(recorder.take(), QStringList()) << "the job tells that itself";
    fresh->clearFinished();
    EXPECT_EQ(recorder.take(), told);
    fresh->clearFinished();
    EXPECT_EQ(recorder.take(), QStringList());
}

TEST_F(AppModelSettingsTest, settings_that_were_never_set_have_their_defaults)
{
    expectDefaults(*model());
    expectDefaults(*modelReading("[General]\n"));
    EXPECT_EQ(m_folder.names(), QStringList{u"1.conf"_s}) << "reading makes no file";
}

TEST_F(AppModelSettingsTest, on_few_processors_one_job_runs_at_once)
{
    cpu_set_t before;
    cpu_set_t one;
    CPU_ZERO(&one);
    ASSERT_EQ(::sched_getaffinity(0, sizeof(before), &before), 0);
    for (std::size_t i = 0; i < CPU_SETSIZE; ++i) {
        if (CPU_ISSET(i, &before)) {
            CPU_SET(i, &one);
            break;
        }
    }
    ASSERT_EQ(::sched_setaffinity(0, sizeof(one), &one), 0);

    const qint64 concurrency = model()->queueConcurrency();

    ::sched_setaffinity(0, sizeof(before), &before);
    EXPECT_EQ(concurrency, 1);
}

TEST_F(AppModelSettingsTest, each_setting_is_read_from_its_key)
{
    for (const Setting &setting : settings()) {
        const auto started = modelReading(setting, setting.stored);
        for (const Setting &other : settings()) {
            EXPECT_EQ(property(other.property).read(started.get()),
                      other.key == setting.key ? setting.value : other.whenAbsent)
                << other.property << " with " << setting.key.toStdString();
        }
    }
}

TEST_F(AppModelSettingsTest, a_value_of_a_wrong_type_counts_as_absent)
{
    for (const Setting &setting : settings()) {
        for (const QByteArray &wrong : setting.wrong) {
            const auto started = modelReading(setting, wrong);
            EXPECT_EQ(property(setting.property).read(started.get()), setting.whenAbsent)
                << setting.property << ": " << wrong.toStdString();
        }
    }
}

TEST_F(AppModelSettingsTest, both_languages_are_known_by_their_names)
{
    EXPECT_EQ(modelReading("[General]\nmx.language=en\n")->language(), AppLanguage::english);
    EXPECT_EQ(modelReading("[General]\nmx.language=zh-Hans\n")->language(),
              AppLanguage::simplifiedChinese);
}

TEST_F(AppModelSettingsTest, a_number_of_jobs_is_kept_as_it_is)
{
    for (const qint64 count :
         {qint64(0), qint64(-3), qint64(5), qint64(1000), std::numeric_limits<qint64>::max()}) {
        model()->setQueueConcurrency(count);
        EXPECT_EQ(model()->queueConcurrency(), count);
    }
}

TEST_F(AppModelSettingsTest, an_empty_output_folder_is_not_an_absent_one)
{
    model()->setOutputDirectoryPath(QString());
    EXPECT_EQ(model()->outputDirectoryPath(), some(QString()));
}

TEST_F(AppModelSettingsTest, each_setting_is_there_at_the_next_start)
{
    for (const Setting &setting : settings()) {
        {
            const auto first = model();
            ASSERT_TRUE(property(setting.property).write(first.get(), setting.value));
        }
        EXPECT_TRUE(lines().contains(setting.key.toLatin1() + '=' + setting.stored))
            << contentOf(path()).toStdString();
        const auto second =
            modelOver(m_folder.write(setting.key, contentOf(path())), Settings::Writing::kept);
        EXPECT_EQ(property(setting.property).read(second.get()), setting.value) << setting.property;
    }
}

TEST_F(AppModelSettingsTest, a_setting_is_written_even_when_it_does_not_change)
{
    const struct {
        const char *property;
        QByteArray line;
    } defaults[] = {
        {"outputTemplate", "mx.template="},
        {"keepFolderStructure", "mx.structure=false"},
        {"notifyOnFinish", "mx.notify=true"},
        {"language", "mx.language=en"},
        {"playDoneSound", "mx.sound=true"},
        {"preferExactMode", "mx.exact=true"},
        {"queueConcurrency", "mx.concurrency=" + QByteArray::number(expectedConcurrency())},
    };
    for (const auto &expected : defaults) {
        {
            const auto fresh = model();
            const QMetaProperty field = property(expected.property);
            ASSERT_TRUE(field.write(fresh.get(), field.read(fresh.get())));
        }
        EXPECT_TRUE(lines().contains(expected.line)) << expected.line.toStdString();
    }
}

TEST_F(AppModelSettingsTest, the_last_one_to_set_a_setting_wins_even_without_a_change)
{
    const auto first = model();
    const auto second = model();
    second->setOutputTemplate(u"second"_s);
    second->setOutputDirectoryPath(u"/second"_s);

    first->setOutputTemplate(first->outputTemplate());
    first->setOutputDirectoryPath(first->outputDirectoryPath());

    EXPECT_EQ(model()->outputTemplate(), QString());
    EXPECT_EQ(model()->outputDirectoryPath(), std::nullopt);
}

TEST_F(AppModelSettingsTest, an_absent_output_folder_removes_the_key)
{
    model()->setOutputDirectoryPath(u"/films"_s);
    ASSERT_TRUE(lines().contains("mx.outdir=/films"));

    model()->setOutputDirectoryPath(std::nullopt);

    EXPECT_FALSE(contentOf(path()).contains("mx.outdir")) << contentOf(path()).toStdString();
    EXPECT_EQ(model()->outputDirectoryPath(), std::nullopt);
}

TEST_F(AppModelSettingsTest, fields_that_are_no_settings_are_not_kept)
{
    {
        const auto first = model();
        for (const Change &change : changes()) {
            property(change.property).write(first.get(), change.first);
        }
    }
    QByteArrayList kept;
    for (const QByteArray &line : lines()) {
        if (line.contains('=')) {
            kept += line.first(line.indexOf('='));
        }
    }
    std::sort(kept.begin(), kept.end());
    EXPECT_EQ(kept, (QByteArrayList{"mx.concurrency", "mx.exact", "mx.language", "mx.notify",
                                    "mx.outdir", "mx.sound", "mx.structure", "mx.template"}));
    EXPECT_FALSE(model()->queuePaused());
}

TEST_F(AppModelSettingsTest, a_file_that_cant_be_read_gives_the_defaults_and_takes_new_values)
{
    for (const QByteArray &content :
         {"\0\xff\xfe\x01garbage]]][[[\n\n==\n\x80"_ba, "[General"_ba, "[General]\nmx.temp"_ba,
          "<plist><dict/></plist>"_ba, QByteArray(10'000, '\xaa')}) {
        const QString file = m_folder.write(QString::number(++m_files) + u".conf"_s, content);
        {
            const auto started = modelOver(file);
            expectDefaults(*started);
            started->setOutputTemplate(u"{name}"_s);
        }
        const QString copy =
            m_folder.write(QString::number(++m_files) + u".conf"_s, contentOf(file));
        EXPECT_EQ(modelOver(copy)->outputTemplate(), u"{name}"_s);
    }
}

TEST_F(AppModelSettingsTest, a_folder_in_the_files_place_leaves_the_settings_for_this_run)
{
    ASSERT_TRUE(QDir().mkpath(path()));
    {
        const auto started = model();
        expectDefaults(*started);
        started->setOutputTemplate(u"{name}"_s);
        started->setOutputDirectoryPath(std::nullopt);
        EXPECT_EQ(started->outputTemplate(), u"{name}"_s);
    }
    EXPECT_TRUE(QDir(path()).isEmpty());
}

TEST_F(AppModelSettingsTest, a_file_that_may_not_be_read_gives_the_defaults)
{
    m_folder.write(u"Morvix.conf"_s, "[General]\nmx.template=a\n");
    ASSERT_TRUE(QFile::setPermissions(path(), {}));
    const Unprivileged unprivileged(m_folder);
    ASSERT_FALSE(QFileInfo(path()).isReadable());

    expectDefaults(*model());
}

TEST_F(AppModelSettingsTest, dropped_writing_holds_for_this_run_and_never_writes)
{
    const QByteArray content = "[General]\nmx.outdir=/films\nmx.sound=false\n";
    m_folder.write(u"Morvix.conf"_s, content);
    {
        const auto batch = model(Settings::Writing::dropped);
        EXPECT_EQ(batch->outputDirectoryPath(), some(u"/films"_s));
        EXPECT_FALSE(batch->playDoneSound());
        for (const Change &change : changes()) {
            const QMetaProperty field = property(change.property);
            for (const QVariant &value : {change.first, change.second}) {
                field.write(batch.get(), value);
                EXPECT_EQ(field.read(batch.get()), value) << change.property;
            }
        }
    }
    EXPECT_EQ(contentOf(path()), content);
    EXPECT_EQ(m_folder.names(), QStringList{u"Morvix.conf"_s});
}

TEST_F(AppModelSettingsTest, dropped_writing_makes_no_file)
{
    model(Settings::Writing::dropped)->setOutputTemplate(u"{name}"_s);

    EXPECT_EQ(m_folder.names(), QStringList());
}

TEST_F(AppModelSettingsTest, texts_are_in_the_language_of_the_moment)
{
    const auto fresh = model();

    EXPECT_EQ(fresh->t(u"error.noinput"_s), u"Drop a video first."_s);
    EXPECT_EQ(fresh->tf(u"queue.saved"_s, {u"3 MB"_s, u"40"_s}), u"−3 MB (40% smaller)"_s);
    fresh->setLanguage(AppLanguage::simplifiedChinese);
    EXPECT_EQ(fresh->t(u"error.noinput"_s), u"请先拖入一个视频。"_s);
    EXPECT_EQ(fresh->tf(u"queue.saved"_s, {u"3 MB"_s, u"40"_s}), u"省了 3 MB（小 40%）"_s);
}

TEST_F(AppModelSettingsTest,
       plain_texts_keep_their_placeholders_and_unknown_keys_are_their_own_text)
{
    const auto fresh = model();
    for (const AppLanguage language : {AppLanguage::english, AppLanguage::simplifiedChinese}) {
        fresh->setLanguage(language);
        EXPECT_TRUE(fresh->t(u"queue.saved"_s).contains(u"%1$@"_s));
        EXPECT_TRUE(fresh->t(u"queue.saved"_s).contains(u"%%"_s));
        EXPECT_EQ(fresh->t(u"no.such.key"_s), u"no.such.key"_s);
        EXPECT_EQ(fresh->tf(u"no.such.key"_s, {u"a"_s}), u"no.such.key"_s);
    }
}
