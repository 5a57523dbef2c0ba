#include "MsgLoggerModel.h"

#include <algorithm>

namespace {
int severityIndex(int severity)
{
    return std::clamp(severity, 0, 3);
}
} // namespace

MsgLoggerModel::MsgLoggerModel(QObject *parent, int maxMessages)
    : QAbstractTableModel(parent)
    , m_maxMessages(std::max(1, maxMessages))
{
    // Owners connect to contentChanged by its string signature, possibly queued.
    qRegisterMetaType<MsgLoggerEnums::LogSeverity>("MsgLoggerEnums::LogSeverity");
}

int MsgLoggerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_messages.size();
}

int MsgLoggerModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant MsgLoggerModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Message &m = m_messages.at(index.row());
    if (role == Qt::BackgroundRole)
        return index.column() == SeverityColumn ? QVariant(int(m.severity)) : QVariant();
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::ToolTipRole)
        return QVariant();
    const bool display = role != Qt::EditRole;
    switch (index.column()) {
    case TimeColumn:
        return display ? QVariant(m.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")))
                       : QVariant(m.time);
    case SeverityColumn:
        return display ? QVariant(MsgLoggerEnums::severityName(m.severity)) : QVariant(int(m.severity));
    case SourceColumn:
        return m.source;
    case TextColumn:
        return m.text;
    }
    return QVariant();
}

QVariant MsgLoggerModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case TimeColumn: return tr("Time");
    case SeverityColumn: return tr("Severity");
    case SourceColumn: return tr("Source");
    case TextColumn: return tr("Message");
    }
    return QVariant();
}

void MsgLoggerModel::addMessage(MsgLoggerEnums::LogSeverity severity, const QString &source,
                                const QString &text)
{
    if (m_messages.size() >= m_maxMessages)
        dropOldest(m_messages.size() - m_maxMessages + 1);
    const int row = m_messages.size();
    beginInsertRows(QModelIndex(), row, row);
    m_messages.append(Message{QDateTime::currentDateTime(), severity, source, text});
    ++m_perSeverity[severityIndex(severity)];
    endInsertRows();
    announce();
}

QDateTime MsgLoggerModel::getLastOfSeverity(MsgLoggerEnums::LogSeverity severity,
                                            const QDateTime &after, QString &text) const
{
    for (auto it = m_messages.crbegin(); it != m_messages.crend(); ++it) {
        if (after.isValid() && it->time <= after)
            break;
        if (it->severity == severity) {
            text = it->text;
            return it->time;
        }
    }
    return QDateTime();
}

void MsgLoggerModel::setMaxMessages(int maxMessages)
{
    m_maxMessages = std::max(1, maxMessages);
    if (m_messages.size() > m_maxMessages) {
        dropOldest(m_messages.size() - m_maxMessages);
        announce();
    }
}

MsgLoggerEnums::LogSeverity MsgLoggerModel::worstSeverity() const
{
    for (int s = 3; s > 0; --s) {
        if (m_perSeverity[s] > 0)
            return MsgLoggerEnums::LogSeverity(s);
    }
    return MsgLoggerEnums::Trace;
}

void MsgLoggerModel::clear()
{
    if (m_messages.isEmpty())
        return;
    beginResetModel();
    m_messages.clear();
    m_perSeverity.fill(0);
    endResetModel();
    announce();
}

void MsgLoggerModel::dropOldest(int count)
{
    if (count <= 0)
        return;
    beginRemoveRows(QModelIndex(), 0, count - 1);
    for (int i = 0; i < count; ++i)
        --m_perSeverity[severityIndex(m_messages.at(i).severity)];
    m_messages.remove(0, count);
    endRemoveRows();
}

void MsgLoggerModel::announce()
{
    emit contentChanged(m_messages.size(), worstSeverity());
}
