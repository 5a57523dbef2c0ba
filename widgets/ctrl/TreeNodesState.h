#pragma once

#include "GroupingConfiguration.h"
#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QList>
#include <QMap>
#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <QVariant>

class QTreeView;

// Group values are ordered as QVariant::compare orders them; the operator
// that QMap would use for that is deprecated, not the order itself.
template<>
inline bool qMapLessThanKey<QVariant>(const QVariant &key1, const QVariant &key2)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    return key1 < key2;
    QT_WARNING_POP
}

// Remembers which group nodes of a grouped alarm table the operator opened
// and closed, keyed by the group values along the path from the top, and
// re-applies that to the rebuilt tree after a reset, a new filter or a
// grouping change (keeping the levels the new grouping shares with the old).
class WIDGETS_EXPORT TreeNodesState : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    // The recorded state of one node and, recursively, of its children.
    class WIDGETS_EXPORT SingleNodeState
    {
    public:
        SingleNodeState() = default;
        explicit SingleNodeState(const QVariant &mainValue);

        QVariant getMainValue() const { return m_mainValue; }
        bool isExpanded() const { return m_expanded; }
        const QMap<QVariant, SingleNodeState> &getChildren() const { return m_children; }

        void reset();
        void setForAll(bool expanded);
        // `path` runs from the node up to the top level; `index` points at the
        // element for the child below this node, -1 means this node itself.
        void setExpanded(const QList<QVariant> &path, int index, bool expanded);
        void truncateIncompatibleLevels(int compatibleLevel, int level);
        void restoreState(QTreeView *view, const QModelIndex &index) const;
        void printState(const MsgLoggingProducer *logger, const QString &indent) const;

    private:
        QVariant m_mainValue;
        QMap<QVariant, SingleNodeState> m_children;
        bool m_expanded = false;
    };

    explicit TreeNodesState(const MsgLoggingProducer *logger, QObject *parent = nullptr);

    void setTreeView(QTreeView *view);
    QTreeView *getTreeView() const;
    void reset();
    void expandAll();
    void collapseAll();
    void setGroupingConfig(const GroupingConfiguration &config);
    const GroupingConfiguration &getGroupingConfig() const { return m_grouping; }
    // The deepest grouping level `config` shares with the grouping in force,
    // -1 when not even the top level is the same.
    int findGrooupingCompatibility(const GroupingConfiguration &config) const;
    void restoreState() const;

    const SingleNodeState &getRootState() const { return m_root; }
    void printState() const;

public slots:
    void nodeExpanded(const QModelIndex &index);
    void nodeCollapsed(const QModelIndex &index);

private:
    void nodeExpansionChanged(const QModelIndex &index, bool expanded);

    SingleNodeState m_root;
    GroupingConfiguration m_grouping;
    QPointer<QTreeView> m_treeView;
    bool m_expandAll = false;
    mutable bool m_restoring = false;
};
