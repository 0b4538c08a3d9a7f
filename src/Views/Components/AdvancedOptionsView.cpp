// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/AdvancedOptionsView.h"

#include "Views/Components/CropPicker.h"
#include "Views/Components/HintedSwitch.h"
#include "Views/Components/NumberPicker.h"
#include "Views/Components/ReplacementAudioPicker.h"
#include "Views/Components/VolumeControl.h"
#include "Views/Controls/Card.h"
#include "Views/Controls/HairLine.h"
#include "Views/Controls/Slider.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QGridLayout>
#include <QLatin1StringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int codecWidth = 260;
constexpr int numberWidth = 140;
// Where the picker stands until a factor is stored; nothing is stored for it.
constexpr qint64 shownCrf = 23;

struct CodecRow {
    CodecChoice codec;
    /// The encoder that it can't do without; empty for those that are always offered.
    QLatin1StringView encoder;
};

constexpr auto codecRows = std::to_array<CodecRow>({
    {CodecChoice::automatic, {}},
    {CodecChoice::h264VideoToolbox, {}},
    {CodecChoice::hevcVideoToolbox, {}},
    {CodecChoice::proresVideoToolbox, "prores_videotoolbox"_L1},
    {CodecChoice::svtAV1, "libsvtav1"_L1},
    {CodecChoice::softwareX264, "libx264"_L1},
});

QList<CodecChoice> codecsOf(const std::optional<FFmpegToolset> &toolset)
{
    QList<CodecChoice> codecs;
    for (const CodecRow &row : codecRows) {
        if (row.encoder.isEmpty() ||
            (toolset && toolset->encoders.contains(QString(row.encoder)))) {
            codecs += row.codec;
        }
    }
    return codecs;
}

} // namespace

