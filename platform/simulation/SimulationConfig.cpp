#include "SimulationConfig.h"

#include "Resources.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace {

// Reads typed members of one JSON object and remembers the first problem.
class ObjectReader
{
public:
    ObjectReader(const QJsonObject &object, const QString &where, QString &error)
        : m_object(object), m_where(where), m_error(error)
    {
    }

    bool ok() const { return m_error.isEmpty(); }

    void checkKeys(const QSet<QString> &known)
    {
        for (auto it = m_object.constBegin(); ok() && it != m_object.constEnd(); ++it) {
            if (!known.contains(it.key()))
                fail(QStringLiteral("unknown key '%1'").arg(it.key()));
        }
    }

    void readBool(const char *key, bool &target)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        if (!ok() || value.isUndefined())
            return;
        if (!value.isBool())
            return fail(QStringLiteral("'%1' must be true or false").arg(QLatin1String(key)));
        target = value.toBool();
    }

    void readNumber(const char *key, double &target, double min, double max)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        if (!ok() || value.isUndefined())
            return;
        if (!value.isDouble() || value.toDouble() < min || value.toDouble() > max)
            return fail(QStringLiteral("'%1' must be a number from %2 to %3")
                            .arg(QLatin1String(key))
                            .arg(min)
                            .arg(max));
        target = value.toDouble();
    }

    template<typename Int>
    void readInt(const char *key, Int &target, double min, double max)
    {
        double number = double(target);
        readNumber(key, number, min, max);
        if (ok() && number != double(qint64(number)))
            return fail(QStringLiteral("'%1' must be a whole number").arg(QLatin1String(key)));
        target = Int(number);
    }

    void readString(const char *key, QString &target)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        if (!ok() || value.isUndefined())
            return;
        if (!value.isString())
            return fail(QStringLiteral("'%1' must be a string").arg(QLatin1String(key)));
        target = value.toString();
    }

    void fail(const QString &text)
    {
        if (ok())
            m_error = m_where.isEmpty() ? text : m_where + QStringLiteral(": ") + text;
    }

private:
    const QJsonObject &m_object;
    QString m_where;
    QString &m_error;
};

} // namespace

SimulationConfig SimulationConfig::defaults()
{
    SimulationConfig config;
    const char *names[] = {"System1", "System2", "System3"};
    for (unsigned int i = 0; i < 3; ++i) {
        System system;
        system.name = QLatin1String(names[i]);
        system.id = i + 1;
        config.systems.append(system);
    }
    return config;
}

bool SimulationConfig::parse(const QByteArray &json, SimulationConfig &config, QString &errorText)
{
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        errorText = QStringLiteral("invalid JSON at offset %1: %2")
                        .arg(parseError.offset)
                        .arg(parseError.errorString());
        return false;
    }
    if (!doc.isObject()) {
        errorText = QStringLiteral("the simulation settings must be a JSON object");
        return false;
    }
    QString error;
    SimulationConfig result;
    const QJsonObject root = doc.object();
    ObjectReader reader(root, QString(), error);
    reader.checkKeys({"seed", "burstIntervalMs", "eventsPerSecond", "floodEventsPerSecond", "flood",
                      "historyChunkSize", "historyChunkIntervalMs", "historyMaxRecords", "systems"});
    reader.readInt("seed", result.seed, 0, 9007199254740991.0);
    reader.readInt("burstIntervalMs", result.burstIntervalMs, 1, 3600000);
    reader.readNumber("eventsPerSecond", result.eventsPerSecond, 0, 1e6);
    reader.readNumber("floodEventsPerSecond", result.floodEventsPerSecond, 0, 1e7);
    reader.readBool("flood", result.flood);
    reader.readInt("historyChunkSize", result.historyChunkSize, 1, 1e7);
    reader.readInt("historyChunkIntervalMs", result.historyChunkIntervalMs, 0, 60000);
    reader.readInt("historyMaxRecords", result.historyMaxRecords, 1, 2e9);

    const QJsonValue systems = root.value(QLatin1String("systems"));
    if (reader.ok() && !systems.isArray())
        reader.fail(QStringLiteral("'systems' must be a list of systems"));
    const QJsonArray list = systems.toArray();
    for (int i = 0; reader.ok() && i < list.size(); ++i) {
        const QString where = QStringLiteral("systems[%1]").arg(i);
        if (!list.at(i).isObject()) {
            reader.fail(where + QStringLiteral(" must be an object"));
            break;
        }
        const QJsonObject object = list.at(i).toObject();
        ObjectReader sys(object, where, error);
        System system;
        system.id = unsigned(i + 1);
        sys.checkKeys({"name", "id", "live", "archive", "archiveFails", "datapoints", "initialAlarms",
                       "archiveRecordsPerHour", "disconnectAfterBursts", "reconnectAfterBursts"});
        sys.readString("name", system.name);
        sys.readInt("id", system.id, 1, 65535);
        sys.readBool("live", system.live);
        sys.readBool("archive", system.archive);
        sys.readBool("archiveFails", system.archiveFails);
        sys.readInt("datapoints", system.datapoints, 1, 1e6);
        sys.readInt("initialAlarms", system.initialAlarms, 0, 1e6);
        sys.readNumber("archiveRecordsPerHour", system.archiveRecordsPerHour, 0, 1e7);
        sys.readInt("disconnectAfterBursts", system.disconnectAfterBursts, 0, 1e9);
        sys.readInt("reconnectAfterBursts", system.reconnectAfterBursts, 0, 1e9);
        if (sys.ok() && system.name.isEmpty())
            sys.fail(QStringLiteral("'name' is missing"));
        if (sys.ok() && system.initialAlarms > system.datapoints)
            sys.fail(QStringLiteral("'initialAlarms' must not exceed 'datapoints'"));
        if (sys.ok() && system.disconnectAfterBursts > 0 && system.reconnectAfterBursts < 1)
            sys.fail(QStringLiteral("'reconnectAfterBursts' must be at least 1 when the system disconnects"));
        if (sys.ok() && result.findSystem(system.name) >= 0)
            sys.fail(QStringLiteral("system '%1' is listed twice").arg(system.name));
        for (const System &other : qAsConst(result.systems)) {
            if (sys.ok() && other.id == system.id)
                sys.fail(QStringLiteral("system number %1 is used twice").arg(system.id));
        }
        result.systems.append(system);
    }
    if (!reader.ok() || !error.isEmpty()) {
        errorText = error;
        return false;
    }
    config = result;
    return true;
}

bool SimulationConfig::load(const QString &fileName, SimulationConfig &config, QString &errorText)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        errorText = QStringLiteral("cannot read %1: %2").arg(fileName, file.errorString());
        return false;
    }
    if (!parse(file.readAll(), config, errorText)) {
        errorText = fileName + QStringLiteral(": ") + errorText;
        return false;
    }
    return true;
}

QString SimulationConfig::findProjectConfig()
{
    return Resources::findFile(QLatin1String(projectConfigName()));
}

int SimulationConfig::findSystem(const QString &name) const
{
    for (int i = 0; i < systems.size(); ++i) {
        if (systems.at(i).name == name)
            return i;
    }
    return -1;
}
