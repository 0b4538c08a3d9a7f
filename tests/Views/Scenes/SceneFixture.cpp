// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SceneFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/TextField.h"
#include "Views/DropZonePanelWindow.h"
#include "Views/Shell/RootView.h"
#include "support/EventLoop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QLinearGradient>
#include <QPainter>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

// A preview's stills lie ready. A film whose name says so breaks off; one with a gate stays at 42
// of 100.
const QByteArray playedFFmpeg = R"(
case "$out" in
*.png) cp "$stills/${out##*/}" "$out"; exit ;;
esac
case "$in" in
*Broken*) echo "Conversion failed! Invalid data found when processing input" >&2; exit 1 ;;
esac
progress 34860000
await_gate
result 22400000
)";

/// Hills under an evening sky, with an edge to look for and something fine beside it.
QImage landscape()
{
    QImage image(640, 360, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, 360);
    sky.setColorAt(0, QColor(52, 84, 140));
    sky.setColorAt(0.7, QColor(240, 178, 122));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(38, 58, 66));
    painter.drawPolygon(
        QPolygon({{0, 260}, {180, 140}, {330, 250}, {470, 170}, {640, 280}, {640, 360}, {0, 360}}));
    painter.setPen(QPen(QColor(246, 240, 226), 1));
    for (int x = 40; x < 640; x += 12) {
        painter.drawLine(x, 330, x + 6, 300);
    }
    return image;
}

QByteArray pngOf(const QImage &image)
{
    QByteArray data;
    QBuffer file(&data);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && image.save(&file, "PNG"));
    return data;
}

/// What is left of a picture at a fifth of its size.
QImage coarse(const QImage &image)
{
    return image.scaled(image.size() / 5, Qt::IgnoreAspectRatio, Qt::FastTransformation)
        .scaled(image.size());
}

} // namespace

SceneFixture::SceneFixture()
    : m_presets(std::make_shared<PresetStore>(m_data.url({})))
    , m_watchEngine(std::make_shared<WatchFolderEngine>(m_data.url({})))
{
    m_stills.write(u"before.png"_s, pngOf(landscape()));
    m_stills.write(u"after.png"_s, pngOf(coarse(landscape())));
}

SceneFixture::~SceneFixture()
{
    m_gate.reset();
    Look::apply(Look::Scheme::light);
}

void SceneFixture::open(const Dress &dress, Tools tools)
{
    Look::apply(dress.scheme);
    installFFmpeg("stills=" + m_stills.path().toUtf8() + playedFFmpeg);
    if (tools == Tools::missing) {
        removeTools();
    }
    start(
        {.concurrency = 1, .language = dress.language, .collections = {m_presets, m_watchEngine}});
    show(new RootView(context(), [](bool) {}), dress.size);
}

void SceneFixture::films()
{
    film(u"Holiday in the mountains.mp4"_s,
         {.bytes = 182'400'000, .seconds = 83, .subtitleCodecs = {u"subrip"_s}});
    film(u"Lecture 07 – thermodynamics and heat engines, second part.mkv"_s,
         {.bytes = 1'240'000'000,
          .seconds = 4'325,
          .width = 3840,
          .height = 2160,
          .videoCodec = u"hevc"_s,
          .fps = 60,
          .isHDR = true});
    film(u"Logo loop.mov"_s, {.bytes = 9'800'000,
                              .seconds = 6,
                              .width = 800,
                              .height = 800,
                              .videoCodec = u"prores"_s,
                              .audioCodecs = {},
                              .hasAlpha = true});
}

void SceneFixture::open(ActionKind action)
{
    m_model->setAction(action);
    settle();
}

void SceneFixture::jobs()
{
    const VideoFile done = film(u"Birthday.mp4"_s, {.bytes = 96'000'000});
    const VideoFile broken = film(u"Broken.avi"_s, {.bytes = 31'000'000});
    const VideoFile running = film(u"Interview.mov"_s, {.bytes = 412'000'000});
    m_gate = std::make_unique<Gate>(running);
    const TargetSizeParams target;
    const auto first = enqueue(done, target);
    enqueue(broken, CompressParams());
    const auto third = enqueue(running, target);
    enqueue(done, ConvertParams());
    const auto last = enqueue(done, ExtractParams());
    m_model->cancelJob(last->id);
    m_model->setShowQueue(true);
    waitFor(first, Job::Outcome::finished);
    waitForProgress(third, 0.42);
    settle();
}

void SceneFixture::reading()
{
    holdProbes();
    VideoFile film;
    film.url = layReady(u"Holiday in the mountains.mp4"_s);
    m_gate = std::make_unique<Gate>(film);
    m_model->addURLs({film.url});
    settle();
}

void SceneFixture::collections()
{
    m_presets->upsert(u"Newsletter – square, no sound"_s, CompressParams(), std::nullopt);
    m_presets->upsert(u"给客户的样片（十兆以内）"_s, TargetSizeParams(), std::nullopt);
    const QUuid preset = m_presets->presets().first().id;
    for (const auto &[name, presetID] :
         {std::pair(u"Camera uploads"_s, std::optional(preset)),
          std::pair(u"Screen recordings of the support team"_s, std::optional<QUuid>())}) {
        m_films.write(name + u"/.keep"_s, {});
        m_watchEngine->add(m_films.url(name + u'/'), presetID);
    }
    m_watchEngine->setEnabled(false, m_watchEngine->configs().last().id);
}

void SceneFixture::preview()
{
    press(m_model->t(u"preview.generate"_s));
    ASSERT_TRUE(EventLoop::waitFor([this] { return m_model->previewImages().has_value(); },
                                   m_model.get(), &AppModel::previewImagesChanged,
                                   &AppModel::previewRunningChanged));
    settle();
}

void SceneFixture::press(const QString &name)
{
    click(find<QAbstractButton>(name));
}

void SceneFixture::typeTarget(const QString &megabytes)
{
    type(find<TextField>(m_model->t(u"preset.custom"_s) + u" (MB)"_s), megabytes);
}

void SceneFixture::pictureMenu(const QString &button)
{
    const auto *opener = find<QAbstractButton>(button);
    ASSERT_NE(opener, nullptr);
    // There is less screen here than window, and a menu keeps to the screen.
    m_window->move(-opener->mapTo(m_window.get(), QPoint()));
    // The click comes back when the menu is closed.
    QTimer::singleShot(0, m_window.get(), [this] {
        QWidget *menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        m_menu = menu->grab();
        m_menuPlace = {m_window->mapFromGlobal(menu->pos()), menu->size()};
        menu->close();
    });
    press(button);
    activateAgain();
}

void SceneFixture::dropZone()
{
    m_model->setShowDropZonePanel(true);
    auto *panel = new DropZonePanelWindow(*m_model);
    show(panel, panel->size());
}

QPixmap SceneFixture::picture()
{
    const QPixmap content = m_window->grab();
    const QRect whole = m_window->rect().united(m_menuPlace);
    QPixmap picture(whole.size() * content.devicePixelRatio());
    picture.setDevicePixelRatio(content.devicePixelRatio());
    picture.fill(Look::color(Look::ColorRole::window));
    QPainter painter(&picture);
    painter.drawPixmap(-whole.topLeft(), content);
    painter.drawPixmap(m_menuPlace.topLeft() - whole.topLeft(), m_menu);
    return picture;
}
