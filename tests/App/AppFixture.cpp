// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "Platform/SilentServices.h"
#include "support/FakeTool.h"
#include "support/Processes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QMetaEnum>
#include <QTimer>

#include <algorithm>
#include <array>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds patience{90};
// Each posted call may post another; none of the queue's rows is longer.
constexpr int turns = 20;

class RecordingSound : public DoneSound
{
public:
    explicit RecordingSound(std::shared_ptr<DesktopRecord> record) : m_record(std::move(record)) {}

    bool play() override
    {
        ++m_record->sounds;
        if (m_record->onSound) {
            m_record->onSound();
        }
        return m_record->hasSound;
    }
    void beep() override { ++m_record->beeps; }

private:
    const std::shared_ptr<DesktopRecord> m_record;
};

class RecordingNotifier : public Notifier
{
public:
    explicit RecordingNotifier(std::shared_ptr<DesktopRecord> record) : m_record(std::move(record))
    {
    }

    void post(const QString &title, const QString &body) override
    {
        m_record->messages += title + u'\n' + body;
    }

private:
    const std::shared_ptr<DesktopRecord> m_record;
};

class RecordedState : public ApplicationState
{
public:
    explicit RecordedState(std::shared_ptr<DesktopRecord> record) : m_record(std::move(record)) {}

    bool isActive() const override { return m_record->isActive; }

private:
    const std::shared_ptr<DesktopRecord> m_record;
};

class RecordingInhibitor : public SleepInhibitor
{
public:
    explicit RecordingInhibitor(std::shared_ptr<DesktopRecord> record) : m_record(std::move(record))
    {
    }

    void hold(const QString &reason) override { m_record->sleepCalls += u"hold "_s + reason; }
    void release() override { m_record->sleepCalls += u"release"_s; }

private:
    const std::shared_ptr<DesktopRecord> m_record;
};

QString nameOf(Job::Outcome outcome)
{
    const auto names = QMetaEnum::fromType<Job::Outcome>();
    return QString::fromLatin1(names.valueToKey(static_cast<int>(outcome)));
}

QString wordsOf(const Job::State &state)
{
    const QString name = nameOf(Job::outcome(state));
    const auto *running = std::get_if<Job::Running>(&state);
    return running ? name + u' ' + QString::number(running->progress) : name;
}

const QByteArray prelude = R"(
if [ "$2" = -encoders ]; then
    printf ' V....D %s x\n' libx264 h264_videotoolbox aac
    exit 0
fi
run=$((run - 1))
for word in "$@"; do
    if [ "$before" = -i ]; then in=$word; fi
    before=$word
done
progress() { echo "out_time_us=$1"; }
await_gate() { if [ -p "$in.gate" ]; then read -r go < "$in.gate"; fi; }
result() { head -c "$1" /dev/zero > "$out"; }
)";

// A film may tell of itself in a file beside it.
const QByteArray fakeProbe = R"(#!/bin/sh
for film in "$@"; do :; done
if [ -f "$film.json" ]; then exec cat "$film.json"; fi
echo '{"format": {"duration": "10", "size": "2150000"},
       "streams": [{"index": 0, "codec_type": "video", "codec_name": "h264", "width": 640, "height": 360}]}'
)";

} // namespace

PlatformServices recordingServices(const std::shared_ptr<DesktopRecord> &record)
{
    PlatformServices services = makeSilentServices();
    services.doneSound = std::make_shared<RecordingSound>(record);
    services.notifier = std::make_shared<RecordingNotifier>(record);
    services.applicationState = std::make_shared<RecordedState>(record);
    services.sleepInhibitor = std::make_shared<RecordingInhibitor>(record);
    return services;
}

// The words outlive the log: a job may change after the test is done with it.
StateLog::StateLog(const std::shared_ptr<Job> &job)
{
    Job *const watched = job.get();
    QObject::connect(watched, &Job::stateChanged, watched,
                     [watched, words = m_words] { *words += wordsOf(watched->state()); });
}

RunningCount::RunningCount(const AppModel::JobList &jobs)
{
    for (const std::shared_ptr<Job> &job : jobs) {
        Job *const watched = job.get();
        QObject::connect(watched, &Job::stateChanged, watched,
                         [watched, count = m_count, wasRunning = false]() mutable {
                             const bool isRunning = watched->outcome() == Job::Outcome::running;
                             count->now +=
                                 static_cast<int>(isRunning) - static_cast<int>(wasRunning);
                             count->most = std::max(count->most, count->now);
                             wasRunning = isRunning;
                         });
    }
}

// Open at both ends, so that neither side waits for the other.
Gate::Gate(const VideoFile &film)
    : m_descriptor([&] {
        const QByteArray path = QFile::encodeName(film.url.toLocalFile() + u".gate"_s);
        EXPECT_EQ(::mkfifo(path.constData(), S_IRUSR | S_IWUSR), 0);
        return ::open(path.constData(), O_RDWR | O_CLOEXEC);
    }())
{
    EXPECT_GE(m_descriptor, 0);
}

Gate::~Gate()
{
    ::close(m_descriptor);
}

void Gate::open() const
{
    EXPECT_EQ(::write(m_descriptor, "\n", 1), 1);
}

AppFixture::AppFixture()
{
    installObedientFFmpeg();
}

// Before its folders and its environment go.
AppFixture::~AppFixture()
{
    m_model.reset();
}

void AppFixture::installFFmpeg(const QByteArray &body)
{
    const FakeTool ffmpeg(m_tools, prelude + body + '\n');
    m_tools.writeExecutable(u"ffprobe"_s, fakeProbe);
    m_path.reset();
    m_path.emplace("PATH", m_tools.path().toUtf8() + ":/usr/bin:/bin");
}

