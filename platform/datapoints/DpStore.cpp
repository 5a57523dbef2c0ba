#include "DpStore.h"

#include "BitVar.h"
#include "DpHLGroup.h"
#include "DpMsgAnswer.h"
#include "DynVar.h"
#include "FloatVar.h"
#include "HotLinkWaitForAnswer.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "TextVar.h"
#include "TimeVar.h"
#include "UIntegerVar.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
LazyAppObject<DpStore> s_store;

// A value of the datapoint file. Without a type name the JSON kind decides:
// string -> text, boolean -> bool, integral number -> int, other number ->
// float, array -> dyn, object -> mapping.
std::unique_ptr<Variable> jsonToVariable(const QJsonValue &json, const QString &type,
                                         QString &error)
{
    const double number = json.toDouble();
    const bool integral = json.isDouble() && std::trunc(number) == number;
    const QString kind = !type.isEmpty() ? type
                         : json.isString() ? QStringLiteral("text")
                         : json.isBool()   ? QStringLiteral("bool")
                         : json.isArray()  ? QStringLiteral("dyn")
                         : json.isObject() ? QStringLiteral("mapping")
                         : integral        ? QStringLiteral("int")
                                           : QStringLiteral("float");
    if (kind == QLatin1String("text") && json.isString())
        return std::make_unique<TextVar>(json.toString());
    if (kind == QLatin1String("bool") && json.isBool())
        return std::make_unique<BitVar>(json.toBool());
    if (kind == QLatin1String("int") && integral && number >= std::numeric_limits<int>::min()
        && number <= std::numeric_limits<int>::max())
        return std::make_unique<IntegerVar>(static_cast<int>(number));
    if (kind == QLatin1String("uint") && integral && number >= 0
        && number <= std::numeric_limits<unsigned int>::max())
        return std::make_unique<UIntegerVar>(static_cast<unsigned int>(number));
    if (kind == QLatin1String("float") && json.isDouble())
        return std::make_unique<FloatVar>(number);
    if (kind == QLatin1String("time") && json.isString()) {
        const QDateTime time = QDateTime::fromString(json.toString(), Qt::ISODateWithMs);
        if (time.isValid())
            return std::make_unique<TimeVar>(time);
    }
    if (kind == QLatin1String("dyn") && json.isArray()) {
        auto dyn = std::make_unique<DynVar>();
        for (const QJsonValue &item : json.toArray()) {
            std::unique_ptr<Variable> value = jsonToVariable(item, QString(), error);
            if (!value)
                return nullptr;
            dyn->append(std::move(value));
        }
        return dyn;
    }
    if (kind == QLatin1String("mapping") && json.isObject()) {
        auto map = std::make_unique<MappingVar>();
        const QJsonObject object = json.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            std::unique_ptr<Variable> value = jsonToVariable(it.value(), QString(), error);
            if (!value)
                return nullptr;
            map->setAt(std::make_unique<TextVar>(it.key()), std::move(value));
        }
        return map;
    }
    error = QStringLiteral("value %1 does not fit type \"%2\"")
                .arg(QString::fromUtf8(QJsonDocument(QJsonArray{json}).toJson(QJsonDocument::Compact)),
                     kind);
    return nullptr;
}
} // namespace

DpStore::DpStore(QObject *parent)
    : QObject(parent)
{
}

DpStore *DpStore::instance()
{
    return s_store.get();
}

DpStore *DpStore::existing()
{
    return s_store.peek();
}

bool DpStore::checkNewElement(const QString &name, QString &error) const
{
    const int dot = name.indexOf(QLatin1Char('.'));
    if (dot <= 0 || dot == name.size() - 1 || name.contains(QLatin1Char(':'))) {
        error = QStringLiteral("invalid datapoint element name \"%1\", expected \"datapoint.element\"")
                    .arg(name);
        return false;
    }
    if (m_ids.contains(name)) {
        error = QStringLiteral("datapoint element \"%1\" already exists").arg(name);
        return false;
    }
    return true;
}

bool DpStore::createElement(const QString &name, const Variable &initial, QString &error)
{
    if (!checkNewElement(name, error))
        return false;
    const QString dp = name.left(name.indexOf(QLatin1Char('.')));
    unsigned int dpNumber = m_dpNumbers.value(dp);
    if (dpNumber == 0) {
        dpNumber = static_cast<unsigned int>(m_dpNumbers.size()) + 1;
        m_dpNumbers.insert(dp, dpNumber);
    }
    const DpIdentifier id(dpNumber, ++m_lastElementNumber[dpNumber]);
    m_ids.insert(name, id);
    m_elements[id] = Element{name, initial.cloneUnique()};
    return true;
}

QString DpStore::nameOf(const DpIdentifier &id) const
{
    const auto found = m_elements.find(id);
    return found == m_elements.end() ? QString() : found->second.name;
}

const Variable *DpStore::valueOf(const DpIdentifier &id) const
{
    const auto found = m_elements.find(id);
    return found == m_elements.end() ? nullptr : found->second.value.get();
}

