// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/L10n.h"

#include "App/L10nRows.h"

#include <QRegularExpression>

#include <optional>

using namespace Qt::StringLiterals;

namespace L10n {
namespace {

// Hands out the arguments of one template.
class ArgumentReader
{
public:
    explicit ArgumentReader(const QStringList &arguments) : m_arguments(arguments) {}

    /// The argument of that number, counted from 1; the next one when the number is empty. Absent
    /// when there is none.
    std::optional<QString> argument(QStringView number)
    {
        if (number.isEmpty()) {
            return at(m_next++);
        }
        // A number too long to be read counts as 0, which no argument has.
        return at(number.toInt() - 1);
    }

private:
    std::optional<QString> at(qsizetype index) const
    {
        if (index < 0 || index >= m_arguments.size()) {
            return std::nullopt;
        }
        return m_arguments.at(index);
    }

    const QStringList &m_arguments;
    qsizetype m_next = 0;
};

} // namespace

std::vector<Row> allRows()
{
    std::vector<Row> rows;
    for (const auto group : {startRows(), panelRows(), queueRows(), detailRows(), editRows()}) {
        rows.insert(rows.end(), group.begin(), group.end());
    }
    return rows;
}

Dictionary dictionary(std::span<const Row> rows, QStringView Row::*column)
{
    Dictionary texts;
    texts.reserve(static_cast<qsizetype>(rows.size()));
    for (const Row &row : rows) {
        const auto key = QString::fromLatin1(row.key);
        if (texts.contains(key)) {
            qFatal("The key %s has two texts.", row.key);
        }
        texts.insert(key, (row.*column).toString());
    }
    return texts;
}

QString lookUp(const QString &key, const Dictionary &preferred, const Dictionary &fallback)
{
    for (const Dictionary *texts : {&preferred, &fallback}) {
        if (const auto found = texts->constFind(key); found != texts->cend()) {
            return *found;
        }
    }
    return key;
}

const Dictionary &english()
{
    static const Dictionary texts = dictionary(allRows(), &Row::english);
    return texts;
}

const Dictionary &chinese()
{
    static const Dictionary texts = dictionary(allRows(), &Row::chinese);
    return texts;
}

const Dictionary &tables(AppLanguage language)
{
    switch (language) {
    case AppLanguage::english:
        return english();
    case AppLanguage::simplifiedChinese:
        return chinese();
    }
    Q_UNREACHABLE();
}

QString t(const QString &key, AppLanguage language)
{
    return lookUp(key, tables(language), english());
}

QString format(const QString &pattern, const QStringList &arguments)
{
    static const QRegularExpression placeholder(u"%(?:%|(?:([0-9]+)\\$)?@)"_s);
    ArgumentReader reader(arguments);
    QString text;
    qsizetype copied = 0;
    for (auto matches = placeholder.globalMatch(pattern); matches.hasNext();) {
        const auto match = matches.next();
        const QStringView whole = match.capturedView();
        const QStringView number = match.capturedView(1);
        text += QStringView(pattern).sliced(copied, match.capturedStart() - copied);
        text += whole == u"%%" ? u"%"_s : reader.argument(number).value_or(whole.toString());
        copied = match.capturedEnd();
    }
    text += QStringView(pattern).sliced(copied);
    return text;
}

} // namespace L10n
