#pragma once

#include "AlarmMatcher.h"
#include "AlarmProp.h"
#include "AlarmsModelConsumer.h"
#include "ColumnDefinition.h"
#include "GroupingConfiguration.h"
#include "MsgLoggingProducer.h"
#include "SystemInfo.h"
#include "alarmmodel_export.h"

#include <QAbstractItemModel>
#include <QHash>
#include <QMap>
#include <QSharedPointer>
#include <QVector>

#include <memory>

class AlarmsModel;
class AlarmsProxyNode;
class AlarmScreenConfiguration;
class SystemConnectionsControl;

// The alarm table as the operator sees it: the alarms of the alarm model that
// pass the structured filter and the quick filter, sorted, either as a flat
// list or as a tree of group nodes (one level per grouping rule). A group
// node is a row without alarm; its column 0 edit value is the group's value,
// its display text the value and the number of alarms below it.
//
// The operator keeps their place: filter changes, sort changes and live
// bursts never reset the table. Rows that stay keep their persistent indexes
// (selection, current row, opened groups), found again by alarm identity and
// group keys. A small burst is applied as row insertions and removals; a
// larger one, a burst that moves a shown alarm, and a filter change are
// merged into the existing groups as one layout change, and groups that did
// not exist before arrive afterwards as row insertions. Only the alarms a
// burst touched are run through the filters again. A new source (the model's
// whole content replaced), new columns and a new grouping reset the table.
class ALARMMODEL_EXPORT AlarmsProxyModel : public QAbstractItemModel,
                                           public AlarmsModelConsumer,
                                           public MsgLoggingProducer
{
    Q_OBJECT
public:
    explicit AlarmsProxyModel(const MsgLoggingProducer *logger = nullptr, QObject *parent = nullptr);
    ~AlarmsProxyModel() override;

    void setAlarmsModel(const QSharedPointer<AlarmsModel> &model);
    QSharedPointer<AlarmsModel> getAlarmsModel() const { return m_model; }

    // Columns and grouping of a screen configuration.
    void setConfiguration(const AlarmScreenConfiguration &config);
    // A column whose id names no alarm property stays empty (and is logged).
    void setColumns(const QList<ColumnDefinition> &columns);
    void setGrouping(const GroupingConfiguration &grouping);
    const GroupingConfiguration &getGrouping() const { return m_grouping; }
    void setFilter(const SourceAndFilter &filter);
    const SourceAndFilter &getFilter() const { return m_matcher.getFilter(); }
    void setQuickFilter(const QuickCellFilter &filter);
    const QuickCellFilter &getQuickFilter() const { return m_matcher.getQuickFilter(); }
    const AlarmMatcher &getMatcher() const { return m_matcher; }
    // Bursts that change more alarms than this are merged as a layout change
    // instead of row by row.
    void setIncrementalBurstLimit(int limit) { m_incrementalLimit = limit; }

    // The alarm of a row; null for a group node or an invalid index.
    QSharedPointer<AlarmInstance> getAlarmAtRow(const QModelIndex &index) const;
    QSharedPointer<AlarmInstance> getAlarmByIdent(const AlarmIdent &ident) const;
    QVector<AlarmProp> getAlarmProperties() const;
    // true: the table's columns, by column number; false: one definition per
    // alarm property, whether shown or not.
    QVector<ColumnDefinition> getColumnsDefinition(bool shownColumns) const;
    // The index of the row showing the alarm, if it is shown.
    QModelIndex findAlarm(const AlarmIdent &ident, int column = 0) const;
    int getVisibleAlarmCount() const;
    int getGroupingDepth() const { return m_groupProps.size(); }

    // Connection state of the systems the alarms come from.
    SystemConnectionsControl *getConnectionControl() const;
    QStringList getConnectedSystems() const;
    // The systems of the installation (the platform's registry), by number;
    // "systemListChanged()" follows changes of the list, and
    // "connectedSystemsChanged()" changes of the platform's or the alarm
    // connections.
    QMap<unsigned int, SystemInfo> getSystems() const;

    // QAbstractItemModel
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    // AlarmsModelConsumer
    void alarmsReset(const AlarmsModel &model) override;
    void alarmsChanged(const AlarmsModel &model, const AlarmChanges &changes) override;
    void modelDestroyed(const AlarmsModel &model) override;

signals:
    void connectedSystemsChanged();
    void systemListChanged();

private:
    using Node = AlarmsProxyNode;
    struct LeafChange;
    struct PersistentSnapshot;

    bool lessThan(const AlarmInstance &a, const AlarmInstance &b) const;
    // Sorts rows in the order of lessThan().
    void sortRows(QVector<AlarmInstancePtr> &alarms) const;
    bool groupLess(const Node &a, const Node &b) const;
    bool isLeaf(const Node *node) const;
    Node *nodeOf(const QModelIndex &index) const;
    QModelIndex indexOfGroup(const Node *node, int column = 0) const;
    int findInLeaf(const Node *leaf, const AlarmInstance *alarm) const;
    Node *findLeaf(const AlarmInstance &alarm) const;

    QVector<AlarmInstancePtr> filteredAlarms() const;
    void resetRows();
    void refilter();
    void rebuild(const QVector<AlarmInstancePtr> &accepted);
    QVector<AlarmInstancePtr> acceptedAlarms() const;
    QVector<Node *> leaves() const;
    bool isShown(const AlarmInstance *alarm) const;
    int gallop(const QVector<AlarmInstancePtr> &rows, int from, const AlarmInstance &alarm, bool after) const;
    void applyBurstAsLayoutChange(const QVector<AlarmInstancePtr> &gone, const QVector<AlarmInstancePtr> &fresh);
    void mergeIntoLeaves(QHash<Node *, LeafChange> &changes);
    void insertNewGroups(QVector<AlarmInstancePtr> alarms);
    PersistentSnapshot snapshotPersistent() const;
    void restorePersistent(const PersistentSnapshot &snapshot);
    void insertAlarm(const AlarmInstancePtr &alarm);
    bool removeAlarm(const AlarmInstance *alarm);
    bool replaceInPlace(const AlarmInstancePtr &before, const AlarmInstancePtr &after);
    void announceCounts(Node *node);
    void updateColumnProps();

    QSharedPointer<AlarmsModel> m_model;
    QList<ColumnDefinition> m_columns;
    QVector<int> m_columnProps;
    GroupingConfiguration m_grouping;
    QVector<int> m_groupProps;
    AlarmMatcher m_matcher;
    int m_sortProp = AlarmProp::Time;
    Qt::SortOrder m_sortOrder = Qt::DescendingOrder;
    int m_incrementalLimit = 100;
    std::unique_ptr<Node> m_root;
};
