#pragma once

#include "AlarmInstance.h"

#include <QHash>
#include <QVariant>
#include <QVector>

#include <memory>
#include <vector>

// One node of the alarm table's tree: the invisible root, a group node, or
// (at the deepest grouping level, or as the root of a flat table) a leaf node
// whose rows are alarms. Internal to the table proxy.
class AlarmsProxyNode
{
public:
    AlarmsProxyNode *parent = nullptr;
    int row = 0;   // position among the parent's groups
    int level = 0; // 0 for the root
    QString key;   // the grouping text shared by the alarms below
    AlarmInstancePtr sample; // an alarm of the group, for ordering and the typed value
    int alarmCount = 0;      // alarms below, all levels
    std::vector<std::unique_ptr<AlarmsProxyNode>> groups;
    QHash<QString, AlarmsProxyNode *> groupsByKey;
    QVector<AlarmInstancePtr> alarms;

    void renumberGroups(int from)
    {
        for (int i = from; i < int(groups.size()); ++i)
            groups[size_t(i)]->row = i;
    }
};
