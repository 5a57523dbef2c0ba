#include "CompletionPopupView.h"

CompletionPopupView::CompletionPopupView(QWidget *parent) : QListView(parent)
{
    setUniformItemSizes(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
}

int CompletionPopupView::sizeHintForColumn(int column) const
{
    if (!model())
        return -1;
    ensurePolished();
    const int rows = qMin(model()->rowCount(rootIndex()), measuredRows());
    QStyleOptionViewItem option = viewOptions();
    int width = -1;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = model()->index(row, column, rootIndex());
        width = qMax(width, itemDelegate(index)->sizeHint(option, index).width());
    }
    return width;
}
