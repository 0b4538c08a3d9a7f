// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Symbols.h"

#include "Views/Look/Theme.h"

#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <cmath>
#include <unordered_map>

using namespace Qt::StringLiterals;

// The linker leaves out what nothing refers to, so a library's own resources are asked for.
static void embedSymbols()
{
    Q_INIT_RESOURCE(symbols);
}

namespace Look {
namespace {

QString pathOf(const QString &name)
{
    return u":/symbols/"_s + name + u".svg"_s;
}

QByteArray drawing(const QString &name)
{
    if (!hasSymbol(name)) {
        return {};
    }
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap rendered(const QString &name, const QColor &color, QSize deviceSize)
{
    QSvgRenderer renderer(drawing(name).replace("currentColor", color.name().toLatin1()));
    QPixmap pixmap(deviceSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

/// Drawn once a colour and a size: a theme has few of both.
const QPixmap &cached(const QString &name, const QColor &color, QSize deviceSize)
{
    struct Key {
        QString name;
        QRgb color;
        QSize size;
        bool operator==(const Key &) const = default;
    };
    struct Hash {
        std::size_t operator()(const Key &key) const
        {
            return qHashMulti(0, key.name, key.color, key.size.width(), key.size.height());
        }
    };
    static std::unordered_map<Key, QPixmap, Hash> pixmaps;
    const Key key{name, color.rgb(), deviceSize};
    const auto found = pixmaps.find(key);
    if (found != pixmaps.end()) {
        return found->second;
    }
    return pixmaps.emplace(key, rendered(name, color, deviceSize)).first->second;
}

class SymbolEngine : public QIconEngine
{
public:
    /// Menus show what is under the pointer in the mode "active".
    SymbolEngine(QString name, ColorRole color, ColorRole active)
        : m_name(std::move(name))
        , m_color(color)
        , m_active(active)
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, cached(m_name, colorIn(mode), deviceSize(rect.size(), ratio)));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        return cached(m_name, colorIn(mode), size);
    }

    QIconEngine *clone() const override { return new SymbolEngine(*this); }

private:
    static QSize deviceSize(QSize size, qreal ratio) { return (QSizeF(size) * ratio).toSize(); }

    QColor colorIn(QIcon::Mode mode) const
    {
        if (mode == QIcon::Disabled) {
            return color(ColorRole::disabledText);
        }
        return color(mode == QIcon::Active ? m_active : m_color);
    }

    QString m_name;
    ColorRole m_color;
    ColorRole m_active;
};

QIcon iconOf(const QString &name, ColorRole color, ColorRole active)
{
    return hasSymbol(name) ? QIcon(new SymbolEngine(name, color, active)) : QIcon();
}

} // namespace

QIcon symbol(const QString &name, ColorRole color)
{
    return iconOf(name, color, color);
}

QPixmap symbolPixmap(const QString &name, const QColor &color, int side, qreal pixelRatio)
{
    const int deviceSide = static_cast<int>(std::lround(side * pixelRatio));
    QPixmap pixmap = cached(name, color, {deviceSide, deviceSide});
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon menuSymbol(const QString &name)
{
    return iconOf(name, ColorRole::text, ColorRole::onAccent);
}

bool hasSymbol(const QString &name)
{
    static const bool embedded = (embedSymbols(), true);
    Q_UNUSED(embedded);
    return QFile::exists(pathOf(name));
}

} // namespace Look
