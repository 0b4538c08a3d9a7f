// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QComboBox>

#include <optional>

/// One of several choices from a menu. Turning the wheel over it scrolls the panel, not the choice.
class MenuPicker : public QComboBox
{
    Q_OBJECT

public:
    explicit MenuPicker(QWidget *parent = nullptr);

    /// Exchanges the words of the choices and keeps the choice in force; tells nobody.
    void setWords(const QStringList &words);
    /// Shows a choice without telling anyone. What the person picks comes by activated().
    void setShown(int index);

    void showPopup() override;
    /// A width that is fixed isn't reckoned from the choices.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    std::optional<QSize> fixedSize() const;

    /// Null until the menu is first opened.
    QAbstractItemDelegate *m_rows = nullptr;
};
