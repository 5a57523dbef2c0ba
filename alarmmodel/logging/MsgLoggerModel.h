#pragma once

#include "MsgLoggerEnums.h"
#include "alarmmodel_export.h"

#include <QAbstractTableModel>
#include <QDateTime>
#include <QVector>

#include <array>

// The message history that the log views show: one row per message with its
// time, severity, source and text. The history is bounded; the oldest messages
// are dropped first.
class ALARMMODEL_EXPORT MsgLoggerModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { TimeColumn = 0, SeverityColumn = 1, SourceColumn = 2, TextColumn = 3, ColumnCount };

    explicit MsgLoggerModel(QObject *parent = nullptr, int maxMessages = 1000);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void addMessage(MsgLoggerEnums::LogSeverity severity, const QString &source, const QString &text);

    // Time and text of the newest message of `severity` later than `after`; an
    // invalid time (and `text` untouched) when there is none.
    QDateTime getLastOfSeverity(MsgLoggerEnums::LogSeverity severity, const QDateTime &after,
                                QString &text) const;

    int getMaxMessages() const { return m_maxMessages; }
    void setMaxMessages(int maxMessages);
    // The worst severity among the messages held; Trace when there are none.
    MsgLoggerEnums::LogSeverity worstSeverity() const;

public slots:
    void clear();

signals:
    void contentChanged(int count, MsgLoggerEnums::LogSeverity severity);

private:
    struct Message {
        QDateTime time;
        MsgLoggerEnums::LogSeverity severity;
        QString source;
        QString text;
    };
    void dropOldest(int count);
    void announce();

    QVector<Message> m_messages;
    std::array<int, 4> m_perSeverity{};
    int m_maxMessages;
};
