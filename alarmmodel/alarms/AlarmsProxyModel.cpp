#include "AlarmsProxyModel.h"

#include "AlarmScreenConfiguration.h"
#include "AlarmsModel.h"
#include "AlarmsProxyNode.h"
#include "SystemConnectionsControl.h"
#include "SystemRegistry.h"

#include <QSet>

#include <algorithm>

namespace {

QList<ColumnDefinition> defaultColumns()
{
    QList<ColumnDefinition> columns;
    for (const AlarmProp &prop : AlarmProp::all())
        columns.append(ColumnDefinition(Constants::ValueSourceAlarm, prop.getName(), prop.getName()));
    return columns;
}

} // namespace

AlarmsProxyModel::AlarmsProxyModel(const MsgLoggingProducer *logger, QObject *parent)
    : QAbstractItemModel(parent), MsgLoggingProducer(logger), m_grouping(logger, QString()),
      m_root(new Node)
{
    m_columns = defaultColumns();
    updateColumnProps();
    SystemRegistry *registry = SystemRegistry::instance();
    connect(registry, &SystemRegistry::systemListChanged, this, [this] { emit systemListChanged(); });
    connect(registry, &SystemRegistry::systemConnectionsChanged, this, [this] { emit connectedSystemsChanged(); });
}

AlarmsProxyModel::~AlarmsProxyModel()
{
    if (m_model)
        m_model->removeConsumer(this);
}

void AlarmsProxyModel::setAlarmsModel(const QSharedPointer<AlarmsModel> &model)
{
    if (model == m_model)
        return;
    if (m_model) {
        m_model->removeConsumer(this);
        disconnect(m_model->getConnectionControl(), nullptr, this, nullptr);
    }
    m_model = model;
    if (m_model) {
        m_model->addConsumer(this);
        connect(m_model->getConnectionControl(), &SystemConnectionsControl::connectedSystemsChanged, this,
                &AlarmsProxyModel::connectedSystemsChanged);
    }
    refilter();
    emit connectedSystemsChanged();
}

void AlarmsProxyModel::setConfiguration(const AlarmScreenConfiguration &config)
{
    if (!config.getColumns().isEmpty())
        setColumns(config.getColumns());
    setGrouping(config.getGroupingConfig());
}

void AlarmsProxyModel::setColumns(const QList<ColumnDefinition> &columns)
{
    beginResetModel();
    m_columns = columns;
    updateColumnProps();
    endResetModel();
    // The quick filter looks at the shown columns.
    setQuickFilter(m_matcher.getQuickFilter());
}

void AlarmsProxyModel::updateColumnProps()
{
    m_columnProps.clear();
    for (const ColumnDefinition &column : qAsConst(m_columns)) {
        const AlarmProp prop = AlarmProp::byName(column.getId());
        if (!prop.isValid()) {
            ASLOG(this, MsgLoggerEnums::Warning,
                  QStringLiteral("column '%1' names no alarm property; it stays empty").arg(column.getId()));
        }
        m_columnProps.append(prop.getIndex());
    }
}

void AlarmsProxyModel::setGrouping(const GroupingConfiguration &grouping)
{
    QVector<int> props;
    for (const auto &rule : grouping.getRules()) {
        const AlarmProp prop = rule ? AlarmProp::byName(rule->getName()) : AlarmProp();
        if (!prop.isValid()) {
            ASLOG(this, MsgLoggerEnums::Warning,
                  QStringLiteral("grouping rule '%1' names no alarm property; the level is left out")
                      .arg(rule ? rule->getName() : QString()));
            continue;
        }
        props.append(prop.getIndex());
    }
    m_grouping = grouping;
    if (props == m_groupProps)
        return;
    // The alarms shown stay the same; only the tree is built anew.
    const QVector<AlarmInstancePtr> accepted = acceptedAlarms();
    beginResetModel();
    m_groupProps = props;
    rebuild(accepted);
    endResetModel();
}

void AlarmsProxyModel::setFilter(const SourceAndFilter &filter)
{
    m_matcher.setFilter(filter);
    refilter();
}

void AlarmsProxyModel::setQuickFilter(const QuickCellFilter &filter)
{
    QVector<int> props;
    for (int prop : qAsConst(m_columnProps)) {
        if (prop >= 0 && !props.contains(prop))
            props.append(prop);
    }
    m_matcher.setQuickFilter(filter, props);
    refilter();
}

