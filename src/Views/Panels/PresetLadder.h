// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

#include <QList>

class CardButton;
class ElidedLabel;
class TextField;
class TextLabel;

/// The sizes that people are held to, as cards, and one card for a size of one's own.
class PresetLadder : public View
{
    Q_OBJECT

public:
    explicit PresetLadder(const ViewContext &context, QWidget *parent = nullptr);

    /// The target in force, in megabytes; shown without telling anyone. A size that was typed and
    /// is also one of the ladder's lights both cards.
    void setSelectedMB(double megabytes);

Q_SIGNALS:
    /// The person picked or typed another target: above 0, at most 100,000.
    void picked(double megabytes);

protected:
    void refresh() override;

private:
    struct PresetCard {
        CardButton *button;
        ElidedLabel *name;
    };

    PresetCard makePresetCard(std::size_t index);
    CardButton *makeCustomCard();
    void pick(double megabytes);
    void commitCustom();

    QList<PresetCard> m_presets;
    CardButton *m_custom = nullptr;
    TextLabel *m_customTitle = nullptr;
    TextField *m_customField = nullptr;
    double m_selectedMB = 0;
};
