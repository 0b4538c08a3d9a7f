// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/BackgroundPool.h"
#include "App/L10n.h"
#include "App/Settings.h"
#include "Engine/ChildGroup.h"
#include "Engine/CommandBuilder/BuilderError.h"
#include "Engine/FFmpegToolset.h"
#include "Engine/HardwareEncoders.h"
#include "Engine/PlanExecutor.h"
#include "Engine/PresetStore.h"
#include "Engine/PreviewEngine.h"
#include "Engine/ToolSearch.h"
#include "Engine/WatchFolderEngine.h"
#include "Models/ActionKind.h"
#include "Models/Job.h"
#include "Models/JobPlan.h"
#include "Models/QuickAction.h"
#include "Models/UserPreset.h"
#include "Models/VideoFile.h"
#include "Platform/PlatformServices.h"

#include <QFuture>
#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <variant>
#include <vector>

class QueueWorker;

/// The one observable object of the application: the files, the settings and the queue. Views read
/// its properties, redraw from its signals and call its operations; a signal comes only when a
/// value has truly changed. Lives on the main thread, which it never blocks but for the search for
/// the tools, when somebody needs them before it has ended.
class AppModel : public QObject
{
    Q_OBJECT

public:
    using JobList = QList<std::shared_ptr<Job>>;
    /// Bytes by the id of a file.
    using FileEstimates = QHash<QUuid, qint64>;
    /// Takes a file that has come in.
    using OnProbed = std::function<void(const VideoFile &)>;

    /// Two PNG files: a moment of the source, and a moment after encoding.
    using PreviewImages = PreviewEngine::Images;

