#pragma once

#include "AlarmIdent.h"
#include "AlarmProp.h"
#include "alarmmodel_export.h"

#include <QSharedPointer>
#include <QString>
#include <QVariant>

#include <array>

// One alarm row as the table shows it. An instance never changes once it is
// shared: a live change replaces it with a new instance of the same identity,
// so that consumers can compare the alarm before and after the change.
//
// The display text of every property is built once, at construction, because
// filters and the quick filter look at the texts of every row on every pass.
// Texts that many alarms have in common (system, element, alarm texts) are
// implicitly shared strings, so an alarm costs little more than its own
// time, value and priority texts.
class ALARMMODEL_EXPORT AlarmInstance
{
public:
    // State of the came/went pair the row belongs to; both rows of a pair
    // carry the same state.
    enum State : int {
        CameUnacknowledged = 0,
        CameAcknowledged = 1,
        WentUnacknowledged = 2,
        WentAcknowledged = 3
    };
    enum Direction : int { Came = 0, Went = 1 };

    // The typed values an alarm is built from.
    struct Data {
        AlarmIdent ident;
        AlarmIdent related; // the other row of the came/went pair, if any
        QString dpe;
        QString alias;
        QString description;
        QString alarmText;
        QString alarmClass;
        qint64 timeMs = 0;    // milliseconds since the epoch
        qint64 ackTimeMs = 0; // 0 while not acknowledged
        double value = 0.0;
        int priority = 0;
        State state = CameUnacknowledged;
        Direction direction = Came;
        bool acknowledgeable = true;
        bool connected = true; // false while the alarm's system is disconnected
    };

    explicit AlarmInstance(const Data &data);

    const AlarmIdent &getIdent() const { return m_data.ident; }
    const AlarmIdent &getRelatedIdent() const { return m_data.related; }
    const Data &getData() const { return m_data; }

    // Display role: the property's text; edit role: its typed value (a
    // QDateTime for times, invalid for a time that is not set). Other roles
    // give an invalid value.
    QVariant getProperty(const AlarmProp &prop, Qt::ItemDataRole role) const;
    QVariant getProperty(int propIndex, Qt::ItemDataRole role) const;
    // The display text without building a QVariant; empty for an unknown index.
    // Texts that are typed values are read there (the same shared strings):
    // loops over many alarms then touch fewer cache lines of each.
    const QString &getText(int propIndex) const
    {
        switch (propIndex) {
        case AlarmProp::System:
            return m_data.ident.getSystem();
        case AlarmProp::Dpe:
            return m_data.dpe;
        case AlarmProp::Alias:
            return m_data.alias;
        case AlarmProp::Description:
            return m_data.description;
        case AlarmProp::AlarmText:
            return m_data.alarmText;
        case AlarmProp::AlarmClass:
            return m_data.alarmClass;
        default:
            return propIndex >= 0 && propIndex < AlarmProp::Count ? m_texts[size_t(propIndex)] : noText();
        }
    }

    bool isAcknowledged() const;
    bool isConnected() const { return m_data.connected; }

    // Orders two alarms by one property (typed, not by text for numbers and
    // times); equal values give 0.
    static int compare(const AlarmInstance &a, const AlarmInstance &b, int propIndex);

    // A copy of this alarm whose system connection state is `connected`.
    QSharedPointer<AlarmInstance> withConnection(bool connected) const;

    // Operator texts of the enumerations, shared by all alarms.
    static QString stateText(State state);
    static QString directionText(Direction direction);
    // "yyyy-MM-dd hh:mm:ss.zzz" in local time; empty for 0.
    static QString formatTime(qint64 msSinceEpoch);

private:
    static const QString &noText();

    Data m_data;
    std::array<QString, AlarmProp::Count> m_texts;
};

using AlarmInstancePtr = QSharedPointer<AlarmInstance>;
