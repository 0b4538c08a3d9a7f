// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/CompareAccessible.h"

#include "Views/Components/CompareArea.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace {

class CompareAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit CompareAccessible(CompareArea *area)
        : QAccessibleWidget(area, QAccessible::Slider)
        , m_area(area)
    {
    }

    QVariant currentValue() const override { return m_area->divider(); }
    void setCurrentValue(const QVariant &value) override { m_area->setDivider(value.toDouble()); }
    QVariant minimumValue() const override { return CompareArea::leastDivider; }
    QVariant maximumValue() const override { return CompareArea::mostDivider; }
    QVariant minimumStepSize() const override { return CompareArea::dividerStep; }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

private:
    CompareArea *m_area;
};

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *area = qobject_cast<CompareArea *>(object);
    return area ? new CompareAccessible(area) : nullptr;
}

} // namespace

void installCompareAccessible()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void tellAssistants(CompareArea &area)
{
    QAccessibleValueChangeEvent event(&area, area.divider());
    QAccessible::updateAccessibility(&event);
}
