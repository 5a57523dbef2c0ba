#pragma once

// Alarms and filters for the tests of the alarm model and of its views.

#include "AlarmInstance.h"
#include "AlarmsProxyModel.h"
#include "FilterRuleContainer.h"
#include "FilterRuleSet.h"
#include "SourceAndFilter.h"
#include "ValueFilterFixed.h"
#include "ValueFilterNumbers.h"
#include "ValueFilterStringPattern.h"

#include <QAbstractItemModel>
#include <QStringList>

namespace AlarmTestFactory {

// JSON written with single quotes, to keep the test tables readable.
inline QByteArray json(const char *text)
{
    return QByteArray(text).replace('\'', '"');
}

inline AlarmInstancePtr makeAlarm(const QString &system, qint64 serial, int priority, const QString &text,
                                  qint64 timeMs, AlarmInstance::State state = AlarmInstance::CameUnacknowledged)
{
    AlarmInstance::Data data;
    data.ident = AlarmIdent(system, serial);
    data.dpe = QStringLiteral("%1:dp%2.alarm").arg(system).arg(serial);
    data.alias = QStringLiteral("alias%1").arg(serial);
    data.description = QStringLiteral("description %1").arg(serial);
    data.alarmText = text;
    data.alarmClass = priority >= 100 ? QStringLiteral("alert") : QStringLiteral("warning");
    data.timeMs = timeMs;
    data.priority = priority;
    data.state = state;
    data.value = double(serial) / 2;
    return QSharedPointer<AlarmInstance>::create(data);
}

// A copy of `alarm` with other values.
inline AlarmInstancePtr changed(const AlarmInstancePtr &alarm, int priority, AlarmInstance::State state)
{
    AlarmInstance::Data data = alarm->getData();
    data.priority = priority;
    data.state = state;
    return QSharedPointer<AlarmInstance>::create(data);
}

inline QSharedPointer<ValueFilter> patternFilter(const QString &property, const QString &pattern)
{
    auto filter = QSharedPointer<ValueFilterStringPattern>::create(WildcardConfig(), property,
                                                                   Constants::ValueSourceAlarm, false);
    filter->setFilterText(pattern);
    return filter;
}

inline QSharedPointer<ValueFilter> numberFilter(const QString &property, const QString &rules)
{
    auto filter = QSharedPointer<ValueFilterNumbers>::create(WildcardConfig(), property,
                                                             Constants::ValueSourceAlarm, false);
    filter->setFilterText(rules);
    return filter;
}

inline QSharedPointer<ValueFilterFixed> fixedFilter(const QString &property, const QString &kind,
                                                    const QVariant &value = QVariant(), bool checked = false,
                                                    Constants::ValueSource source = Constants::ValueSourceAlarm)
{
    return QSharedPointer<ValueFilterFixed>::create(WildcardConfig(), property, source, false, kind, value, checked);
}

inline FilterRuleSet ruleSet(bool include, const QList<QSharedPointer<ValueFilter>> &filters)
{
    FilterRuleSet set(WildcardConfig(), include, false);
    for (const auto &filter : filters)
        set.addFilter(filter);
    return set;
}

inline SourceAndFilter sourceFilter(const QList<FilterRuleSet> &sets, bool matchCase = false)
{
    SourceAndFilter result;
    result.setFilterContainer(QSharedPointer<FilterRuleContainer>::create(WildcardConfig(), sets, matchCase));
    return result;
}

// Every row of a model, depth first, as "<indent><column texts joined by |>".
inline QStringList dump(const QAbstractItemModel &model, const QModelIndex &parent = QModelIndex(), int depth = 0)
{
    QStringList lines;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(parent); ++column)
            cells << model.index(row, column, parent).data().toString();
        lines << QString(depth * 2, QLatin1Char(' ')) + cells.join(QLatin1Char('|'));
        lines += dump(model, model.index(row, 0, parent), depth + 1);
    }
    return lines;
}

// Groups by the alarm properties, in this order.
inline GroupingConfiguration grouping(const QStringList &properties)
{
    GroupingConfiguration config(nullptr, QStringLiteral("test"));
    for (const QString &property : properties)
        config.addRule(QSharedPointer<AlarmsGroupRule>::create(Constants::ValueSourceAlarm, property));
    return config;
}

// The column of the table that shows the property `id`, or -1.
inline int columnOf(const AlarmsProxyModel &proxy, const QString &id)
{
    const auto columns = proxy.getColumnsDefinition(true);
    for (int i = 0; i < columns.size(); ++i) {
        if (columns.at(i).getId() == id)
            return i;
    }
    return -1;
}

// What a table built from scratch over `model` shows.
inline QStringList freshDump(const QSharedPointer<AlarmsModel> &model, const GroupingConfiguration &grouping,
                             const SourceAndFilter &filter = SourceAndFilter(),
                             const QuickCellFilter &quick = QuickCellFilter())
{
    AlarmsProxyModel reference;
    reference.setAlarmsModel(model);
    reference.setGrouping(grouping);
    reference.setFilter(filter);
    reference.setQuickFilter(quick);
    return dump(reference);
}

} // namespace AlarmTestFactory
