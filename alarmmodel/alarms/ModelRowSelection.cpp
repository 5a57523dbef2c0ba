#include "ModelRowSelection.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <numeric>

namespace {

int fetchedRowCount(const QAbstractItemModel *model, const QModelIndex &parent)
{
    auto *mutableModel = const_cast<QAbstractItemModel *>(model);
    while (mutableModel->canFetchMore(parent))
        mutableModel->fetchMore(parent);
    return model->rowCount(parent);
}

} // namespace

ModelRowSelection::ModelRowSelection(const QAbstractItemModel *model, const QModelIndex &parent)
    : m_model(model), m_parent(parent)
{
    if (!model)
        return;
    const int rows = fetchedRowCount(model, parent);
    m_rows.resize(rows);
    std::iota(m_rows.begin(), m_rows.end(), 0);
}

ModelRowSelection::ModelRowSelection(const QAbstractItemModel *model, const QModelIndex &parent,
                                     QVector<int> rows)
    : m_model(model), m_parent(parent)
{
    if (!model)
        return;
    const int total = fetchedRowCount(model, parent);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    rows.erase(std::remove_if(rows.begin(), rows.end(),
                              [total](int row) { return row < 0 || row >= total; }),
               rows.end());
    m_rows = rows;
}

QModelIndex ModelRowSelection::indexAt(int i, int column) const
{
    if (!m_model || i < 0 || i >= m_rows.size())
        return QModelIndex();
    return m_model->index(m_rows.at(i), column, m_parent);
}

bool ModelRowSelection::hasChildren(int i) const
{
    const QModelIndex index = indexAt(i);
    return index.isValid() && m_model->hasChildren(index);
}

ModelRowSelection ModelRowSelection::childSelection(int i) const
{
    const QModelIndex index = indexAt(i);
    return index.isValid() ? ModelRowSelection(m_model, index) : ModelRowSelection();
}

QVector<QModelIndex> ModelRowSelection::allRowsDepthFirst(const QAbstractItemModel *model,
                                                          const QModelIndex &parent)
{
    QVector<QModelIndex> result;
    if (!model)
        return result;
    const ModelRowSelection rows(model, parent);
    for (int i = 0; i < rows.count(); ++i) {
        const QModelIndex index = rows.indexAt(i);
        result.append(index);
        if (model->hasChildren(index))
            result += allRowsDepthFirst(model, index);
    }
    return result;
}
