#pragma once

#include "DpIdentList.h"
#include "LazyAppObject.h"
#include "Variable.h"

#include <QHash>
#include <QObject>

#include <map>
#include <memory>
#include <vector>

class DynVar;
class HotLinkWaitForAnswer;
class QJsonObject;

// The process's datapoint elements and the connections to them; Manager is its
// public face. Everything happens in the GUI thread; messages to connected
// receivers are queued on the event loop with the values they had when queued.
class DpStore : public QObject
{
    Q_OBJECT
public:
    static DpStore *instance();
    // The store if it exists, without making it.
    static DpStore *existing();

    bool createElement(const QString &name, const Variable &initial, QString &error);
    DpIdentifier idOf(const QString &name) const { return m_ids.value(name); }
    QString nameOf(const DpIdentifier &id) const;
    const Variable *valueOf(const DpIdentifier &id) const;

    // Sets all or nothing: every name must exist and every value match its
    // element's type.
    bool set(const QStringList &names, const DynVar &values, QString &error);
    bool load(const QJsonObject &root, QString &error);

    bool connect(const DpIdentList &ids, HotLinkWaitForAnswer *hotlink, bool wantAnswer,
                 QString &error);
    bool disconnect(const DpIdentList &ids, HotLinkWaitForAnswer *hotlink);
    void forget(HotLinkWaitForAnswer *hotlink);

private:
    friend class LazyAppObject<DpStore>;
    explicit DpStore(QObject *parent);

    struct Element
    {
        QString name;
        std::unique_ptr<Variable> value;
    };
    struct Connection
    {
        quint64 id;
        DpIdentList ids;
        HotLinkWaitForAnswer *hotlink;
    };

    template <class Message>
    void post(const Connection &connection);
    bool checkNewElement(const QString &name, QString &error) const;

    std::map<DpIdentifier, Element> m_elements;
    QHash<QString, DpIdentifier> m_ids;
    QHash<QString, unsigned int> m_dpNumbers;
    QHash<unsigned int, unsigned int> m_lastElementNumber;
    std::vector<Connection> m_connections;
    quint64 m_lastConnectionId = 0;
};
