#pragma once

#include "SystemInfo.h"
#include "widgets_export.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QMap>
#include <QPointer>
#include <QVector>

class AlarmsProxyModel;

// The systems known to the alarm table laid out as a grid for the systems
// dialog: the systems sorted by name fill the grid row by row, a disconnected
// one carries a warning icon, and each can be checked by the operator (the
// checks survive changes of the system list).
class WIDGETS_EXPORT SysConnectModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    struct SystemConnectionInfo {
        QString name;
        bool connected = false;
        bool checked = false;

        bool operator<(const SystemConnectionInfo &other) const { return name < other.name; }
    };

    SysConnectModel(AlarmsProxyModel *proxyModel, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // The position of the system in the sorted items; -1 for an unknown name.
    int findSystemIdx(const QString &name) const;
    // The item shown at `index`; -1 for an empty cell of the last row.
    int itemIndex(const QModelIndex &index) const;
    // Where the item `itemIdx` is shown.
    QModelIndex modelIndex(int itemIdx) const;
    const QVector<SystemConnectionInfo> &getItems() const { return m_items; }

    void processSystemListChanges(const QMap<unsigned int, SystemInfo> &systems);
    void processSystemConnectionChanges(const QMap<unsigned int, SystemInfo> &systems);
    bool systemListHasChanged(const QMap<unsigned int, SystemInfo> &systems) const;

public slots:
    void connectedSystemsChanged();
    void systemListChanged();

signals:
    void columnWidhtCanChange();

private:
    static int columnsFor(int count);

    QPointer<AlarmsProxyModel> m_proxyModel;
    QVector<SystemConnectionInfo> m_items;
    int m_columns = 1;
    QIcon m_icon;
};