AdvancedOptionsView::AdvancedOptionsView(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_codecs(codecsOf(context.model.toolset()))
    , m_grid(new QGridLayout)
    , m_codec(new MenuPicker)
    , m_crf(new NumberPicker({18, 20, 23, 26, 28, 30}, u"CRF %1"_s))
    , m_fpsCap(new NumberPicker({std::nullopt, 24, 30, 60}))
    , m_audioBitrate(new NumberPicker({std::nullopt, 64, 96, 128, 160, 192, 256}))
    , m_volume(new VolumeControl)
    , m_replacementAudio(new ReplacementAudioPicker(context))
    , m_crop(new CropPicker(context))
    , m_hdr(new HintedSwitch)
    , m_alpha(new HintedSwitch)
    , m_extraArgs(new TextField)
{
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    auto *card = new Card;
    whole->addWidget(card);
    card->column()->addLayout(m_grid);
    m_grid->setHorizontalSpacing(Look::Space::large);
    m_grid->setVerticalSpacing(Look::Space::medium);
    m_grid->setColumnStretch(1, 1);
    buildEncoding();
    buildAudio();
    buildPicture();
    buildExtraArgs();
}

void AdvancedOptionsView::buildEncoding()
{
    m_codec->setFixedWidth(codecWidth);
    for (NumberPicker *picker : {m_crf, m_fpsCap, m_audioBitrate}) {
        picker->setFixedWidth(numberWidth);
    }
    addRow(u"advanced.codec", m_codec, m_codec);
    m_crfLabel = addRow(u"advanced.crf", m_crf, m_crf);
    addRow(u"advanced.fps", m_fpsCap, m_fpsCap);
    connect(m_codec, &QComboBox::activated, this, [this](int index) {
        storing<CodecChoice> (&AdvancedOptions::codec)(m_codecs.at(index));
    });
    connect(m_crf, &NumberPicker::picked, this,
            storing<NumberPicker::Number>(&AdvancedOptions::crf));
    connect(m_fpsCap, &NumberPicker::picked, this,
            storing<NumberPicker::Number>(&AdvancedOptions::fpsCap));
}

void AdvancedOptionsView::buildAudio()
{
    addLine();
    addRow(u"advanced.audiobitrate", m_audioBitrate, m_audioBitrate);
    addRow(u"advanced.volume", m_volume, m_volume->slider());
    m_grid->addWidget(m_replacementAudio, m_grid->rowCount(), 1);
    connect(m_audioBitrate, &NumberPicker::picked, this,
            storing<NumberPicker::Number>(&AdvancedOptions::audioBitrateKbps));
    connect(m_volume, &VolumeControl::picked, this,
            storing<std::optional<double>>(&AdvancedOptions::volumeDb));
    connect(m_replacementAudio, &ReplacementAudioPicker::picked, this,
            storing<std::optional<QUrl>>(&AdvancedOptions::replacementAudioURL));
}

void AdvancedOptionsView::buildPicture()
{
    m_pictureLine = addLine();
    addWide(m_crop);
    addWide(m_hdr);
    addWide(m_alpha);
    connect(m_crop, &CropPicker::changed, this,
            storing<std::optional<CropSpec>>(&AdvancedOptions::crop));
    connect(m_hdr, &HintedSwitch::turned, this, storing<bool>(&AdvancedOptions::hdrPassthrough));
    connect(m_alpha, &HintedSwitch::turned, this, storing<bool>(&AdvancedOptions::preserveAlpha));
}

void AdvancedOptionsView::buildExtraArgs()
{
    addLine();
    addWide(m_extraArgs);
    connect(m_extraArgs, &QLineEdit::textEdited, this,
            storing<QString>(&AdvancedOptions::extraArgs));
}

TextLabel *AdvancedOptionsView::addRow(const char16_t *key, QWidget *control, QWidget *named)
{
    auto *label = new TextLabel;
    const int row = m_grid->rowCount();
    m_grid->addWidget(label, row, 0);
    m_grid->addWidget(control, row, 1, Qt::AlignLeft);
    m_labels += {key, label, named};
    return label;
}

void AdvancedOptionsView::addWide(QWidget *widget)
{
    m_grid->addWidget(widget, m_grid->rowCount(), 0, 1, 2);
}

QWidget *AdvancedOptionsView::addLine()
{
    auto *line = new HairLine(Qt::Horizontal);
    addWide(line);
    return line;
}

void AdvancedOptionsView::setOptions(const AdvancedOptions &options)
{
    if (options != m_options) {
        m_options = options;
        refreshSoon();
    }
}

void AdvancedOptionsView::setFile(const FileTraits &file)
{
    if (file != m_file) {
        m_file = file;
        refreshSoon();
    }
}

void AdvancedOptionsView::store(const AdvancedOptions &options)
{
    if (options != m_options) {
        setOptions(options);
        Q_EMIT changed(m_options);
    }
}

void AdvancedOptionsView::refresh()
{
    showWords();
    showCodec();
    showNumbers();
    showPicture();
    m_replacementAudio->setURL(m_options.replacementAudioURL);
    m_extraArgs->setShown(m_options.extraArgs);
}

void AdvancedOptionsView::showWords()
{
    // The column is as wide as its widest label, be that row in sight or not.
    int widest = 0;
    for (const Labelled &row : std::as_const(m_labels)) {
        const QString words = t(row.key);
        row.label->setText(words);
        row.named->setAccessibleName(words);
        widest = std::max(widest, row.label->sizeHint().width());
    }
    m_grid->setColumnMinimumWidth(0, widest);
    m_hdr->setWords(t(u"advanced.hdr"), t(u"advanced.hdr.hint"));
    m_alpha->setWords(t(u"advanced.alpha"), t(u"advanced.alpha.hint"));
    m_extraArgs->setWords(t(u"advanced.extraargs"), t(u"advanced.extraargs"));
}

void AdvancedOptionsView::showCodec()
{
    QStringList words;
    for (const CodecChoice codec : m_codecs) {
        words += t(labelKey(codec));
    }
    m_codec->setWords(words);
    // Of a preset that was made with other tools.
    m_codec->setPlaceholderText(t(labelKey(m_options.codec)));
    m_codec->setShown(static_cast<int>(m_codecs.indexOf(m_options.codec)));
}

void AdvancedOptionsView::showNumbers()
{
    const bool isSoftware = m_options.codec == CodecChoice::softwareX264;
    m_crfLabel->setVisible(isSoftware);
    m_crf->setVisible(isSoftware);
    m_crf->setNumber(m_options.crf.value_or(shownCrf));
    m_fpsCap->setNumber(m_options.fpsCap == 0 ? std::nullopt : m_options.fpsCap);
    m_audioBitrate->setNumber(m_options.audioBitrateKbps);
    m_volume->setVolume(m_options.volumeDb);
}

void AdvancedOptionsView::showPicture()
{
    m_crop->setCrop(m_options.crop);
    m_hdr->setOn(m_options.hdrPassthrough);
    m_alpha->setOn(m_options.preserveAlpha);
    m_pictureLine->setVisible(m_file.hasVideo);
    m_crop->setVisible(m_file.hasVideo);
    m_hdr->setVisible(m_file.hasVideo && m_file.isHDR);
    m_alpha->setVisible(m_file.hasVideo && m_file.hasAlpha);
}