QSharedPointer<AlarmInstance> AlarmsProxyModel::getAlarmAtRow(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this)
        return {};
    const Node *node = nodeOf(index);
    if (!isLeaf(node) || index.row() >= node->alarms.size())
        return {};
    return node->alarms.at(index.row());
}

QSharedPointer<AlarmInstance> AlarmsProxyModel::getAlarmByIdent(const AlarmIdent &ident) const
{
    return m_model ? m_model->getAlarm(ident) : AlarmInstancePtr();
}

QVector<AlarmProp> AlarmsProxyModel::getAlarmProperties() const
{
    return AlarmProp::all();
}

QVector<ColumnDefinition> AlarmsProxyModel::getColumnsDefinition(bool shownColumns) const
{
    return QVector<ColumnDefinition>::fromList(shownColumns ? m_columns : defaultColumns());
}

QModelIndex AlarmsProxyModel::findAlarm(const AlarmIdent &ident, int column) const
{
    const AlarmInstancePtr alarm = getAlarmByIdent(ident);
    const Node *leaf = alarm ? findLeaf(*alarm) : nullptr;
    const int row = leaf ? findInLeaf(leaf, alarm.data()) : -1;
    if (row < 0)
        return QModelIndex();
    return createIndex(row, column, const_cast<Node *>(leaf));
}

int AlarmsProxyModel::getVisibleAlarmCount() const
{
    return m_root->alarmCount;
}

SystemConnectionsControl *AlarmsProxyModel::getConnectionControl() const
{
    return m_model ? m_model->getConnectionControl() : nullptr;
}

QStringList AlarmsProxyModel::getConnectedSystems() const
{
    return m_model ? m_model->getConnectionControl()->getConnectedSystems() : QStringList();
}

QMap<unsigned int, SystemInfo> AlarmsProxyModel::getSystems() const
{
    return SystemRegistry::instance()->getSystems();
}

// ---- item model

bool AlarmsProxyModel::isLeaf(const Node *node) const
{
    return node->level == m_groupProps.size();
}

AlarmsProxyModel::Node *AlarmsProxyModel::nodeOf(const QModelIndex &index) const
{
    return static_cast<Node *>(index.internalPointer());
}

QModelIndex AlarmsProxyModel::indexOfGroup(const Node *node, int column) const
{
    if (!node || !node->parent)
        return QModelIndex();
    return createIndex(node->row, column, node->parent);
}

QModelIndex AlarmsProxyModel::index(int row, int column, const QModelIndex &parent) const
{
    if (row < 0 || column < 0 || column >= m_columns.size())
        return QModelIndex();
    const Node *node = m_root.get();
    if (parent.isValid()) {
        if (parent.model() != this || parent.column() != 0)
            return QModelIndex();
        const Node *holder = nodeOf(parent);
        if (isLeaf(holder))
            return QModelIndex(); // alarms have no children
        node = holder->groups[size_t(parent.row())].get();
    }
    const int rows = isLeaf(node) ? node->alarms.size() : int(node->groups.size());
    return row < rows ? createIndex(row, column, const_cast<Node *>(node)) : QModelIndex();
}

QModelIndex AlarmsProxyModel::parent(const QModelIndex &child) const
{
    if (!child.isValid())
        return QModelIndex();
    return indexOfGroup(nodeOf(child));
}

int AlarmsProxyModel::rowCount(const QModelIndex &parent) const
{
    if (!parent.isValid())
        return isLeaf(m_root.get()) ? m_root->alarms.size() : int(m_root->groups.size());
    if (parent.column() != 0)
        return 0;
    const Node *holder = nodeOf(parent);
    if (isLeaf(holder))
        return 0;
    const Node *group = holder->groups[size_t(parent.row())].get();
    return isLeaf(group) ? group->alarms.size() : int(group->groups.size());
}

int AlarmsProxyModel::columnCount(const QModelIndex &) const
{
    return m_columns.size();
}

QVariant AlarmsProxyModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole))
        return QVariant();
    const Node *holder = nodeOf(index);
    const int prop = m_columnProps.value(index.column(), AlarmProp::Invalid);
    if (isLeaf(holder)) {
        const AlarmInstance &alarm = *holder->alarms.at(index.row());
        return alarm.getProperty(prop, role == Qt::EditRole ? Qt::EditRole : Qt::DisplayRole);
    }
    if (index.column() != 0)
        return QVariant();
    const Node *group = holder->groups[size_t(index.row())].get();
    if (role == Qt::EditRole)
        return group->sample->getProperty(m_groupProps.at(group->level - 1), Qt::EditRole);
    return tr("%1 (%2)").arg(group->key).arg(group->alarmCount);
}

