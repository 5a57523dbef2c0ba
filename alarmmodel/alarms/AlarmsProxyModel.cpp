#include "AlarmsProxyModel.h"

#include "AlarmScreenConfiguration.h"
#include "AlarmsModel.h"
#include "AlarmsProxyNode.h"
#include "SystemConnectionsControl.h"
#include "SystemRegistry.h"

#include <QSet>

#include <algorithm>
#include <functional>

// What a burst or a filter change does to the alarms of one leaf.
struct AlarmsProxyModel::LeafChange {
    QVector<AlarmInstancePtr> gone;   // alarms that go, if the leaf shows them
    QVector<AlarmInstancePtr> fresh;  // alarms that come, in any order
    bool replaceAll = false;          // fresh is the leaf's whole new content
    bool inOrder = false;             // fresh is in the table's order already
};

// What the persistent indexes showed before the rows changed: the alarm by
// identity, a group by its keys from the top.
struct AlarmsProxyModel::PersistentSnapshot {
    struct Row {
        bool isAlarm = false;
        AlarmIdent alarm;
        QStringList groupKeys;
    };
    QModelIndexList from;
    QVector<int> target; // per index: its entry in rows
    QVector<Row> rows;
};

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
    resetRows();
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
            sortRows(node->alarms);
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

void AlarmsProxyModel::sortRows(QVector<AlarmInstancePtr> &alarms) const
{
    // Comparing through the alarms reads two scattered allocations per
    // comparison, which at a million rows costs more than the comparing: the
    // keys are gathered into one array first, and the rows moved once. A key
    // is kept to 24 bytes: at a million rows a larger array goes back to the
    // system after each sort and is faulted in again, page by page, on the
    // next. The system, the last tie-breaker, is read from the alarm only
    // for equal serials.
    struct Key {
        union {
            qint64 number;
            double real;
            const QChar *text;
        };
        qint64 serial;
        int textSize;
        int row;
    };
    static_assert(sizeof(Key) == 24, "sort keys stay small");
    const int prop = m_sortProp;
    const bool isText = prop == AlarmProp::System || prop == AlarmProp::Dpe || prop == AlarmProp::Alias ||
                        prop == AlarmProp::Description || prop == AlarmProp::AlarmText ||
                        prop == AlarmProp::AlarmClass || prop < 0 || prop >= AlarmProp::Count;
    const bool isReal = prop == AlarmProp::Value;
    std::vector<Key> keys;
    keys.reserve(size_t(alarms.size()));
    for (int row = 0; row < alarms.size(); ++row) {
        const AlarmInstance &alarm = *alarms.at(row);
        const AlarmInstance::Data &d = alarm.getData();
        Key key;
        key.number = 0;
        key.serial = d.ident.getSerial();
        key.textSize = 0;
        key.row = row;
        switch (prop) {
        case AlarmProp::Priority: key.number = d.priority; break;
        case AlarmProp::State: key.number = d.state; break;
        case AlarmProp::Direction: key.number = d.direction; break;
        case AlarmProp::Time: key.number = d.timeMs; break;
        case AlarmProp::AckTime: key.number = d.ackTimeMs; break;
        case AlarmProp::Value: key.real = d.value; break;
        case AlarmProp::Acknowledgeable: key.number = d.acknowledgeable; break;
        case AlarmProp::Connection: key.number = d.connected; break;
        case AlarmProp::Acknowledged: key.number = alarm.isAcknowledged(); break;
        default: {
            const QString &text = alarm.getText(prop);
            key.text = text.constData();
            key.textSize = text.size();
            break;
        }
        }
        keys.push_back(key);
    }
    const bool ascending = m_sortOrder == Qt::AscendingOrder;
    std::sort(keys.begin(), keys.end(), [&alarms, isText, isReal, ascending](const Key &a, const Key &b) {
        int c;
        if (isText)
            // Shared texts (the same alarm text, class or system) are equal
            // without looking at their characters.
            c = a.text == b.text && a.textSize == b.textSize
                    ? 0
                    : QStringView(a.text, a.textSize).compare(QStringView(b.text, b.textSize));
        else if (isReal)
            c = a.real < b.real ? -1 : (b.real < a.real ? 1 : 0);
        else
            c = a.number < b.number ? -1 : (b.number < a.number ? 1 : 0);
        if (c == 0 && a.serial != b.serial)
            c = a.serial < b.serial ? -1 : 1;
        if (c == 0) {
            const QString &x = alarms.at(a.row)->getIdent().getSystem();
            const QString &y = alarms.at(b.row)->getIdent().getSystem();
            c = x < y ? -1 : (y < x ? 1 : 0);
        }
        return ascending ? c < 0 : c > 0;
    });
    QVector<AlarmInstancePtr> sorted;
    sorted.reserve(alarms.size());
    for (const Key &key : keys)
        sorted.append(std::move(alarms[key.row]));
    alarms = std::move(sorted);
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

QVector<AlarmInstancePtr> AlarmsProxyModel::filteredAlarms() const
{
    if (!m_model)
        return {};
    const QVector<AlarmInstancePtr> &all = m_model->getAlarms();
    if (m_matcher.isEmpty())
        return all;
    QVector<AlarmInstancePtr> accepted;
    accepted.reserve(all.size());
    for (const AlarmInstancePtr &alarm : all) {
        if (m_matcher.matches(*alarm))
            accepted.append(alarm);
    }
    return accepted;
}

void AlarmsProxyModel::resetRows()
{
    const QVector<AlarmInstancePtr> accepted = filteredAlarms();
    beginResetModel();
    rebuild(accepted);
    endResetModel();
}

void AlarmsProxyModel::refilter()
{
    // Every leaf is refilled from the accepted alarms; a leaf that gets none
    // is emptied and its group goes. Alarms of groups not shown so far open
    // new groups.
    QHash<Node *, LeafChange> changes;
    QVector<AlarmInstancePtr> newcomers;
    if (m_model && m_root->alarmCount == m_model->count()) {
        // Every alarm is shown (the first filter after none, as a rule): the
        // leaves keep those of their rows that pass, in the order they are
        // in, and need no sorting.
        for (Node *leaf : leaves()) {
            LeafChange &change = changes[leaf];
            change.replaceAll = true;
            change.inOrder = true;
            if (m_matcher.isEmpty()) {
                change.fresh = leaf->alarms;
                continue;
            }
            // The rows are read in the order their alarms lie in memory, so
            // that the processor's prefetching keeps up: newest first, the
            // usual order, is the reverse of the order they arrived and were
            // allocated in.
            const QVector<AlarmInstancePtr> &rows = leaf->alarms;
            const bool backwards =
                rows.size() > 1 && std::less<const AlarmInstance *>()(rows.last().data(), rows.first().data());
            change.fresh.reserve(rows.size());
            for (int i = 0; i < rows.size(); ++i) {
                const AlarmInstancePtr &alarm = rows.at(backwards ? rows.size() - 1 - i : i);
                if (m_matcher.matches(*alarm))
                    change.fresh.append(alarm);
            }
            if (backwards)
                std::reverse(change.fresh.begin(), change.fresh.end());
        }
    } else if (m_groupProps.isEmpty()) {
        const QVector<AlarmInstancePtr> accepted = filteredAlarms();
        LeafChange &change = changes[m_root.get()];
        change.replaceAll = true;
        change.fresh = accepted;
    } else {
        for (Node *leaf : leaves())
            changes[leaf].replaceAll = true;
        for (const AlarmInstancePtr &alarm : filteredAlarms()) {
            if (Node *leaf = findLeaf(*alarm))
                changes[leaf].fresh.append(alarm);
            else
                newcomers.append(alarm);
        }
    }
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const PersistentSnapshot snapshot = snapshotPersistent();
    mergeIntoLeaves(changes);
    restorePersistent(snapshot);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    insertNewGroups(newcomers);
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
            sortRows(leaf->alarms);
    }
}