void AppFixture::installObedientFFmpeg()
{
    installFFmpeg("progress 2500000\n"
                  "await_gate\n"
                  "progress 5000000\n"
                  "result 950000\n");
}

void AppFixture::installEncoders(const QStringList &names, const QByteArray &body)
{
    installFFmpeg({});
    const QByteArray list = names.join(u' ').toUtf8();
    m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\n"
                                         "if [ \"$2\" = -encoders ]; then\n"
                                         "    printf ' V....D %s x\\n' " +
                                             list + "\n    exit 0\nfi\n" + body + '\n');
}

void AppFixture::holdEncoders(const VideoFile &film)
{
    installFFmpeg({});
    const QByteArray gate = film.url.toLocalFile().toUtf8() + ".gate";
    m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\n"
                                         "if [ \"$2\" = -encoders ]; then\n"
                                         "    read -r go < '" +
                                             gate +
                                             "'\n"
                                             "    echo ' V....D libx264 x'\n"
                                             "    exit 0\nfi\nexit 1\n");
}

QList<qint64> AppFixture::askedForEncoders() const
{
    return Processes::withWords({m_tools.path(), u"-encoders"_s});
}

void AppFixture::removeTools()
{
    m_path.reset();
    m_path.emplace("PATH", m_noTools.path().toUtf8());
}

void AppFixture::useRealTools()
{
    m_path.reset();
    m_path.emplace("PATH", m_realPath);
}

void AppFixture::start(const Start &settings)
{
    Settings store(m_store.path(u"settings.conf"_s));
    store.setInteger(u"mx.concurrency"_s, settings.concurrency);
    store.setText(u"mx.language"_s, rawValue(settings.language));
    m_model = std::make_unique<AppModel>(std::move(store), recordingServices(m_desktop),
                                         settings.collections);
}

VideoFile AppFixture::film(const QString &name, qint64 bytes) const
{
    VideoFile film;
    film.url = m_films.url(name);
    film.durationSeconds = 10;
    film.fileSizeBytes = bytes;
    film.width = 640;
    film.height = 360;
    film.videoCodec = u"h264"_s;
    return film;
}

TargetSizeParams AppFixture::oneMegabyte()
{
    TargetSizeParams params;
    params.targetMB = 1;
    return params;
}

TargetSizeParams AppFixture::oneMegabyteExactly()
{
    TargetSizeParams params = oneMegabyte();
    params.exactTwoPass = true;
    return params;
}

std::shared_ptr<Job> AppFixture::enqueue(const VideoFile &film, const JobMode &mode)
{
    m_model->enqueueProbed(film, mode);
    return m_model->jobs().last();
}

QList<std::shared_ptr<Job>> AppFixture::enqueueAll(const QList<VideoFile> &films)
{
    QList<std::shared_ptr<Job>> jobs;
    for (const VideoFile &film : films) {
        jobs += enqueue(film);
    }
    return jobs;
}

void AppFixture::takeIn(const QUrl &url)
{
    m_model->addURLs({url});
    waitUntil([this] { return m_model->probingCount() == 0; });
}

void AppFixture::waitUntil(const std::function<bool()> &holds)
{
    QEventLoop loop;
    const auto check = [&] {
        if (holds()) {
            loop.quit();
        }
    };
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        QObject::connect(job.get(), &Job::stateChanged, &loop, check);
    }
    QObject::connect(m_model.get(), &AppModel::jobsChanged, &loop, check);
    QObject::connect(m_model.get(), &AppModel::probingCountChanged, &loop, check);
    QObject::connect(m_model.get(), &AppModel::jobAttempted, &loop, check);
    QTimer::singleShot(patience, &loop, [&loop] { loop.exit(1); });
    if (!holds()) {
        ASSERT_EQ(loop.exec(), 0) << "what was waited for never came";
    }
}

void AppFixture::waitFor(const std::shared_ptr<Job> &job, Job::Outcome outcome)
{
    waitUntil([&] { return job->outcome() == outcome; });
}

void AppFixture::waitForProgress(const std::shared_ptr<Job> &job, double progress)
{
    waitUntil([&] { return job->state() == Job::State(Job::Running{progress}); });
}

void AppFixture::waitForAllToEnd()
{
    waitUntil([this] {
        return std::ranges::all_of(m_model->jobs(), [](const std::shared_ptr<Job> &job) {
            const Job::Outcome outcome = job->outcome();
            return outcome == Job::Outcome::finished || outcome == Job::Outcome::failed ||
                   outcome == Job::Outcome::cancelled;
        });
    });
}

void AppFixture::turnTheLoop()
{
    for (int turn = 0; turn < turns; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QList<Job::Outcome> AppFixture::outcomesOf(const AppModel::JobList &jobs)
{
    QList<Job::Outcome> outcomes;
    for (const std::shared_ptr<Job> &job : jobs) {
        outcomes += job->outcome();
    }
    return outcomes;
}

QString AppFixture::messageOf(const std::shared_ptr<Job> &job)
{
    const auto *failed = std::get_if<Job::Failed>(&job->state());
    EXPECT_TRUE(failed) << wordsOf(job->state()).toStdString();
    return failed ? failed->message : QString();
}

Job::Finished AppFixture::resultOf(const std::shared_ptr<Job> &job)
{
    const auto *finished = std::get_if<Job::Finished>(&job->state());
    EXPECT_TRUE(finished) << wordsOf(job->state()).toStdString();
    return finished ? *finished : Job::Finished();
}

void PrintTo(Job::Outcome outcome, std::ostream *out)
{
    *out << nameOf(outcome).toStdString();
}
