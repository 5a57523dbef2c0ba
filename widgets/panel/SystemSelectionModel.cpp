#include "SystemSelectionModel.h"

#include "SysOracleArchive.h"

#include <QBrush>

SystemSelectionModel::SystemSelectionModel(QObject *parent, int rowCount)
    : QAbstractTableModel(parent), m_rowCount(qMax(0, rowCount))
{
}

QStringList SystemSelectionModel::currentSystems()
{
    return SysOracleArchive::getInstance()->getSystems();
}

int SystemSelectionModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rowCount;
}

int SystemSelectionModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

int SystemSelectionModel::getTotalSystemCount() const
{
    return currentSystems().size();
}

bool SystemSelectionModel::isMatching(const QString &name) const
{
    return !m_filter.pattern().isEmpty() && m_filter.isValid() && m_filter.exactMatch(name);
}

QVariant SystemSelectionModel::data(const QModelIndex &index, int role) const
{
    const QStringList systems = currentSystems();
    if (!index.isValid() || index.row() >= systems.size())
        return QVariant();
    const QString &name = systems.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return name;
    case Qt::BackgroundRole:
        return isMatching(name) ? QVariant(QBrush(Qt::cyan)) : QVariant();
    case Qt::CheckStateRole:
        return m_selected.contains(name) ? Qt::Checked : Qt::Unchecked;
    default:
        return QVariant();
    }
}

bool SystemSelectionModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const QStringList systems = currentSystems();
    if (role != Qt::CheckStateRole || !index.isValid() || index.row() >= systems.size())
        return false;
    const QString &name = systems.at(index.row());
    bool changed = false;
    if (value.toInt() == Qt::Checked) {
        changed = !m_selected.contains(name);
        if (changed)
            m_selected.append(name);
    } else {
        changed = m_selected.removeAll(name) > 0;
    }
    if (changed) {
        m_selectionChosen = true;
        emit dataChanged(index, index, {Qt::CheckStateRole});
        emit selectionChanged(m_selected.size(), systems.size());
    }
    return true;
}

QVariant SystemSelectionModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section == 0)
        return tr("System");
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags SystemSelectionModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled;
}

int SystemSelectionModel::setFilter(const QString &pattern)
{
    m_filter.setPattern(pattern);
    announceAllRows(Qt::BackgroundRole);
    int matching = 0;
    for (const QString &name : currentSystems()) {
        if (isMatching(name))
            ++matching;
    }
    return matching;
}

void SystemSelectionModel::setSelection(bool select)
{
    if (m_filter.pattern().isEmpty() || !m_filter.isValid())
        return;
    bool changed = false;
    for (const QString &name : currentSystems()) {
        if (!isMatching(name))
            continue;
        if (select && !m_selected.contains(name)) {
            m_selected.append(name);
            changed = true;
        } else if (!select && m_selected.removeAll(name) > 0) {
            changed = true;
        }
    }
    if (changed) {
        m_selectionChosen = true;
        announceSelection();
    }
}

QString SystemSelectionModel::setSelectedSystems(const QStringList &names)
{
    const QString error = applySelection(names);
    if (error.isEmpty() && !names.isEmpty())
        m_selectionChosen = true;
    return error;
}

QString SystemSelectionModel::setInitial(const QStringList &names)
{
    return m_selectionChosen ? QString() : applySelection(names);
}

QString SystemSelectionModel::applySelection(const QStringList &names)
{
    if (names.isEmpty())
        return QString();
    const QStringList systems = currentSystems();
    for (const QString &name : names) {
        if (!systems.contains(name))
            return tr("Unknwon system name: %1").arg(name);
    }
    m_selected = names;
    m_selected.removeDuplicates();
    announceSelection();
    return QString();
}

void SystemSelectionModel::systemListChanged()
{
    beginResetModel();
    const QStringList systems = currentSystems();
    m_rowCount = systems.size();
    for (auto it = m_selected.begin(); it != m_selected.end();) {
        if (systems.contains(*it))
            ++it;
        else
            it = m_selected.erase(it);
    }
    endResetModel();
    emit selectionChanged(m_selected.size(), systems.size());
}

void SystemSelectionModel::announceAllRows(int role)
{
    if (m_rowCount > 0)
        emit dataChanged(index(0, 0), index(m_rowCount - 1, 0), {role});
}

void SystemSelectionModel::announceSelection()
{
    announceAllRows(Qt::CheckStateRole);
    emit selectionChanged(m_selected.size(), getTotalSystemCount());
}
