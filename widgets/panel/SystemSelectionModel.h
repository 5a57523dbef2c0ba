#pragma once

#include "widgets_export.h"

#include <QAbstractTableModel>
#include <QRegExp>
#include <QStringList>

// The archive systems as a one-column checkable table: checked rows are the
// systems a history query reads; rows matching the filter pattern exactly are
// highlighted and can be checked or unchecked together.
class WIDGETS_EXPORT SystemSelectionModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    // `rowCount` is the number of rows reported until the system list is next
    // announced as changed (normally the size of the list at construction).
    SystemSelectionModel(QObject *parent, int rowCount);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    // Checks (`select`) or unchecks every system matching the filter pattern.
    void setSelection(bool select);
    // Makes `names` the selection; an empty string on success, else the reason.
    // An empty list changes nothing.
    QString setSelectedSystems(const QStringList &names);
    // The default selection of a new history query: applied like
    // setSelectedSystems, but only until a selection has been chosen explicitly
    // (by checking rows, the bulk buttons or setSelectedSystems).
    QString setInitial(const QStringList &names);

    const QStringList &getSelectedSystems() const { return m_selected; }
    int getTotalSystemCount() const;
    bool isSelectionChosen() const { return m_selectionChosen; }

public slots:
    // Returns how many systems match `pattern` exactly.
    int setFilter(const QString &pattern);
    void systemListChanged();

signals:
    void selectionChanged(int nSelected, int nTotal);

private:
    static QStringList currentSystems();
    bool isMatching(const QString &name) const;
    QString applySelection(const QStringList &names);
    void announceAllRows(int role);
    void announceSelection();

    QStringList m_selected;
    QRegExp m_filter;
    int m_rowCount;
    bool m_selectionChosen = false;
};
