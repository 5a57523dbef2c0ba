#pragma once

#include "alarmmodel_export.h"

#include <QModelIndex>
#include <QVector>

class QAbstractItemModel;

// The rows below one parent of an item model that a walk over the model
// (a CSV export) visits: all of them, or a chosen subset. The walk goes by
// the model, not by a view, so rows of collapsed groups and nested children
// are reached as well.
class ALARMMODEL_EXPORT ModelRowSelection
{
public:
    ModelRowSelection() = default;
    // Every row below `parent`; rows a lazy model has not fetched yet are fetched.
    explicit ModelRowSelection(const QAbstractItemModel *model, const QModelIndex &parent = QModelIndex());
    // The given rows below `parent`, in ascending order, each once; rows
    // outside the model are dropped.
    ModelRowSelection(const QAbstractItemModel *model, const QModelIndex &parent, QVector<int> rows);

    const QAbstractItemModel *getModel() const { return m_model; }
    QModelIndex getParent() const { return m_parent; }
    const QVector<int> &getRows() const { return m_rows; }
    int count() const { return m_rows.size(); }
    bool isEmpty() const { return m_rows.isEmpty(); }

    int rowAt(int i) const { return m_rows.at(i); }
    QModelIndex indexAt(int i, int column = 0) const;
    bool hasChildren(int i) const;
    // All rows below the i-th row.
    ModelRowSelection childSelection(int i) const;

    // Column 0 indexes of every row below `parent`, depth first, a parent
    // before its children.
    static QVector<QModelIndex> allRowsDepthFirst(const QAbstractItemModel *model,
                                                  const QModelIndex &parent = QModelIndex());

private:
    const QAbstractItemModel *m_model = nullptr;
    QPersistentModelIndex m_parent;
    QVector<int> m_rows;
};
