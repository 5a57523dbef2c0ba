#include "TreeNodesState.h"

#include <QAbstractItemModel>
#include <QTreeView>

TreeNodesState::SingleNodeState::SingleNodeState(const QVariant &mainValue) : m_mainValue(mainValue)
{
}

void TreeNodesState::SingleNodeState::reset()
{
    m_children.clear();
    m_expanded = false;
}

void TreeNodesState::SingleNodeState::setForAll(bool expanded)
{
    m_expanded = expanded;
    for (auto it = m_children.begin(); it != m_children.end(); ++it)
        it->setForAll(expanded);
}

void TreeNodesState::SingleNodeState::setExpanded(const QList<QVariant> &path, int index, bool expanded)
{
    if (index < 0) {
        m_expanded = expanded;
        return;
    }
    if (index >= path.size())
        return;
    const QVariant &key = path.at(index);
    auto it = m_children.find(key);
    if (it == m_children.end())
        it = m_children.insert(key, SingleNodeState(key));
    it->setExpanded(path, index - 1, expanded);
}

void TreeNodesState::SingleNodeState::truncateIncompatibleLevels(int compatibleLevel, int level)
{
    if (level > compatibleLevel) {
        m_children.clear();
        return;
    }
    for (auto it = m_children.begin(); it != m_children.end(); ++it)
        it->truncateIncompatibleLevels(compatibleLevel, level + 1);
}

void TreeNodesState::SingleNodeState::restoreState(QTreeView *view, const QModelIndex &index) const
{
    if (index.isValid())
        view->setExpanded(index, m_expanded);
    if (m_children.isEmpty())
        return;
    const QAbstractItemModel *model = view->model();
    const int rows = model->rowCount(index);
    for (int row = 0; row < rows; ++row) {
        const QModelIndex child = model->index(row, 0, index);
        const auto it = m_children.constFind(child.data(Qt::EditRole));
        if (it != m_children.constEnd())
            it->restoreState(view, child);
    }
}

void TreeNodesState::SingleNodeState::printState(const MsgLoggingProducer *logger, const QString &indent) const
{
    ASLOG(logger, MsgLoggerEnums::Warning,
          indent + QStringLiteral("mainValue: ") + m_mainValue.toString() + QStringLiteral(", expanded ")
              + QString::number(m_expanded ? 1 : 0));
    if (!logger || !logger->isLogged(MsgLoggerEnums::Warning))
        return;
    const QString childIndent = indent + QStringLiteral("  ");
    for (const SingleNodeState &child : m_children)
        child.printState(logger, childIndent);
}

TreeNodesState::TreeNodesState(const MsgLoggingProducer *logger, QObject *parent)
    : QObject(parent), MsgLoggingProducer(logger), m_grouping(logger, QString())
{
}

void TreeNodesState::setTreeView(QTreeView *view)
{
    if (m_treeView) {
        disconnect(m_treeView, &QTreeView::collapsed, this, &TreeNodesState::nodeCollapsed);
        disconnect(m_treeView, &QTreeView::expanded, this, &TreeNodesState::nodeExpanded);
    }
    reset();
    m_treeView = view;
    if (m_treeView) {
        connect(m_treeView, &QTreeView::expanded, this, &TreeNodesState::nodeExpanded);
        connect(m_treeView, &QTreeView::collapsed, this, &TreeNodesState::nodeCollapsed);
    }
}

QTreeView *TreeNodesState::getTreeView() const
{
    return m_treeView;
}

void TreeNodesState::reset()
{
    m_root.reset();
    m_expandAll = false;
}

void TreeNodesState::expandAll()
{
    m_expandAll = true;
    m_root.setForAll(true);
}

void TreeNodesState::collapseAll()
{
    m_expandAll = false;
    m_root.setForAll(false);
}

void TreeNodesState::setGroupingConfig(const GroupingConfiguration &config)
{
    m_root.truncateIncompatibleLevels(findGrooupingCompatibility(config), 0);
    m_grouping = config;
}

int TreeNodesState::findGrooupingCompatibility(const GroupingConfiguration &config) const
{
    const QList<QSharedPointer<AlarmsGroupRule>> &wanted = config.getRules();
    const QList<QSharedPointer<AlarmsGroupRule>> &stored = m_grouping.getRules();
    int compatible = -1;
    for (int i = 0; i < wanted.size() && i < stored.size(); ++i) {
        const AlarmsGroupRule *a = wanted.at(i).data();
        const AlarmsGroupRule *b = stored.at(i).data();
        if (!a || !b || a->getKind() != b->getKind() || a->getName() != b->getName())
            break;
        compatible = i;
    }
    return compatible;
}

void TreeNodesState::restoreState() const
{
    if (!m_treeView) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("call to restoreState() without tree view"));
        return;
    }
    if (!m_treeView->model()) {
        ASLOG(this, MsgLoggerEnums::Warning, QStringLiteral("call to restoreState() for tree view without model"));
        return;
    }
    m_restoring = true;
    if (m_expandAll)
        m_treeView->expandAll();
    else
        m_root.restoreState(m_treeView, QModelIndex());
    m_restoring = false;
}

void TreeNodesState::printState() const
{
    m_root.printState(this, QString());
}

void TreeNodesState::nodeExpanded(const QModelIndex &index)
{
    if (!m_restoring)
        nodeExpansionChanged(index, true);
}

void TreeNodesState::nodeCollapsed(const QModelIndex &index)
{
    if (!m_restoring)
        nodeExpansionChanged(index, false);
}

void TreeNodesState::nodeExpansionChanged(const QModelIndex &index, bool expanded)
{
    if (!index.isValid())
        return;
    // From the node up to the top level; the root's invalid index is not part of it.
    QList<QVariant> path;
    for (QModelIndex node = index; node.isValid(); node = node.parent())
        path.append(node.sibling(node.row(), 0).data(Qt::EditRole));
    m_root.setExpanded(path, path.size() - 1, expanded);
}