// ---- live changes

void AlarmsProxyModel::alarmsReset(const AlarmsModel &)
{
    // The whole content is new: nothing of the old place can be kept.
    resetRows();
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
    QVector<AlarmInstancePtr> gone = changes.removed;
    QVector<AlarmInstancePtr> fresh;
    bool rowByRow = changes.size() <= m_incrementalLimit;
    bool movesShownAlarm = false;
    for (const auto &change : changes.updated) {
        const bool accepted = m_matcher.matches(*change.second);
        // In place first, while the neighbours are the ones the check saw.
        if (rowByRow && accepted && replaceInPlace(change.first, change.second))
            continue;
        gone.append(change.first);
        if (accepted) {
            fresh.append(change.second);
            // As a removal and an insertion the alarm would lose its
            // selection: only a layout change lets it keep its place.
            movesShownAlarm = movesShownAlarm || (rowByRow && isShown(change.first.data()));
        }
    }
    for (const AlarmInstancePtr &alarm : changes.added) {
        if (m_matcher.matches(*alarm))
            fresh.append(alarm);
    }
    if (rowByRow && !movesShownAlarm) {
        for (const AlarmInstancePtr &alarm : qAsConst(gone))
            removeAlarm(alarm.data());
        for (const AlarmInstancePtr &alarm : qAsConst(fresh))
            insertAlarm(alarm);
        return;
    }
    applyBurstAsLayoutChange(gone, fresh);
}

