// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/JobParams.h"
#include "Views/View.h"

#include <QList>

class CropPicker;
class HintedSwitch;
class MenuPicker;
class NumberPicker;
class QGridLayout;
class ReplacementAudioPicker;
class TextField;
class TextLabel;
class VolumeControl;

/// The options that most actions share, on a card for a panel's "Advanced".
class AdvancedOptionsView : public View
{
    Q_OBJECT

public:
    /// What the options on offer depend on.
    struct FileTraits {
        bool hasVideo = true;
        bool isHDR = false;
        bool hasAlpha = false;

        bool operator==(const FileTraits &) const = default;
    };

    explicit AdvancedOptionsView(const ViewContext &context, QWidget *parent = nullptr);

    /// Tells nobody.
    void setOptions(const AdvancedOptions &options);
    const AdvancedOptions &options() const { return m_options; }
    /// An option that isn't on offer for the file keeps its value.
    void setFile(const FileTraits &file);

Q_SIGNALS:
    /// The person has changed one of them.
    void changed(const AdvancedOptions &options);

protected:
    void refresh() override;

private:
    struct Labelled {
        const char16_t *key;
        TextLabel *label;
        /// What gets the label's words as its accessible name.
        QWidget *named;
    };

    void buildEncoding();
    void buildAudio();
    void buildPicture();
    void buildExtraArgs();
    TextLabel *addRow(const char16_t *key, QWidget *control, QWidget *named);
    void addWide(QWidget *widget);
    QWidget *addLine();

    /// A slot that puts what it is given into that field.
    template <typename Value, typename Field> auto storing(Field AdvancedOptions::*field)
    {
        return [this, field](const Value &value) {
            AdvancedOptions options = m_options;
            options.*field = value;
            store(options);
        };
    }
    void store(const AdvancedOptions &options);

    void showWords();
    void showCodec();
    void showNumbers();
    void showPicture();

    AdvancedOptions m_options;
    FileTraits m_file;
    /// Those that the located tools can make.
    const QList<CodecChoice> m_codecs;
    QList<Labelled> m_labels;

    QGridLayout *m_grid;
    MenuPicker *m_codec;
    TextLabel *m_crfLabel = nullptr;
    NumberPicker *m_crf;
    NumberPicker *m_fpsCap;
    NumberPicker *m_audioBitrate;
    VolumeControl *m_volume;
    ReplacementAudioPicker *m_replacementAudio;
    QWidget *m_pictureLine = nullptr;
    CropPicker *m_crop;
    HintedSwitch *m_hdr;
    HintedSwitch *m_alpha;
    TextField *m_extraArgs;
};
