#include "ViewTopAnchor.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QTreeView>

ViewTopAnchor::ViewTopAnchor(QAbstractItemView *view) : QObject(view), m_view(view)
{
    connect(view->verticalScrollBar(), &QScrollBar::valueChanged, this, &ViewTopAnchor::track);
    if (auto *tree = qobject_cast<QTreeView *>(view)) {
        // Opening or closing a group above changes the row at the top.
        connect(tree, &QTreeView::expanded, this, &ViewTopAnchor::track);
        connect(tree, &QTreeView::collapsed, this, &ViewTopAnchor::track);
    }
    setModel(view->model());
}

void ViewTopAnchor::setModel(QAbstractItemModel *model)
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    m_top = QPersistentModelIndex();
    if (!model)
        return;
    // The top row is taken before a change, not during it: a view may have
    // dropped its row layout by the time the change reaches this object.
    connect(model, &QAbstractItemModel::layoutAboutToBeChanged, this, &ViewTopAnchor::modelChanging);
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, &ViewTopAnchor::modelChanging);
    connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, this, &ViewTopAnchor::modelChanging);
    connect(model, &QAbstractItemModel::rowsAboutToBeMoved, this, &ViewTopAnchor::modelChanging);
    connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &ViewTopAnchor::modelChanging);
    track();
}

void ViewTopAnchor::track()
{
    // While a change is under way the view scrolls on its own (a removed
    // current row, a new layout): that is not the operator's place.
    if (m_restorePending || !m_model || m_view->model() != m_model)
        return;
    const QScrollBar *vertical = m_view->verticalScrollBar();
    m_atTop = vertical->value() == vertical->minimum();
    const QModelIndex top = m_view->indexAt(QPoint(0, 0));
    m_top = top.isValid() ? top.sibling(top.row(), 0) : QModelIndex();
    m_topOffset = top.isValid() ? m_view->visualRect(top).top() : 0;
}

void ViewTopAnchor::modelChanging()
{
    if (m_restorePending)
        return;
    m_restorePending = true;
    QMetaObject::invokeMethod(this, &ViewTopAnchor::restore, Qt::QueuedConnection);
}

void ViewTopAnchor::restore()
{
    m_restorePending = false;
    if (m_atTop && m_view->model() == m_model) {
        QScrollBar *vertical = m_view->verticalScrollBar();
        vertical->setValue(vertical->minimum());
    } else if (m_top.isValid() && m_view->model() == m_model && isShownInView(m_top)) {
        QScrollBar *horizontal = m_view->horizontalScrollBar();
        const int column = horizontal->value();
        m_view->scrollTo(m_top, QAbstractItemView::PositionAtTop);
        if (m_view->verticalScrollMode() == QAbstractItemView::ScrollPerPixel) {
            QScrollBar *vertical = m_view->verticalScrollBar();
            vertical->setValue(vertical->value() - m_topOffset);
        }
        horizontal->setValue(column);
    }
    track();
}

bool ViewTopAnchor::isShownInView(const QModelIndex &index) const
{
    const auto *tree = qobject_cast<const QTreeView *>(m_view);
    if (!tree)
        return true;
    // Scrolling to a row in a collapsed group would open the group.
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent()) {
        if (!tree->isExpanded(parent))
            return false;
    }
    return true;
}