void AlarmsProxyModel::applyBurstAsLayoutChange(const QVector<AlarmInstancePtr> &gone,
                                                const QVector<AlarmInstancePtr> &fresh)
{
    // Rows are looked up before anything moves; fresh alarms of groups that
    // exist are merged into them, the others open new groups afterwards.
    QHash<Node *, LeafChange> changes;
    for (const AlarmInstancePtr &alarm : gone) {
        if (Node *leaf = findLeaf(*alarm))
            changes[leaf].gone.append(alarm);
    }
    QVector<AlarmInstancePtr> newcomers;
    for (const AlarmInstancePtr &alarm : fresh) {
        if (Node *leaf = findLeaf(*alarm))
            changes[leaf].fresh.append(alarm);
        else
            newcomers.append(alarm);
    }
    if (!changes.isEmpty()) {
        emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
        const PersistentSnapshot snapshot = snapshotPersistent();
        mergeIntoLeaves(changes);
        restorePersistent(snapshot);
        emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    }
    insertNewGroups(newcomers);
}

void AlarmsProxyModel::mergeIntoLeaves(QHash<Node *, LeafChange> &changes)
{
    const auto less = [this](const AlarmInstancePtr &a, const AlarmInstancePtr &b) { return lessThan(*a, *b); };
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        Node *leaf = it.key();
        LeafChange &change = it.value();
        const int before = leaf->alarms.size();
        if (!change.inOrder && !std::is_sorted(change.fresh.cbegin(), change.fresh.cend(), less))
            sortRows(change.fresh);
        if (change.replaceAll) {
            leaf->alarms = change.fresh;
        } else {
            // The rows that stay are in order already: the sorted changes are
            // found among them by galloping, and the rows in between move
            // over as they are, without looking at their alarms.
            std::sort(change.gone.begin(), change.gone.end(), less);
            QVector<int> goneRows;
            int from = 0;
            for (const AlarmInstancePtr &alarm : qAsConst(change.gone)) {
                const int row = gallop(leaf->alarms, from, *alarm, false);
                if (row < leaf->alarms.size() && leaf->alarms.at(row) == alarm) {
                    goneRows.append(row);
                    from = row + 1;
                }
            }
            QVector<AlarmInstancePtr> old = std::move(leaf->alarms);
            AlarmInstancePtr *rows = old.data();
            QVector<AlarmInstancePtr> merged;
            merged.reserve(old.size() - goneRows.size() + change.fresh.size());
            auto nextGone = goneRows.cbegin();
            int kept = 0;
            const auto keepUpTo = [&](int end) {
                for (; kept < end; ++kept) {
                    if (nextGone != goneRows.cend() && *nextGone == kept)
                        ++nextGone;
                    else
                        merged.append(std::move(rows[kept]));
                }
            };
            for (const AlarmInstancePtr &alarm : qAsConst(change.fresh)) {
                keepUpTo(gallop(old, kept, *alarm, true));
                merged.append(alarm);
            }
            keepUpTo(old.size());
            leaf->alarms = std::move(merged);
        }
        const int delta = leaf->alarms.size() - before;
        for (Node *node = leaf; node; node = node->parent) {
            node->alarmCount += delta;
            // Every alarm below a group shares its key: any of them serves.
            if (node->parent && !leaf->alarms.isEmpty())
                node->sample = leaf->alarms.first();
        }
    }
    // Groups left without alarms go, each with everything below it.
    QSet<Node *> empty;
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        for (Node *node = it.key(); node->parent && node->alarmCount == 0 && !empty.contains(node);
             node = node->parent)
            empty.insert(node);
    }
    QSet<Node *> holders;
    for (Node *node : qAsConst(empty)) {
        if (!empty.contains(node->parent))
            holders.insert(node->parent);
    }
    for (Node *holder : qAsConst(holders)) {
        for (const auto &group : holder->groups) {
            if (empty.contains(group.get()))
                holder->groupsByKey.remove(group->key);
        }
        holder->groups.erase(std::remove_if(holder->groups.begin(), holder->groups.end(),
                                            [&empty](const std::unique_ptr<Node> &group) {
                                                return empty.contains(group.get());
                                            }),
                             holder->groups.end());
        holder->renumberGroups(0);
    }
}

