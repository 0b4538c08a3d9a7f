// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "LayoutCheck.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Controls/Sheet.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSet>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostStops = 500;
// Rings and line heights may reach over each other by so much without being seen.
constexpr int slack = 3;

QString describe(const QWidget *widget)
{
    const QString words = widget->accessibleName().isEmpty() ? widget->property("text").toString()
                                                             : widget->accessibleName();
    return u"%1 \"%2\" %3x%4 at %5,%6 in %7"_s
        .arg(QString::fromLatin1(widget->metaObject()->className()), words)
        .arg(widget->width())
        .arg(widget->height())
        .arg(widget->x())
        .arg(widget->y())
        .arg(widget->parentWidget()
                 ? QString::fromLatin1(widget->parentWidget()->metaObject()->className())
                 : QString());
}

/// Where the person can work: the sheet that lies over the window, else all of it.
const QWidget *top(const QWidget *window)
{
    const QList<Sheet *> sheets = window->findChildren<Sheet *>();
    const auto shown = std::find_if(sheets.rbegin(), sheets.rend(),
                                    [](const Sheet *sheet) { return sheet->isVisible(); });
    return shown == sheets.rend() ? window : *shown;
}

QList<QWidget *> visibleWidgets(const QWidget *window)
{
    QList<QWidget *> widgets;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget->isVisible() && widget->window() == window->window()) {
            widgets += widget;
        }
    }
    return widgets;
}

bool isClipped(const QLabel *label)
{
    if (label->text().isEmpty()) {
        return false;
    }
    const QRect place = label->contentsRect();
    if (label->wordWrap()) {
        return label->heightForWidth(label->width()) > label->height() + 1;
    }
    const QSize needed = label->fontMetrics().size(0, label->text());
    return needed.width() > place.width() + 1 || needed.height() > place.height() + 1;
}

bool isClipped(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        return isClipped(label);
    }
    if (qobject_cast<const Button *>(widget)) {
        return widget->sizeHint().width() > widget->width() + 1;
    }
    if (qobject_cast<const SegmentedPicker *>(widget)) {
        return widget->minimumSizeHint().width() > widget->width() + 1;
    }
    if (const auto *line = qobject_cast<const ElidedLabel *>(widget)) {
        return line->minimumSizeHint().width() > line->width() + 1 ||
               line->sizeHint().height() > line->height() + 1;
    }
    return false;
}

bool isStop(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled() &&
           (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
}

} // namespace

QStringList LayoutCheck::clippedTexts(const QWidget *window)
{
    QStringList findings;
    for (const QWidget *widget : visibleWidgets(top(window))) {
        if (isClipped(widget)) {
            findings += describe(widget);
        }
    }
    return findings;
}

QStringList LayoutCheck::overlaps(const QWidget *window)
{
    QStringList findings;
    const QWidget *const root = top(window);
    QList<const QWidget *> parents{root};
    for (const QWidget *widget : visibleWidgets(root)) {
        parents += widget;
    }
    for (const QWidget *parent : parents) {
        const auto parts = parent->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
        for (qsizetype i = 0; i < parts.size(); ++i) {
            for (qsizetype j = i + 1; j < parts.size(); ++j) {
                const QWidget *one = parts.at(i);
                const QWidget *other = parts.at(j);
                const bool lie = one->isVisible() && other->isVisible() && !one->isWindow() &&
                                 !other->isWindow() && !qobject_cast<const Sheet *>(one) &&
                                 !qobject_cast<const Sheet *>(other);
                const QSize common = one->geometry().intersected(other->geometry()).size();
                if (lie && common.width() > slack && common.height() > slack) {
                    findings += describe(one) + u" and "_s + describe(other);
                }
            }
        }
    }
    return findings;
}

QStringList LayoutCheck::namelessControls(const QWidget *window)
{
    QStringList findings;
    for (const QWidget *widget : visibleWidgets(window)) {
        if (widget->focusPolicy() != Qt::NoFocus && !qobject_cast<const QScrollBar *>(widget) &&
            !qobject_cast<const QLabel *>(widget) && widget->accessibleName().isEmpty()) {
            findings += describe(widget);
        }
    }
    return findings;
}

QStringList LayoutCheck::unreachableControls(QWidget *window)
{
    QSet<const QWidget *> reached;
    for (int i = 0; i < mostStops; ++i) {
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        const QWidget *here = QApplication::focusWidget();
        if (here && reached.contains(here)) {
            break;
        }
        reached.insert(here);
    }
    QStringList findings;
    for (const QWidget *widget : visibleWidgets(top(window))) {
        if (isStop(widget) && !reached.contains(widget)) {
            findings += describe(widget);
        }
    }
    return findings;
}
