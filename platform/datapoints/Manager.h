#pragma once

#include "DpIdentList.h"
#include "platform_export.h"

#include <QString>
#include <QStringList>

#include <memory>

class DynVar;
class HotLinkWaitForAnswer;
class Variable;

// The manager API of the platform for datapoints.
//
// The datapoint elements live in this process: the host defines them (or loads
// them from config/datapoints.json of the project) and sets their values; an
// element's type is the type of its first value. Elements are named
// "datapoint.element" and identified by DpIdentifier.
class PLATFORM_EXPORT Manager
{
public:
    // The managers a request can go to; this platform has one event manager.
    enum ManagerId { eventId = 1 };

    // Name -> identifier; false when there is no such element.
    static bool getId(const QString &name, DpIdentifier &id);
    // Empty for an unknown identifier.
    static QString getName(const DpIdentifier &id);

    static bool dpCreateElement(const QString &name, const Variable &initialValue, QString &error);
    // Sets one element, or several at once (one hotlink per connection for
    // all of them). A value must have the element's type. All or nothing.
    static bool dpSet(const QString &name, const Variable &value, QString &error);
    static bool dpSet(const QStringList &names, const DynVar &values, QString &error);
    // A copy of the current value; null for an unknown element.
    static std::unique_ptr<Variable> dpGet(const QString &name);

    // Connects `hotlink` to the elements: with `wantAnswer` it first gets the
    // current values (hotLinkCallBack(DpMsgAnswer&)), then after every set of
    // any of them the values of all (hotLinkCallBack(DpHLGroup&)); items are in
    // the order of `ids`, and everything arrives through the event loop. The
    // hotlink stays the caller's. False (and a log line) for a null hotlink, an
    // empty list or an unknown identifier.
    static bool dpConnect(const DpIdentList &ids, ManagerId manager, HotLinkWaitForAnswer *hotlink,
                          bool wantAnswer = true);
    // Ends a connection made with the same list and hotlink; messages still
    // queued for it are dropped. False when there is no such connection.
    static bool dpDisconnect(const DpIdentList &ids, HotLinkWaitForAnswer *hotlink,
                             ManagerId manager);

    // Defines the elements of a datapoint file (format in docs/platform.md).
    // A file with any error defines nothing.
    static bool loadDatapoints(const QString &fileName, QString &error);
    // Loads config/datapoints.json found along the project paths (last
    // configured path first); a project without one is fine.
    static bool loadProjectDatapoints(QString &error);
};