void AlarmsProxyModel::insertNewGroups(QVector<AlarmInstancePtr> alarms)
{
    if (alarms.isEmpty())
        return;
    sortRows(alarms);
    // The new groups are built apart, below stand-ins of the groups they
    // hang from, and then inserted in runs of neighbouring rows.
    QHash<Node *, Node *> standIns;
    std::vector<std::unique_ptr<Node>> standInStore;
    for (const AlarmInstancePtr &alarm : qAsConst(alarms)) {
        Node *holder = m_root.get();
        int level = 0;
        while (Node *child = holder->groupsByKey.value(alarm->getText(m_groupProps.at(level)))) {
            holder = child;
            ++level;
        }
        Node *&standIn = standIns[holder];
        if (!standIn) {
            standInStore.emplace_back(new Node);
            standIn = standInStore.back().get();
            standIn->level = holder->level;
        }
        Node *node = standIn;
        for (; level < m_groupProps.size(); ++level) {
            const QString &key = alarm->getText(m_groupProps.at(level));
            Node *&child = node->groupsByKey[key];
            if (!child) {
                node->groups.emplace_back(new Node);
                child = node->groups.back().get();
                child->parent = node == standIn ? holder : node;
                child->level = level + 1;
                child->key = key;
                child->sample = alarm;
            }
            node = child;
            ++node->alarmCount;
        }
        node->alarms.append(alarm);
    }
    const auto groupOrder = [this](const std::unique_ptr<Node> &a, const std::unique_ptr<Node> &b) {
        return groupLess(*a, *b);
    };
    for (auto it = standIns.cbegin(); it != standIns.cend(); ++it) {
        Node *holder = it.key();
        Node *standIn = it.value();
        std::vector<Node *> pending{standIn};
        while (!pending.empty()) {
            Node *node = pending.back();
            pending.pop_back();
            std::sort(node->groups.begin(), node->groups.end(), groupOrder);
            node->renumberGroups(0);
            for (auto &group : node->groups) {
                if (!isLeaf(group.get()))
                    pending.push_back(group.get());
            }
        }
        auto next = standIn->groups.begin();
        while (next != standIn->groups.end()) {
            const auto pos = std::lower_bound(holder->groups.begin(), holder->groups.end(), *next, groupOrder);
            // The run ends where an existing group comes between.
            auto runEnd = next + 1;
            while (runEnd != standIn->groups.end() && (pos == holder->groups.end() || groupLess(**runEnd, **pos)))
                ++runEnd;
            const int row = int(pos - holder->groups.begin());
            const int count = int(runEnd - next);
            int added = 0;
            beginInsertRows(indexOfGroup(holder), row, row + count - 1);
            for (auto group = next; group != runEnd; ++group) {
                added += (*group)->alarmCount;
                holder->groupsByKey.insert((*group)->key, group->get());
            }
            holder->groups.insert(holder->groups.begin() + row, std::make_move_iterator(next),
                                  std::make_move_iterator(runEnd));
            holder->renumberGroups(row);
            for (Node *node = holder; node; node = node->parent)
                node->alarmCount += added;
            endInsertRows();
            next = runEnd;
        }
        announceCounts(holder);
    }
}

