// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/AppModel.h"

#include "App/QueueWorker.h"
#include "Engine/EncoderStandIns.h"
#include "Engine/FFmpegLocator.h"
#include "Engine/TemporaryFiles.h"

#include <QThread>

#include <array>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {

// Nobody bounds how many run: workers of a lowered setting finish their job beside new ones.
constexpr int mostExecutors = 64;
// Files on a disk that hangs must not keep all others waiting.
constexpr int mostProbes = 64;
constexpr int keyframeQuestions = 4;
constexpr int manyProcessors = 8;
constexpr std::chrono::milliseconds cancelInterval{250};

struct SettingKeys {
    QString outputTemplate = u"mx.template"_s;
    QString keepFolderStructure = u"mx.structure"_s;
    QString notifyOnFinish = u"mx.notify"_s;
    QString language = u"mx.language"_s;
    QString playDoneSound = u"mx.sound"_s;
    QString preferExactMode = u"mx.exact"_s;
    QString queueConcurrency = u"mx.concurrency"_s;
    QString outputDirectoryPath = u"mx.outdir"_s;
};

struct NamedCodec {
    QLatin1StringView plannedEncoder;
    QLatin1StringView codec;
};

constexpr std::array namedCodecs{NamedCodec{"h264_videotoolbox"_L1, "H.264"_L1},
                                 NamedCodec{"hevc_videotoolbox"_L1, "HEVC"_L1},
                                 NamedCodec{"prores_videotoolbox"_L1, "ProRes"_L1}};

const SettingKeys &keys()
{
    static const SettingKeys all;
    return all;
}

qint64 defaultConcurrency()
{
    return QThread::idealThreadCount() >= manyProcessors ? 2 : 1;
}

} // namespace

AppModel::Collections AppModel::Collections::ofUser()
{
    // The store is the program's own one: it lives as long as the program.
    return {std::shared_ptr<PresetStore>(&PresetStore::shared(), [](PresetStore *) {}),
            std::make_shared<WatchFolderEngine>()};
}

AppModel::AppModel(Settings settings, PlatformServices services, Collections collections,
                   QObject *parent)
    : QObject(parent)
    , m_settings(std::move(settings))
    , m_services(std::move(services))
    , m_collections(std::move(collections))
    , m_toolSearch(locateFFmpeg())
    , m_probePool(mostProbes, QThread::InheritPriority)
    , m_keyframePool(keyframeQuestions, QThread::LowPriority)
    , m_executorPool(mostExecutors, QThread::InheritPriority)
{
    readSettings();
    startWatchFolders();
}

AppModel::~AppModel()
{
    endChildren();
    TemporaryFiles::removeLeftovers(m_filesOfJobs);
}

void AppModel::readSettings()
{
    m_outputTemplate = m_settings.text(keys().outputTemplate).value_or(QString());
    m_keepFolderStructure = m_settings.boolean(keys().keepFolderStructure).value_or(false);
    m_notifyOnFinish = m_settings.boolean(keys().notifyOnFinish).value_or(true);
    m_language = fromRawValue<AppLanguage>(m_settings.text(keys().language).value_or(QString()))
                     .value_or(AppLanguage::english);
    m_playDoneSound = m_settings.boolean(keys().playDoneSound).value_or(true);
    m_preferExactMode = m_settings.boolean(keys().preferExactMode).value_or(true);
    m_queueConcurrency = m_settings.integer(keys().queueConcurrency).value_or(defaultConcurrency());
    m_outputDirectoryPath = m_settings.text(keys().outputDirectoryPath);
}

// Where the tools are is known at once. What they offer takes ffmpeg longer to tell than it takes
// the window to appear, and on few processors the answer would hold up the window even without a
// wait. No failure is told: there are no files yet that it would matter to.
std::shared_ptr<ToolSearch> AppModel::locateFFmpeg() const
{
    FFmpegLocator &locator = FFmpegLocator::shared();
    locator.searched = true;
    return std::make_shared<ToolSearch>(
        locator, [questions = m_questions](const auto &child) { questions->adopt(child); });
}

const AppModel::LocatedTools &AppModel::located() const
{
    if (!m_located) {
        const std::optional<FFmpegToolset> &toolset = m_toolSearch->result();
        FFmpegLocator::shared().toolset = toolset;
        m_located = {toolset, toolset ? std::make_shared<HardwareEncoders>(*toolset) : nullptr};
    }
    return *m_located;
}

void AppModel::checkHardwareEncoders()
{
    m_executorPool.run([search = m_toolSearch] { return search->result().has_value(); },
                       [this](bool) { tryHardwareEncoders(); });
}

void AppModel::tryHardwareEncoders()
{
    if (located().hardwareEncoders) {
        m_executorPool.run(
            [encoders = located().hardwareEncoders] {
                encoders->check();
                return true;
            },
            [this, before = encoderStandIns()](bool) {
                if (encoderStandIns() != before) {
                    Q_EMIT encoderStandInsChanged();
                }
            });
    }
}