    Q_PROPERTY(QList<VideoFile> files READ files NOTIFY filesChanged)
    Q_PROPERTY(std::optional<QUuid> selectedFileID READ selectedFileID WRITE setSelectedFileID
                   NOTIFY selectedFileIDChanged)
    Q_PROPERTY(ActionKind action READ action WRITE setAction NOTIFY actionChanged)
    Q_PROPERTY(AppModel::JobList jobs READ jobs NOTIFY jobsChanged)
    Q_PROPERTY(bool showSettings READ showSettings WRITE setShowSettings NOTIFY showSettingsChanged)
    Q_PROPERTY(bool showQueue READ showQueue WRITE setShowQueue NOTIFY showQueueChanged)
    Q_PROPERTY(int probingCount READ probingCount NOTIFY probingCountChanged)
    Q_PROPERTY(
        std::optional<QString> lastError READ lastError WRITE setLastError NOTIFY lastErrorChanged)
    Q_PROPERTY(bool showDropZonePanel READ showDropZonePanel WRITE setShowDropZonePanel NOTIFY
                   showDropZonePanelChanged)
    Q_PROPERTY(bool queuePaused READ queuePaused WRITE setQueuePaused NOTIFY queuePausedChanged)
    Q_PROPERTY(AppModel::FileEstimates fileEstimates READ fileEstimates NOTIFY fileEstimatesChanged)
    Q_PROPERTY(std::optional<UserPreset> appliedPreset READ appliedPreset WRITE setAppliedPreset
                   NOTIFY appliedPresetChanged)
    Q_PROPERTY(std::optional<QString> presetBanner READ presetBanner WRITE setPresetBanner NOTIFY
                   presetBannerChanged)
    Q_PROPERTY(std::optional<AppModel::PreviewImages> previewImages READ previewImages NOTIFY
                   previewImagesChanged)
    Q_PROPERTY(bool previewRunning READ previewRunning NOTIFY previewRunningChanged)
    Q_PROPERTY(double previewSeconds READ previewSeconds WRITE setPreviewSeconds NOTIFY
                   previewSecondsChanged)
    Q_PROPERTY(QString outputTemplate READ outputTemplate WRITE setOutputTemplate NOTIFY
                   outputTemplateChanged)
    Q_PROPERTY(bool keepFolderStructure READ keepFolderStructure WRITE setKeepFolderStructure NOTIFY
                   keepFolderStructureChanged)
    Q_PROPERTY(bool notifyOnFinish READ notifyOnFinish WRITE setNotifyOnFinish NOTIFY
                   notifyOnFinishChanged)
    Q_PROPERTY(AppLanguage language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(
        bool playDoneSound READ playDoneSound WRITE setPlayDoneSound NOTIFY playDoneSoundChanged)
    Q_PROPERTY(bool preferExactMode READ preferExactMode WRITE setPreferExactMode NOTIFY
                   preferExactModeChanged)
    Q_PROPERTY(qint64 queueConcurrency READ queueConcurrency WRITE setQueueConcurrency NOTIFY
                   queueConcurrencyChanged)
    Q_PROPERTY(std::optional<QString> outputDirectoryPath READ outputDirectoryPath WRITE
                   setOutputDirectoryPath NOTIFY outputDirectoryPathChanged)

    /// What outlives a run beside the settings. A program without a window has neither.
    struct Collections {
        std::shared_ptr<PresetStore> presets;
        std::shared_ptr<WatchFolderEngine> watchEngine;

        /// Those in the user's folder of data.
        static Collections ofUser();
    };

    /// Reads the settings, looks where the tools are and begins to watch the folders. What the
    /// tools offer is asked by the first who needs it, or by checkHardwareEncoders().
    AppModel(Settings settings, PlatformServices services, Collections collections = {},
             QObject *parent = nullptr);
    /// Ends every child and removes what jobs left in the temporary directory.
    ~AppModel() override;

    // Texts.

    /// The text of a key in `language`.
    QString t(const QString &key) const;
    /// The text of a key with its placeholders filled.
    QString tf(const QString &key, const QStringList &arguments) const;

    // Files.

    const QList<VideoFile> &files() const { return m_files; }
    const std::optional<QUuid> &selectedFileID() const { return m_selectedFileID; }
    void setSelectedFileID(const std::optional<QUuid> &id);
    std::optional<VideoFile> selectedFile() const;
    /// Probes under way.
    int probingCount() const { return m_probingCount; }
    /// The folder that output trees are rooted at: the first one of the latest add that had one.
    const std::optional<QUrl> &sourceRoot() const { return m_sourceRoot; }

    /// Takes in files and folders, which are those whose URL ends in a slash or that the disk knows
    /// as such. Each media file joins `files` as its probe ends; `onProbed` is then called with it,
    /// on the main thread. Absent tools or an unreadable file set `lastError`.
    void addURLs(const QList<QUrl> &urls, const OnProbed &onProbed = {});
    /// Jobs of the file hold their own copy and stay.
    void removeFile(const QUuid &id);
    /// The times of a film's keyframes in seconds. Asked once a file; empty when they can't be had.
    QFuture<QList<double>> keyframes(const VideoFile &file);

    /// The banner for the latest failure of taking files in.
    const std::optional<QString> &lastError() const { return m_lastError; }
    void setLastError(const std::optional<QString> &text);
    const FileEstimates &fileEstimates() const { return m_fileEstimates; }
    void setFileEstimate(const QUuid &fileID, qint64 bytes);

    // The queue.

    /// In order of adding, which is the order of work.
    const JobList &jobs() const { return m_jobs; }
    /// Absent when the search found none; never changes. Until the search has ended, this blocks.
    const std::optional<FFmpegToolset> &toolset() const { return located().toolset; }
    bool queuePaused() const { return m_queuePaused; }
    /// Keeps workers from taking the next job; a running one goes on. Not kept between runs.
    void setQueuePaused(bool paused);

    /// Which files an action is for.
    enum class Scope { selectedFile, allFiles };
    /// Adds a job for the selected file (for each file, when none is selected) or for each file.
    void enqueue(const JobMode &mode, Scope scope);
    /// Adds one job.
    void enqueueProbed(const VideoFile &file, const JobMode &mode);
    /// Takes the files in and adds a job with the action's defaults for each as its probe ends.
    /// Opens the queue at once.
    void runQuickAction(QuickAction action, const QList<QUrl> &urls);
    /// Adds one job over at least two files.
    void enqueueMerge(const JobMode &mode, const QList<VideoFile> &files);
    /// A waiting job is cancelled. A running one has its step ended, which then fails like any
    /// other: it ends as failed, or as cancelled when the word comes between two steps.
    void cancelJob(const QUuid &id);
    /// Puts a job back to waiting, in its place in the list.
    void retryJob(const QUuid &id);
    /// Removes the jobs that have ended.
    void clearFinished();

    /// The plan of a job with the settings of this moment. Throws BuilderError.
    JobPlan buildPlan(const Job &job) const;
    /// The plan as this machine can run it: with encoders that its ffmpeg has.
    JobPlan runnablePlan(const JobPlan &plan) const;
    /// What a refusal says to the user.
    QString builderMessage(const BuilderError &error) const;
    /// Ends the search for the tools in the background, and then tries the hardware encoders there;
    /// until that ends, software does their work.
    void checkHardwareEncoders();
    /// A codec by its common name, and the encoder that does its work.
    struct CodecEncoder {
        QString codec;
        QString encoder;

        bool operator==(const CodecEncoder &) const = default;
    };
    /// Who stands in for the encoders of pictures that plans name and this machine lacks, as known
    /// at this moment: each name that it has, or that nothing stands in for, is left out.
    QList<CodecEncoder> encoderStandIns() const;
    /// Whether the tools can do the exact mode of two passes.
    bool offersExactMode() const;

    // Presets, queue files and watched folders.

    /// Null in a program without a window; so is the engine below.
    const PresetStore *presets() const { return m_collections.presets.get(); }
    WatchFolderEngine *watchEngine() { return m_collections.watchEngine.get(); }
    /// Gives the preset of that name new parameters, or adds one.
    void savePreset(const QString &name, const PresetSpec &spec,
                    const std::optional<QUrl> &outputDirectory);
    /// Watched folders keep the id of a deleted preset, and ignore what comes.
    void deletePreset(const QUuid &id);
    /// Brings up the action of the preset, whose panel then takes its parameters.
    void applyPreset(const UserPreset &preset);
    /// The mode of the same name with the same parameters.
    static JobMode modeFrom(const PresetSpec &spec);
    /// Absent for trim, whose segments belong to one file.
    static std::optional<PresetSpec> specOf(const JobMode &mode);

    /// Writes the waiting jobs to a file, without those that have no spec. Fails without a word.
    void exportQueue(const QUrl &url) const;
    /// Takes in the files of a queue file and adds a job for each as its probe ends. A file that
    /// doesn't read as a whole goes to `lastError`.
    void importQueue(const QUrl &url);

    // What is on the screen.

    ActionKind action() const { return m_action; }
    void setAction(ActionKind action);
    bool showSettings() const { return m_showSettings; }
    void setShowSettings(bool show);
    bool showQueue() const { return m_showQueue; }
    void setShowQueue(bool show);
    bool showDropZonePanel() const { return m_showDropZonePanel; }
    void setShowDropZonePanel(bool show);
    const std::optional<UserPreset> &appliedPreset() const { return m_appliedPreset; }
    void setAppliedPreset(const std::optional<UserPreset> &preset);
    const std::optional<QString> &presetBanner() const { return m_presetBanner; }
    void setPresetBanner(const std::optional<QString> &text);
    /// Makes two stills of the selected file at a position in seconds: one of the source, one with
    /// the settings of the request. One at a time; a failure goes to `lastError`.
    void generatePreview(const PreviewEngine::Request &request, double position);
    const std::optional<PreviewImages> &previewImages() const { return m_previewImages; }
    bool previewRunning() const { return m_previewRunning; }
    double previewSeconds() const { return m_previewSeconds; }
    void setPreviewSeconds(double seconds);

    // Settings. Each is stored whenever it is set.

    /// Of output names; empty for the default.
    const QString &outputTemplate() const { return m_outputTemplate; }
    void setOutputTemplate(const QString &text);
    bool keepFolderStructure() const { return m_keepFolderStructure; }
    void setKeepFolderStructure(bool keep);
    bool notifyOnFinish() const { return m_notifyOnFinish; }
    void setNotifyOnFinish(bool notify);
    AppLanguage language() const { return m_language; }
    void setLanguage(AppLanguage language);
    bool playDoneSound() const { return m_playDoneSound; }
    void setPlayDoneSound(bool play);
    bool preferExactMode() const { return m_preferExactMode; }
    void setPreferExactMode(bool prefer);
    /// Jobs at once. Any number may be stored; it acts as 1 to 3.
    qint64 queueConcurrency() const { return m_queueConcurrency; }
    void setQueueConcurrency(qint64 count);
    /// Absent for results beside their sources.
    const std::optional<QString> &outputDirectoryPath() const { return m_outputDirectoryPath; }
    void setOutputDirectoryPath(const std::optional<QString> &path);

Q_SIGNALS:
    void filesChanged();
    void selectedFileIDChanged();
    void actionChanged();
    void jobsChanged();
    void showSettingsChanged();
    void showQueueChanged();
    void probingCountChanged();
    void lastErrorChanged();
    void showDropZonePanelChanged();
    void queuePausedChanged();
    void fileEstimatesChanged();
    void appliedPresetChanged();
    void presetBannerChanged();
    void previewImagesChanged();
    void previewRunningChanged();
    void previewSecondsChanged();
    void outputTemplateChanged();
    void keepFolderStructureChanged();
    void notifyOnFinishChanged();
    void languageChanged();
    void playDoneSoundChanged();
    void preferExactModeChanged();
    void queueConcurrencyChanged();
    void outputDirectoryPathChanged();

    /// Something in the list of presets.
    void presetsChanged();
    /// The check of the hardware has ended with other stand-ins than it began with.
    void encoderStandInsChanged();
    /// A worker is about to run the plan of a job.
    void jobPlanned(const std::shared_ptr<Job> &job, const JobPlan &plan);
    /// A job has failed or was cancelled while it ran; its state follows.
    void jobFailed(const std::shared_ptr<Job> &job, const std::exception_ptr &failure);
    /// A run of the job's plan begins, or of one that its factories made; counted from 1.
    void jobAttempted(const std::shared_ptr<Job> &job, int attempt);

private:
    friend class QueueWorker;

    /// How a run of a plan ended.
    using Ending = std::variant<ExecutionOutcome, std::exception_ptr>;

    using PreviewEnding = std::variant<PreviewImages, std::exception_ptr>;

    /// What the search for the tools has found.
    struct LocatedTools {
        std::optional<FFmpegToolset> toolset;
        /// Null without tools.
        std::shared_ptr<HardwareEncoders> hardwareEncoders;
    };

    template <typename Value>
    void assign(Value &field, const std::type_identity_t<Value> &value, void (AppModel::*changed)())
    {
        if (field == value) {
            return;
        }
        field = value;
        Q_EMIT(this->*changed)();
    }

    void readSettings();
    std::shared_ptr<ToolSearch> locateFFmpeg() const;
    const LocatedTools &located() const;
    void tryHardwareEncoders();
    void startWatchFolders();
    void takeWatched(const WatchFolderConfig &config, const QList<QUrl> &urls);

    void probe(const QUrl &url, const OnProbed &onProbed);
    void takeProbed(const std::optional<VideoFile> &file, const OnProbed &onProbed);

    std::optional<QUrl> outputDirectory() const;
    std::optional<QUrl> outputDirectoryFor(const VideoFile &file) const;
    std::optional<QUrl> outputDirectoryOf(const Job &job) const;
    void append(const std::shared_ptr<Job> &job);
    std::shared_ptr<Job> jobWithID(const QUuid &id) const;
    std::shared_ptr<Job> nextQueuedJob() const;

    qsizetype wantedWorkers() const;
    void startWorkers();
    void restartWorkers();

    void run(const std::shared_ptr<Job> &job, const std::function<void()> &done);
    std::optional<JobPlan> planOrFail(const std::shared_ptr<Job> &job);
    void execute(const std::shared_ptr<Job> &job, const JobPlan &plan,
                 const std::function<void(const Ending &)> &done);
    JobPlan announcingAttempts(const std::shared_ptr<Job> &job, JobPlan plan);
    void end(const std::shared_ptr<Job> &job, const JobPlan &plan, const Ending &ending);
    void finish(Job &job, const JobPlan &plan, const ExecutionOutcome &outcome);
    void notifyFinished(const QString &fileName, const QString &saved);
    std::shared_ptr<PlanExecutor> makeExecutor();
    void runPreview(const JobPlan &plan);
    void endPreview(const PreviewEnding &ending);
    void endPreview(const QString &reason);

    void holdSleep();
    void releaseSleep();
    void endChildren();

    Settings m_settings;
    const PlatformServices m_services;
    const Collections m_collections;

    QList<VideoFile> m_files;
    std::optional<QUuid> m_selectedFileID;
    ActionKind m_action = ActionKind::targetSize;
    JobList m_jobs;
    bool m_showSettings = false;
    bool m_showQueue = false;
    int m_probingCount = 0;
    std::optional<QString> m_lastError;
    bool m_showDropZonePanel = false;
    bool m_queuePaused = false;
    FileEstimates m_fileEstimates;
    std::optional<UserPreset> m_appliedPreset;
    std::optional<QString> m_presetBanner;
    std::optional<PreviewImages> m_previewImages;
    bool m_previewRunning = false;
    double m_previewSeconds = 0;
    QString m_outputTemplate;
    bool m_keepFolderStructure = false;
    bool m_notifyOnFinish = true;
    AppLanguage m_language = AppLanguage::english;
    bool m_playDoneSound = true;
    bool m_preferExactMode = true;
    qint64 m_queueConcurrency = 1;
    std::optional<QString> m_outputDirectoryPath;

    std::optional<QUrl> m_sourceRoot;
    QHash<QUuid, std::shared_ptr<PlanExecutor>> m_executors;
    // All that may still run: a job that is put back while it runs has two, and a preview's is in
    // no list of jobs.
    std::vector<std::weak_ptr<PlanExecutor>> m_startedExecutors;
    QHash<QUuid, QList<double>> m_keyframeCache;
    // Living ones and ended ones: the pool is filled once and never refilled.
    QList<QueueWorker *> m_workers;
    int m_runningJobs = 0;
    // What may have left something in the temporary directory, be its job still in the list or not.
    QSet<QUuid> m_filesOfJobs;

    const std::shared_ptr<ChildGroup> m_questions = std::make_shared<ChildGroup>();
    const std::shared_ptr<ToolSearch> m_toolSearch;
    // Absent until somebody needs the tools. To callers they have always been there.
    mutable std::optional<LocatedTools> m_located;
    BackgroundPool m_probePool;
    BackgroundPool m_keyframePool;
    BackgroundPool m_executorPool;
};