int AlarmsProxyModel::gallop(const QVector<AlarmInstancePtr> &rows, int from, const AlarmInstance &alarm,
                             bool after) const
{
    // The first row at or after `from` that is not before the alarm (or,
    // with `after`, that comes after it), probing 1, 2, 4, ... rows ahead:
    // a burst's changes spread over a large leaf cost a few looks each.
    const auto before = [this, after](const AlarmInstancePtr &row, const AlarmInstance &a) {
        return after ? !lessThan(a, *row) : lessThan(*row, a);
    };
    int low = from;
    int high = rows.size();
    for (int step = 1; low + step < rows.size(); step *= 2) {
        if (!before(rows.at(low + step), alarm)) {
            high = low + step;
            break;
        }
        low += step;
    }
    return int(std::partition_point(rows.cbegin() + low, rows.cbegin() + high,
                                    [&](const AlarmInstancePtr &row) { return before(row, alarm); })
               - rows.cbegin());
}

bool AlarmsProxyModel::isShown(const AlarmInstance *alarm) const
{
    const Node *leaf = findLeaf(*alarm);
    return leaf && findInLeaf(leaf, alarm) >= 0;
}

QVector<AlarmsProxyModel::Node *> AlarmsProxyModel::leaves() const
{
    QVector<Node *> result;
    std::vector<Node *> pending{m_root.get()};
    while (!pending.empty()) {
        Node *node = pending.back();
        pending.pop_back();
        if (isLeaf(node))
            result.append(node);
        for (const auto &group : node->groups)
            pending.push_back(group.get());
    }
    return result;
}

AlarmsProxyModel::PersistentSnapshot AlarmsProxyModel::snapshotPersistent() const
{
    // Only the persistent indexes that exist are looked at, once per row.
    PersistentSnapshot snapshot;
    snapshot.from = persistentIndexList();
    snapshot.target.reserve(snapshot.from.size());
    QHash<QPair<const Node *, int>, int> seen;
    for (const QModelIndex &index : qAsConst(snapshot.from)) {
        const Node *holder = nodeOf(index);
        const QPair<const Node *, int> key(holder, index.row());
        auto it = seen.constFind(key);
        if (it == seen.constEnd()) {
            PersistentSnapshot::Row row;
            if (isLeaf(holder)) {
                row.isAlarm = true;
                row.alarm = holder->alarms.at(index.row())->getIdent();
            } else {
                for (const Node *node = holder->groups[size_t(index.row())].get(); node->parent; node = node->parent)
                    row.groupKeys.prepend(node->key);
            }
            it = seen.insert(key, snapshot.rows.size());
            snapshot.rows.append(row);
        }
        snapshot.target.append(*it);
    }
    return snapshot;
}

void AlarmsProxyModel::restorePersistent(const PersistentSnapshot &snapshot)
{
    QVector<QPair<Node *, int>> found;
    found.reserve(snapshot.rows.size());
    for (const PersistentSnapshot::Row &row : snapshot.rows) {
        Node *holder = nullptr;
        int position = -1;
        if (row.isAlarm) {
            // By identity: an update replaced the instance the index showed.
            const AlarmInstancePtr alarm = getAlarmByIdent(row.alarm);
            holder = alarm ? findLeaf(*alarm) : nullptr;
            position = holder ? findInLeaf(holder, alarm.data()) : -1;
        } else {
            Node *node = m_root.get();
            for (const QString &key : row.groupKeys) {
                node = node->groupsByKey.value(key);
                if (!node)
                    break;
            }
            if (node) {
                holder = node->parent;
                position = node->row;
            }
        }
        found.append({holder, position});
    }
    QModelIndexList to;
    to.reserve(snapshot.from.size());
    for (int i = 0; i < snapshot.from.size(); ++i) {
        const QPair<Node *, int> &place = found.at(snapshot.target.at(i));
        to.append(place.second >= 0 ? createIndex(place.second, snapshot.from.at(i).column(), place.first)
                                    : QModelIndex());
    }
    changePersistentIndexList(snapshot.from, to);
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