QList<AppModel::CodecEncoder> AppModel::encoderStandIns() const
{
    if (!located().hardwareEncoders) {
        return {};
    }
    const EncoderStandIns::Table table = located().hardwareEncoders->standIns();
    QList<CodecEncoder> found;
    for (const NamedCodec &named : namedCodecs) {
        const QList<StandIn> standIns = table.value(named.plannedEncoder);
        if (!standIns.isEmpty()) {
            found.append({named.codec, standIns.first().encoder});
        }
    }
    return found;
}

bool AppModel::offersExactMode() const
{
    return toolset() && toolset()->encoders.contains(u"libx264"_s);
}

// A child that is just being launched hears nothing yet: all are asked again until none is left.
void AppModel::endChildren()
{
    const auto askAll = [this] {
        m_questions->terminateAll();
        if (m_located && m_located->hardwareEncoders) {
            m_located->hardwareEncoders->cancel();
        }
        for (const std::weak_ptr<PlanExecutor> &started : m_startedExecutors) {
            if (const std::shared_ptr<PlanExecutor> executor = started.lock()) {
                executor->cancel();
            }
        }
    };
    for (BackgroundPool *pool : {&m_probePool, &m_keyframePool, &m_executorPool}) {
        do {
            askAll();
        } while (!pool->finish(cancelInterval));
    }
}

std::shared_ptr<PlanExecutor> AppModel::makeExecutor()
{
    auto executor = std::make_shared<PlanExecutor>(toolset()->ffmpegURL);
    std::erase_if(m_startedExecutors, [](const auto &started) { return started.expired(); });
    m_startedExecutors.push_back(executor);
    return executor;
}

QString AppModel::t(const QString &key) const
{
    return L10n::t(key, m_language);
}

QString AppModel::tf(const QString &key, const QStringList &arguments) const
{
    return L10n::format(t(key), arguments);
}

void AppModel::setSelectedFileID(const std::optional<QUuid> &id)
{
    assign(m_selectedFileID, id, &AppModel::selectedFileIDChanged);
}

void AppModel::setLastError(const std::optional<QString> &text)
{
    assign(m_lastError, text, &AppModel::lastErrorChanged);
}

void AppModel::setFileEstimate(const QUuid &fileID, qint64 bytes)
{
    if (m_fileEstimates.contains(fileID) && m_fileEstimates.value(fileID) == bytes) {
        return;
    }
    m_fileEstimates.insert(fileID, bytes);
    Q_EMIT fileEstimatesChanged();
}

void AppModel::setQueuePaused(bool paused)
{
    assign(m_queuePaused, paused, &AppModel::queuePausedChanged);
}

void AppModel::setAction(ActionKind action)
{
    assign(m_action, action, &AppModel::actionChanged);
}

void AppModel::setShowSettings(bool show)
{
    assign(m_showSettings, show, &AppModel::showSettingsChanged);
}

void AppModel::setShowQueue(bool show)
{
    assign(m_showQueue, show, &AppModel::showQueueChanged);
}

void AppModel::setShowDropZonePanel(bool show)
{
    assign(m_showDropZonePanel, show, &AppModel::showDropZonePanelChanged);
}

void AppModel::setAppliedPreset(const std::optional<UserPreset> &preset)
{
    assign(m_appliedPreset, preset, &AppModel::appliedPresetChanged);
}

void AppModel::setPresetBanner(const std::optional<QString> &text)
{
    assign(m_presetBanner, text, &AppModel::presetBannerChanged);
}

void AppModel::setPreviewSeconds(double seconds)
{
    assign(m_previewSeconds, seconds, &AppModel::previewSecondsChanged);
}

void AppModel::setOutputTemplate(const QString &text)
{
    m_settings.setText(keys().outputTemplate, text);
    assign(m_outputTemplate, text, &AppModel::outputTemplateChanged);
}

void AppModel::setKeepFolderStructure(bool keep)
{
    m_settings.setBoolean(keys().keepFolderStructure, keep);
    assign(m_keepFolderStructure, keep, &AppModel::keepFolderStructureChanged);
}

void AppModel::setNotifyOnFinish(bool notify)
{
    m_settings.setBoolean(keys().notifyOnFinish, notify);
    assign(m_notifyOnFinish, notify, &AppModel::notifyOnFinishChanged);
}

void AppModel::setLanguage(AppLanguage language)
{
    m_settings.setText(keys().language, rawValue(language));
    assign(m_language, language, &AppModel::languageChanged);
}

void AppModel::setPlayDoneSound(bool play)
{
    m_settings.setBoolean(keys().playDoneSound, play);
    assign(m_playDoneSound, play, &AppModel::playDoneSoundChanged);
}

void AppModel::setPreferExactMode(bool prefer)
{
    m_settings.setBoolean(keys().preferExactMode, prefer);
    assign(m_preferExactMode, prefer, &AppModel::preferExactModeChanged);
}

void AppModel::setQueueConcurrency(qint64 count)
{
    m_settings.setInteger(keys().queueConcurrency, count);
    assign(m_queueConcurrency, count, &AppModel::queueConcurrencyChanged);
    restartWorkers();
}

void AppModel::setOutputDirectoryPath(const std::optional<QString> &path)
{
    if (path) {
        m_settings.setText(keys().outputDirectoryPath, *path);
    } else {
        m_settings.remove(keys().outputDirectoryPath);
    }
    assign(m_outputDirectoryPath, path, &AppModel::outputDirectoryPathChanged);
}
