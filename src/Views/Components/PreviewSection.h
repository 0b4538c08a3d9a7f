// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Engine/PreviewEngine.h"
#include "Models/VideoFile.h"
#include "Views/View.h"

class Button;
class PreviewCompareView;
class QBoxLayout;
class Spinner;
class TextField;
class TextLabel;

/// Makes and shows two stills of the selected file: how it is, and how it would become.
class PreviewSection : public View
{
    Q_OBJECT

public:
    explicit PreviewSection(const ViewContext &context, QWidget *parent = nullptr);

    /// The selected one.
    void setFile(const VideoFile &file);
    /// What the sample is made with.
    void setRequest(const PreviewEngine::Request &request) { m_request = request; }

    /// Where the sample is taken, in seconds.
    double samplePosition() const { return m_samplePosition; }
    void setSamplePosition(double seconds);

protected:
    void refresh() override;

private:
    QBoxLayout *buildRow();
    void takePosition(const QString &text);
    void generate();
    void showImages();

    VideoFile m_file;
    PreviewEngine::Request m_request;
    double m_samplePosition = 0;
    Button *m_generate;
    TextLabel *m_positionLabel;
    TextField *m_position;
    Spinner *m_spinner;
    TextLabel *m_generating;
    PreviewCompareView *m_compare;
};
