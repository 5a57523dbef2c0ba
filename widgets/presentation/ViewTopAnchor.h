#pragma once

#include "widgets_export.h"

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

class QAbstractItemModel;
class QAbstractItemView;

// Keeps the row at the top of an item view in place while the view's model
// changes its rows (a burst of live alarms, a filter or sort change). Views
// keep their scroll position as a number of rows or pixels, so rows coming,
// going or moving above would carry the operator's place away.
//
// The top row is followed through a persistent index and brought back to the
// top once the model has finished, one event loop turn later however many
// changes came in between. A top row that left the model, or that now sits
// in a collapsed group, leaves the scroll position alone. A reset forgets it.
// A view scrolled to its very top stays there: an operator watching the top
// of the table wants to see what arrives there, not be pushed down by it.
class WIDGETS_EXPORT ViewTopAnchor : public QObject
{
    Q_OBJECT
public:
    // Follows the model the view shows now; call setModel after the view
    // gets another one.
    explicit ViewTopAnchor(QAbstractItemView *view);

    void setModel(QAbstractItemModel *model);
    QModelIndex getTopIndex() const { return m_top; }

private:
    void track();
    void modelChanging();
    void restore();
    bool isShownInView(const QModelIndex &index) const;

    QAbstractItemView *m_view;
    QPointer<QAbstractItemModel> m_model;
    QPersistentModelIndex m_top;
    int m_topOffset = 0; // pixels of the top row above the viewport
    bool m_restorePending = false;
    bool m_atTop = true; // scrolled to the very top
};
