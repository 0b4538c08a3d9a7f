// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractButton>
#include <QWidget>

class DisclosureHeader;

/// A heading that shows and hides what is under it.
class Disclosure : public QWidget
{
    Q_OBJECT

public:
    /// Takes the content, which starts hidden.
    explicit Disclosure(QWidget *content, QWidget *parent = nullptr);

    void setWords(const QString &words);
    void setSymbol(const QString &name);
    bool isOpen() const;
    void setOpen(bool open);
    QAbstractButton *header() const;

private:
    DisclosureHeader *m_header;
    QWidget *m_content;
};

/// The heading of a disclosure.
class DisclosureHeader : public QAbstractButton
{
    Q_OBJECT

public:
    explicit DisclosureHeader(QWidget *parent);
    void setSymbol(const QString &name);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    int wordsLeft() const;

    QString m_symbol;
};
