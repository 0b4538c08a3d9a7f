// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

#include <QByteArray>

class CompareArea;
class TextLabel;

/// A still of the film and one of the sample, to be compared by a divider between them.
class PreviewCompareView : public View
{
    Q_OBJECT

public:
    explicit PreviewCompareView(const ViewContext &context, QWidget *parent = nullptr);

    /// Encoded images. If either can't be decoded, the area stays empty.
    void setImages(const QByteArray &beforeData, const QByteArray &afterData);
    CompareArea *area() const { return m_area; }

protected:
    void refresh() override;

private:
    QByteArray m_beforeData;
    QByteArray m_afterData;
    TextLabel *m_before;
    TextLabel *m_after;
    CompareArea *m_area;
};
