// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/WarningList.h"

#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int symbolSide = 14;

/// Of one line in the faces that these words take; Chinese ones are higher than others.
int lineHeight(const QFontMetrics &metrics, const QString &words)
{
    return metrics.boundingRect(QRect(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX), 0, words).height();
}

} // namespace

WarningList::WarningList(const ViewContext &context, QWidget *parent) : View(context, parent)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Space::small);
}

void WarningList::setWarnings(const QList<EstimateWarning> &warnings)
{
    if (warnings != m_warnings) {
        m_warnings = warnings;
        refreshSoon();
    }
}

void WarningList::refresh()
{
    while (m_rows.size() < m_warnings.size()) {
        m_rows += addRow();
    }
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const bool isUsed = i < m_warnings.size();
        if (isUsed) {
            show(m_rows.at(i), message(m_warnings.at(i)));
        }
        m_rows.at(i).whole->setVisible(isUsed);
    }
}

WarningList::Row WarningList::addRow()
{
    const Row row{
        new QWidget,
        new SymbolView(u"exclamationmark.triangle.fill"_s, symbolSide, Look::ColorRole::orange),
        (new TextLabel)->wrapping()};
    auto *parts = new QHBoxLayout(row.whole);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->setSpacing(Look::Space::small);
    parts->addWidget(row.symbol, 0, Qt::AlignTop);
    parts->addWidget(row.words, 1);
    layout()->addWidget(row.whole);
    return row;
}

void WarningList::show(const Row &row, const QString &message)
{
    if (message != row.words->text()) {
        row.words->setText(message);
        // The symbol stands in the middle of the first line.
        row.symbol->setFixedHeight(lineHeight(row.words->fontMetrics(), message));
    }
}

/// Without arguments a text is shown as it stands, placeholders and all.
QString WarningList::message(const EstimateWarning &warning) const
{
    return warning.args.isEmpty() ? t(warning.key) : tf(warning.key, warning.args);
}