QVariant AlarmsProxyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return QAbstractItemModel::headerData(section, orientation, role);
    if (role == Qt::DisplayRole)
        return m_columns.at(section).getTitle();
    if (role == Qt::EditRole)
        return m_columns.at(section).getId();
    return QVariant();
}

Qt::ItemFlags AlarmsProxyModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (isLeaf(nodeOf(index)))
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

void AlarmsProxyModel::sort(int column, Qt::SortOrder order)
{
    const int prop = m_columnProps.value(column, AlarmProp::Invalid);
    if (prop < 0)
        return;
    if (prop == m_sortProp && order == m_sortOrder)
        return;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    // Remember what each persistent index shows, re-sort, and point the
    // indexes at the same alarms again.
    const QModelIndexList before = persistentIndexList();
    QVector<const AlarmInstance *> shown;
    shown.reserve(before.size());
    for (const QModelIndex &index : before) {
        const Node *holder = nodeOf(index);
        shown.append(isLeaf(holder) ? holder->alarms.at(index.row()).data() : nullptr);
    }
    m_sortProp = prop;
    m_sortOrder = order;
    std::vector<Node *> pending{m_root.get()};
    while (!pending.empty()) {
        Node *node = pending.back();
        pending.pop_back();
        if (isLeaf(node)) {
            std::sort(node->alarms.begin(), node->alarms.end(),
                      [this](const AlarmInstancePtr &a, const AlarmInstancePtr &b) { return lessThan(*a, *b); });
        }
        for (auto &group : node->groups)
            pending.push_back(group.get());
    }
    QModelIndexList after;
    after.reserve(before.size());
    for (int i = 0; i < before.size(); ++i) {
        Node *holder = nodeOf(before.at(i));
        after.append(shown.at(i) ? createIndex(findInLeaf(holder, shown.at(i)), before.at(i).column(), holder)
                                 : before.at(i));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

// ---- ordering and lookup

bool AlarmsProxyModel::lessThan(const AlarmInstance &a, const AlarmInstance &b) const
{
    int c = AlarmInstance::compare(a, b, m_sortProp);
    if (c == 0) {
        const AlarmIdent &x = a.getIdent();
        const AlarmIdent &y = b.getIdent();
        c = x < y ? -1 : (y < x ? 1 : 0);
    }
    return m_sortOrder == Qt::AscendingOrder ? c < 0 : c > 0;
}

bool AlarmsProxyModel::groupLess(const Node &a, const Node &b) const
{
    const int c = AlarmInstance::compare(*a.sample, *b.sample, m_groupProps.at(a.level - 1));
    return c != 0 ? c < 0 : a.key < b.key;
}

int AlarmsProxyModel::findInLeaf(const Node *leaf, const AlarmInstance *alarm) const
{
    const auto it = std::lower_bound(leaf->alarms.cbegin(), leaf->alarms.cend(), alarm,
                                     [this](const AlarmInstancePtr &a, const AlarmInstance *b) {
                                         return lessThan(*a, *b);
                                     });
    return it != leaf->alarms.cend() && it->data() == alarm ? int(it - leaf->alarms.cbegin()) : -1;
}

AlarmsProxyModel::Node *AlarmsProxyModel::findLeaf(const AlarmInstance &alarm) const
{
    Node *node = m_root.get();
    for (int prop : m_groupProps) {
        node = node->groupsByKey.value(alarm.getText(prop));
        if (!node)
            return nullptr;
    }
    return node;
}

// ---- building

QVector<AlarmInstancePtr> AlarmsProxyModel::acceptedAlarms() const
{
    QVector<AlarmInstancePtr> result;
    result.reserve(m_root->alarmCount);
    std::vector<const Node *> pending{m_root.get()};
    while (!pending.empty()) {
        const Node *node = pending.back();
        pending.pop_back();
        result += node->alarms;
        for (const auto &group : node->groups)
            pending.push_back(group.get());
    }
    return result;
}

void AlarmsProxyModel::refilter()
{
    QVector<AlarmInstancePtr> accepted;
    if (m_model) {
        const QVector<AlarmInstancePtr> &all = m_model->getAlarms();
        if (m_matcher.isEmpty()) {
            accepted = all;
        } else {
            accepted.reserve(all.size());
            for (const AlarmInstancePtr &alarm : all) {
                if (m_matcher.matches(*alarm))
                    accepted.append(alarm);
            }
        }
    }
    beginResetModel();
    rebuild(accepted);
    endResetModel();
}

void AlarmsProxyModel::rebuild(const QVector<AlarmInstancePtr> &accepted)
{
    m_root.reset(new Node);
    m_root->alarmCount = accepted.size();
    std::vector<Node *> leaves;
    if (m_groupProps.isEmpty()) {
        m_root->alarms = accepted;
        leaves.push_back(m_root.get());
    } else {
        for (const AlarmInstancePtr &alarm : accepted) {
            Node *node = m_root.get();
            for (int prop : qAsConst(m_groupProps)) {
                const QString &key = alarm->getText(prop);
                Node *&child = node->groupsByKey[key];
                if (!child) {
                    node->groups.emplace_back(new Node);
                    child = node->groups.back().get();
                    child->parent = node;
                    child->level = node->level + 1;
                    child->key = key;
                    child->sample = alarm;
                    if (child->level == m_groupProps.size())
                        leaves.push_back(child);
                }
                node = child;
                ++node->alarmCount;
            }
            node->alarms.append(alarm);
        }
        std::vector<Node *> pending{m_root.get()};
        while (!pending.empty()) {
            Node *node = pending.back();
            pending.pop_back();
            std::sort(node->groups.begin(), node->groups.end(),
                      [this](const std::unique_ptr<Node> &a, const std::unique_ptr<Node> &b) {
                          return groupLess(*a, *b);
                      });
            node->renumberGroups(0);
            for (auto &group : node->groups) {
                if (!isLeaf(group.get()))
                    pending.push_back(group.get());
            }
        }
    }
    const auto less = [this](const AlarmInstancePtr &a, const AlarmInstancePtr &b) { return lessThan(*a, *b); };
    for (Node *leaf : leaves) {
        if (!std::is_sorted(leaf->alarms.begin(), leaf->alarms.end(), less))
            std::sort(leaf->alarms.begin(), leaf->alarms.end(), less);
    }
}

// ---- live changes

void AlarmsProxyModel::alarmsReset(const AlarmsModel &)
{
    refilter();
}

void AlarmsProxyModel::modelDestroyed(const AlarmsModel &)
{
    // Only reachable while we do not hold the model ourselves (it cannot die
    // otherwise); forget the alarms it owned.
    m_model.reset();
    beginResetModel();
    rebuild({});
    endResetModel();
}

void AlarmsProxyModel::alarmsChanged(const AlarmsModel &, const AlarmChanges &changes)
{
    if (changes.size() > m_incrementalLimit) {
        applyBurstAsReset(changes);
        return;
    }
    for (const AlarmInstancePtr &alarm : changes.removed)
        removeAlarm(alarm.data());
    for (const auto &change : changes.updated) {
        const bool accepted = m_matcher.matches(*change.second);
        if (accepted && replaceInPlace(change.first, change.second))
            continue;
        removeAlarm(change.first.data());
        if (accepted)
            insertAlarm(change.second);
    }
    for (const AlarmInstancePtr &alarm : changes.added) {
        if (m_matcher.matches(*alarm))
            insertAlarm(alarm);
    }
}

void AlarmsProxyModel::applyBurstAsReset(const AlarmChanges &changes)
{
    QSet<const AlarmInstance *> gone;
    gone.reserve(changes.removed.size() + changes.updated.size());
    for (const AlarmInstancePtr &alarm : changes.removed)
        gone.insert(alarm.data());
    QVector<AlarmInstancePtr> fresh;
    for (const auto &change : changes.updated) {
        gone.insert(change.first.data());
        if (m_matcher.matches(*change.second))
            fresh.append(change.second);
    }
    for (const AlarmInstancePtr &alarm : changes.added) {
        if (m_matcher.matches(*alarm))
            fresh.append(alarm);
    }
    // The alarms that stay keep their filter result; they come out of the
    // tree leaf by leaf, already in order, and the new ones are merged in.
    QVector<AlarmInstancePtr> accepted = acceptedAlarms();
    accepted.erase(std::remove_if(accepted.begin(), accepted.end(),
                                  [&gone](const AlarmInstancePtr &a) { return gone.contains(a.data()); }),
                   accepted.end());
    const auto less = [this](const AlarmInstancePtr &a, const AlarmInstancePtr &b) { return lessThan(*a, *b); };
    std::sort(fresh.begin(), fresh.end(), less);
    if (m_groupProps.isEmpty()) {
        const int middle = accepted.size();
        accepted += fresh;
        std::inplace_merge(accepted.begin(), accepted.begin() + middle, accepted.end(), less);
    } else {
        accepted += fresh;
    }
    beginResetModel();
    rebuild(accepted);
    endResetModel();
}

bool AlarmsProxyModel::replaceInPlace(const AlarmInstancePtr &before, const AlarmInstancePtr &after)
{
    Node *leaf = findLeaf(*before);
    if (!leaf || leaf != findLeaf(*after))
        return false;
    const int row = findInLeaf(leaf, before.data());
    if (row < 0)
        return false;
    // The new instance may stay where the old one is when its neighbours
    // still enclose it.
    if ((row > 0 && !lessThan(*leaf->alarms.at(row - 1), *after))
        || (row + 1 < leaf->alarms.size() && !lessThan(*after, *leaf->alarms.at(row + 1))))
        return false;
    leaf->alarms[row] = after;
    for (Node *node = leaf; node->parent; node = node->parent) {
        if (node->sample == before)
            node->sample = after;
    }
    emit dataChanged(createIndex(row, 0, leaf), createIndex(row, m_columns.size() - 1, leaf));
    return true;
}

void AlarmsProxyModel::insertAlarm(const AlarmInstancePtr &alarm)
{
    Node *node = m_root.get();
    for (int prop : qAsConst(m_groupProps)) {
        const QString &key = alarm->getText(prop);
        Node *child = node->groupsByKey.value(key);
        if (!child) {
            auto created = std::make_unique<Node>();
            created->parent = node;
            created->level = node->level + 1;
            created->key = key;
            created->sample = alarm;
            const auto pos = std::lower_bound(node->groups.begin(), node->groups.end(), created,
                                              [this](const std::unique_ptr<Node> &a, const std::unique_ptr<Node> &b) {
                                                  return groupLess(*a, *b);
                                              });
            const int row = int(pos - node->groups.begin());
            beginInsertRows(indexOfGroup(node), row, row);
            child = created.get();
            node->groups.insert(pos, std::move(created));
            node->groupsByKey.insert(key, child);
            node->renumberGroups(row);
            endInsertRows();
        }
        node = child;
    }
    const auto pos = std::upper_bound(node->alarms.begin(), node->alarms.end(), alarm,
                                      [this](const AlarmInstancePtr &a, const AlarmInstancePtr &b) {
                                          return lessThan(*a, *b);
                                      });
    const int row = int(pos - node->alarms.begin());
    beginInsertRows(indexOfGroup(node), row, row);
    node->alarms.insert(row, alarm);
    for (Node *n = node; n; n = n->parent)
        ++n->alarmCount;
    endInsertRows();
    announceCounts(node);
}

bool AlarmsProxyModel::removeAlarm(const AlarmInstance *alarm)
{
    Node *leaf = findLeaf(*alarm);
    const int row = leaf ? findInLeaf(leaf, alarm) : -1;
    if (row < 0)
        return false;
    beginRemoveRows(indexOfGroup(leaf), row, row);
    leaf->alarms.remove(row);
    for (Node *n = leaf; n; n = n->parent)
        --n->alarmCount;
    endRemoveRows();
    // Groups left without alarms disappear, from the leaf up.
    Node *node = leaf;
    while (node->parent && node->alarmCount == 0) {
        Node *parentNode = node->parent;
        const int groupRow = node->row;
        beginRemoveRows(indexOfGroup(parentNode), groupRow, groupRow);
        parentNode->groupsByKey.remove(node->key);
        parentNode->groups.erase(parentNode->groups.begin() + groupRow);
        parentNode->renumberGroups(groupRow);
        endRemoveRows();
        node = parentNode;
    }
    announceCounts(node);
    return true;
}

void AlarmsProxyModel::announceCounts(Node *node)
{
    // Group texts show the number of alarms below them.
    for (; node && node->parent; node = node->parent) {
        const QModelIndex index = indexOfGroup(node);
        emit dataChanged(index, index, {Qt::DisplayRole});
    }
}