bool DpStore::set(const QStringList &names, const DynVar &values, QString &error)
{
    if (names.size() != values.count()) {
        error = QStringLiteral("%1 datapoint element names but %2 values")
                    .arg(names.size()).arg(values.count());
        return false;
    }
    QList<DpIdentifier> ids;
    for (int i = 0; i < names.size(); ++i) {
        const DpIdentifier id = m_ids.value(names.at(i));
        if (id.isNull()) {
            error = QStringLiteral("datapoint element \"%1\" does not exist").arg(names.at(i));
            return false;
        }
        const VariableType expected = m_elements.at(id).value->getType();
        if (values.at(i)->getType() != expected) {
            error = QStringLiteral("datapoint element \"%1\" holds %2, cannot set %3")
                        .arg(names.at(i), Variable::getTypeName(expected),
                             Variable::getTypeName(values.at(i)->getType()));
            return false;
        }
        ids.append(id);
    }
    for (int i = 0; i < ids.size(); ++i)
        m_elements.at(ids.at(i)).value = values.at(i)->cloneUnique();

    // Every set is a change, even to an equal value, as on the real system.
    const std::vector<Connection> touched = [&] {
        std::vector<Connection> result;
        for (const Connection &c : m_connections) {
            for (const DpIdentifier &id : ids) {
                if (c.ids.contains(id)) {
                    result.push_back(c);
                    break;
                }
            }
        }
        return result;
    }();
    for (const Connection &c : touched)
        post<DpHLGroup>(c);
    return true;
}

bool DpStore::load(const QJsonObject &root, QString &error)
{
    // Checked completely before anything is created, so that a bad file
    // changes nothing.
    QStringList names;
    std::vector<std::unique_ptr<Variable>> values;
    QSet<QString> seen;
    const QJsonValue datapoints = root.value(QStringLiteral("datapoints"));
    if (!datapoints.isArray()) {
        error = QStringLiteral("\"datapoints\" must be an array");
        return false;
    }
    for (const QJsonValue &dpValue : datapoints.toArray()) {
        const QJsonObject dp = dpValue.toObject();
        const QString dpName = dp.value(QStringLiteral("name")).toString();
        const QJsonValue elements = dp.value(QStringLiteral("elements"));
        if (dpName.isEmpty() || !elements.isArray()) {
            error = QStringLiteral("every datapoint needs a \"name\" and an \"elements\" array");
            return false;
        }
        for (const QJsonValue &elementValue : elements.toArray()) {
            const QJsonObject element = elementValue.toObject();
            const QString name = dpName + QLatin1Char('.') + element.value(QStringLiteral("name")).toString();
            QString valueError;
            std::unique_ptr<Variable> value = jsonToVariable(
                element.value(QStringLiteral("value")), element.value(QStringLiteral("type")).toString(),
                valueError);
            if (!value) {
                error = QStringLiteral("element \"%1\": %2").arg(name, valueError);
                return false;
            }
            if (!checkNewElement(name, error))
                return false;
            if (seen.contains(name)) {
                error = QStringLiteral("datapoint element \"%1\" is defined twice").arg(name);
                return false;
            }
            seen.insert(name);
            names.append(name);
            values.push_back(std::move(value));
        }
    }
    for (int i = 0; i < names.size(); ++i)
        createElement(names.at(i), *values[static_cast<size_t>(i)], error);
    return true;
}

bool DpStore::connect(const DpIdentList &ids, HotLinkWaitForAnswer *hotlink, bool wantAnswer,
                      QString &error)
{
    if (!hotlink || ids.isEmpty()) {
        error = QStringLiteral("nothing to connect (%1)")
                    .arg(hotlink ? QStringLiteral("empty identifier list") : QStringLiteral("no receiver"));
        return false;
    }
    for (const DpIdentifier &id : ids) {
        if (!m_elements.count(id)) {
            error = QStringLiteral("no datapoint element with identifier %1").arg(id.toString());
            return false;
        }
    }
    m_connections.push_back(Connection{++m_lastConnectionId, ids, hotlink});
    if (wantAnswer)
        post<DpMsgAnswer>(m_connections.back());
    return true;
}

bool DpStore::disconnect(const DpIdentList &ids, HotLinkWaitForAnswer *hotlink)
{
    for (auto it = m_connections.begin(); it != m_connections.end(); ++it) {
        if (it->hotlink == hotlink && it->ids == ids) {
            m_connections.erase(it);
            return true;
        }
    }
    return false;
}

void DpStore::forget(HotLinkWaitForAnswer *hotlink)
{
    m_connections.erase(std::remove_if(m_connections.begin(), m_connections.end(),
                                       [hotlink](const Connection &c) { return c.hotlink == hotlink; }),
                        m_connections.end());
}

template <class Message>
void DpStore::post(const Connection &connection)
{
    auto message = std::make_shared<Message>();
    for (const DpIdentifier &id : connection.ids)
        message->append(id, m_elements.at(id).value->cloneUnique());
    const quint64 connectionId = connection.id;
    QMetaObject::invokeMethod(
        this,
        [this, connectionId, message] {
            // Delivered only while the connection lasts.
            for (const Connection &c : m_connections) {
                if (c.id == connectionId) {
                    c.hotlink->hotLinkCallBack(*message);
                    return;
                }
            }
        },
        Qt::QueuedConnection);
}
