// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/PreviewSection.h"

#include "Engine/Text.h"
#include "Views/Components/CompareArea.h"
#include "Views/Components/PreviewCompareView.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/Spinner.h"
#include "Views/Controls/TextField.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QLocale>

#include <cmath>

using Look::ColorRole;
using Look::TextSize;
using namespace Qt::StringLiterals;

namespace {

constexpr int positionWidth = 84;
constexpr double middle = 0.5;

/// What a person types as a number: in the locale's way, or with a point. An empty field is the 0
/// that it shows as its prompt.
std::optional<double> typedNumber(const QString &text)
{
    if (text.trimmed().isEmpty()) {
        return 0.0;
    }
    bool isNumber = false;
    const double value = QLocale::system().toDouble(text.trimmed(), &isNumber);
    if (isNumber && std::isfinite(value)) {
        return value;
    }
    return Text::toDouble(text.trimmed());
}

QString numberText(double value)
{
    if (value == 0) {
        return {};
    }
    QLocale plain = QLocale::system();
    plain.setNumberOptions(QLocale::OmitGroupSeparator);
    return plain.toString(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace

PreviewSection::PreviewSection(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_generate(new Button)
    , m_positionLabel(new TextLabel(TextSize::body, ColorRole::secondaryText))
    , m_position(new TextField)
    , m_spinner(new Spinner)
    , m_generating(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_compare(new PreviewCompareView(context))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Space::medium);
    column->addLayout(buildRow());
    column->addWidget(m_compare);
    m_compare->hide();
    connect(m_generate, &QAbstractButton::clicked, this, &PreviewSection::generate);
    connect(m_position, &QLineEdit::textEdited, this, &PreviewSection::takePosition);
    connect(m_position, &QLineEdit::editingFinished, this, [this] {
        if (!typedNumber(m_position->text())) {
            m_position->setShown(numberText(m_samplePosition));
        }
    });
    follow(&AppModel::previewRunningChanged);
    follow(&AppModel::previewImagesChanged);
}

QBoxLayout *PreviewSection::buildRow()
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Look::Space::small);
    m_generate->setSymbol(u"square.split.2x1"_s);
    m_position->setFixedWidth(positionWidth);
    row->addWidget(m_generate);
    row->addSpacing(Look::Space::small);
    row->addWidget(m_positionLabel);
    row->addWidget(m_position);
    row->addSpacing(Look::Space::small);
    row->addWidget(m_spinner);
    row->addWidget(m_generating);
    row->addStretch();
    return row;
}

void PreviewSection::setFile(const VideoFile &file)
{
    if (file != m_file) {
        m_file = file;
        refreshSoon();
    }
}

void PreviewSection::setSamplePosition(double seconds)
{
    if (seconds != m_samplePosition) {
        m_samplePosition = seconds;
        m_position->setShown(numberText(seconds));
    }
}

void PreviewSection::takePosition(const QString &text)
{
    m_samplePosition = typedNumber(text).value_or(m_samplePosition);
}

void PreviewSection::generate()
{
    model().setPreviewSeconds(m_samplePosition);
    model().generatePreview(m_request, m_samplePosition);
}

void PreviewSection::refresh()
{
    const bool isRunning = model().previewRunning();
    m_generate->setWords(t(u"preview.generate"));
    m_generate->setEnabled(!isRunning && m_file.videoCodec && m_file.width);
    m_positionLabel->setText(t(u"preview.position"));
    m_position->setWords(t(u"preview.position"), u"0"_s);
    m_generating->setText(t(u"preview.generating"));
    m_spinner->setVisible(isRunning);
    m_generating->setVisible(isRunning);
    showImages();
}

void PreviewSection::showImages()
{
    const std::optional<AppModel::PreviewImages> &images = model().previewImages();
    if (images) {
        m_compare->setImages(images->before, images->after);
    } else {
        // The next pair is looked at anew.
        m_compare->area()->setDivider(middle);
    }
    m_compare->setVisible(images.has_value());
}
