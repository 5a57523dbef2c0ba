#pragma once

#include "MsgLoggingProducer.h"
#include "widgets_export.h"

#include <QDateTime>
#include <QMap>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>

class DynVar;
class MappingVar;
class Variable;

// The completion values of one alarm property and the state of the CTRL
// requests that fetch them. What kind of completions a property has is only
// known from the first answer of the master function; until then the type is
// UnknownType.
class WIDGETS_EXPORT FilterCompletions : public QObject, public MsgLoggingProducer
{
    Q_OBJECT
public:
    enum CompletionType : int {
        NoCompletions = 0,
        SingleList = 1,    // one list for all systems
        DependentList = 2, // values depend on other filters (slave answers)
        PerSystem = 3,     // one list per system
        UnknownType = 100  // no answer yet
    };

    FilterCompletions(const MsgLoggingProducer *logger, const QString &property,
                      const QStringList &systems);
    ~FilterCompletions() override;

    const QString &getProperty() const { return m_property; }
    // The CTRL function named in messages: the one whose answer is parsed.
    const QString &getFunction() const { return m_function; }
    void setFunction(const QString &function) { m_function = function; }
    int getType() const { return m_type; }
    const QStringList &getList() const { return m_list; }
    const QMap<QString, QStringList> &getSystemMap() const { return m_systemMap; }
    const QStringList &getMasterList() const { return m_masterList; }
    bool isRequestRunning() const { return m_requestStart.isValid(); }

    // Fixed values from the configuration: SingleList, or NoCompletions when empty.
    void setFixedList(const QStringList &list);
    bool dependsOnFilter(const QString &name) const;
    QStringList findMissingSystems(const QStringList &systems) const;
    // The union of the lists of `systems`, in order of first appearance.
    QStringList getCompletionsForSystems(const QStringList &systems) const;
    void addPendingSystems(const QStringList &systems);
    QStringList getPendingSystems() const;
    void clearPendingSystems() { m_pendingSystems.clear(); }

    void requestStarted();
    void requestCompletedOrLost();
    // A master query could not be started: there are no completions.
    void masterCallFailed(void *consumer);
    // The answer of a CTRL call; `result` may be null.
    void applyCtrlCallReturnValue(void *consumer, const Variable *result);

signals:
    void requestCompleted(void *consumer, const FilterCompletions *completions);

private:
    bool parseCtrlCallResult(const Variable *result);
    // The answer's type into `result`.
    bool parseType(const MappingVar &map, int &result);
    // Replaces `target` only when the list could be read.
    bool parseList(const MappingVar &map, QStringList &target);
    bool parseSysMap(const MappingVar &map);
    bool printMapError(const QString &error) const;

    QString m_function;
    QString m_property;
    int m_type = UnknownType;
    QStringList m_list;
    QMap<QString, QStringList> m_systemMap;
    QStringList m_masterList;
    QStringList m_pendingSystems;
    QDateTime m_requestStart;
};
