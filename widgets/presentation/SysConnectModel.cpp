#include "SysConnectModel.h"

#include "AlarmsProxyModel.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>
#include <cmath>

SysConnectModel::SysConnectModel(AlarmsProxyModel *proxyModel, QObject *parent)
    : QAbstractTableModel(parent), m_proxyModel(proxyModel)
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        m_icon = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    if (m_proxyModel) {
        connect(m_proxyModel, &AlarmsProxyModel::connectedSystemsChanged, this,
                &SysConnectModel::connectedSystemsChanged);
        connect(m_proxyModel, &AlarmsProxyModel::systemListChanged, this, &SysConnectModel::systemListChanged);
        processSystemListChanges(m_proxyModel->getSystems());
    }
}

int SysConnectModel::columnsFor(int count)
{
    // A square-ish grid keeps a few dozen systems readable without scrolling.
    return std::max(1, int(std::ceil(std::sqrt(double(count)))));
}

int SysConnectModel::rowCount(const QModelIndex &parent) const
{
    if (parent.isValid())
        return 0;
    return (m_items.size() + m_columns - 1) / m_columns;
}

int SysConnectModel::columnCount(const QModelIndex &parent) const
{
    if (parent.isValid() || m_items.isEmpty())
        return 0;
    return std::min(m_columns, int(m_items.size()));
}

int SysConnectModel::itemIndex(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != this || index.column() >= m_columns)
        return -1;
    const int item = index.row() * m_columns + index.column();
    return item < m_items.size() ? item : -1;
}

QModelIndex SysConnectModel::modelIndex(int itemIdx) const
{
    if (itemIdx < 0 || itemIdx >= m_items.size())
        return QModelIndex();
    return index(itemIdx / m_columns, itemIdx % m_columns);
}

int SysConnectModel::findSystemIdx(const QString &name) const
{
    SystemConnectionInfo probe;
    probe.name = name;
    const auto it = std::lower_bound(m_items.cbegin(), m_items.cend(), probe);
    return it != m_items.cend() && it->name == name ? int(it - m_items.cbegin()) : -1;
}

QVariant SysConnectModel::data(const QModelIndex &index, int role) const
{
    const int item = itemIndex(index);
    if (item < 0)
        return QVariant();
    const SystemConnectionInfo &info = m_items.at(item);
    switch (role) {
    case Qt::DisplayRole:
        return info.name;
    case Qt::DecorationRole:
        return info.connected ? QVariant() : QVariant(m_icon);
    case Qt::CheckStateRole:
        return info.checked ? Qt::Checked : Qt::Unchecked;
    default:
        return QVariant();
    }
}

bool SysConnectModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int item = itemIndex(index);
    if (item < 0 || role != Qt::CheckStateRole)
        return false;
    const bool checked = value.toInt() == Qt::Checked;
    if (m_items[item].checked != checked) {
        m_items[item].checked = checked;
        emit dataChanged(index, index, {Qt::CheckStateRole});
    }
    return true;
}

Qt::ItemFlags SysConnectModel::flags(const QModelIndex &index) const
{
    if (itemIndex(index) < 0)
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled;
}

QVariant SysConnectModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("System");
    return QAbstractTableModel::headerData(section, orientation, role);
}

void SysConnectModel::connectedSystemsChanged()
{
    if (m_proxyModel)
        processSystemConnectionChanges(m_proxyModel->getSystems());
}

void SysConnectModel::systemListChanged()
{
    if (m_proxyModel)
        processSystemListChanges(m_proxyModel->getSystems());
}

bool SysConnectModel::systemListHasChanged(const QMap<unsigned int, SystemInfo> &systems) const
{
    if (systems.size() != m_items.size())
        return true;
    for (const SystemInfo &system : systems) {
        if (findSystemIdx(system.getName()) < 0)
            return true;
    }
    return false;
}

void SysConnectModel::processSystemListChanges(const QMap<unsigned int, SystemInfo> &systems)
{
    if (!systemListHasChanged(systems)) {
        processSystemConnectionChanges(systems);
        return;
    }
    QVector<SystemConnectionInfo> items;
    items.reserve(systems.size());
    for (const SystemInfo &system : systems) {
        const int previous = findSystemIdx(system.getName());
        SystemConnectionInfo info;
        info.name = system.getName();
        info.connected = system.isConnected();
        info.checked = previous >= 0 && m_items.at(previous).checked;
        items.append(info);
    }
    std::sort(items.begin(), items.end());
    beginResetModel();
    m_items = items;
    m_columns = columnsFor(m_items.size());
    endResetModel();
    emit columnWidhtCanChange();
}

void SysConnectModel::processSystemConnectionChanges(const QMap<unsigned int, SystemInfo> &systems)
{
    if (systemListHasChanged(systems)) {
        processSystemListChanges(systems);
        return;
    }
    bool changed = false;
    for (const SystemInfo &system : systems) {
        const int item = findSystemIdx(system.getName());
        if (m_items.at(item).connected == system.isConnected())
            continue;
        m_items[item].connected = system.isConnected();
        const QModelIndex cell = modelIndex(item);
        emit dataChanged(cell, cell, {Qt::DecorationRole});
        changed = true;
    }
    // The icon comes or goes, and with it some width.
    if (changed)
        emit columnWidhtCanChange();
}
