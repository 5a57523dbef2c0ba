#include "Manager.h"

#include "DpStore.h"
#include "DynVar.h"
#include "HotLinkWaitForAnswer.h"
#include "PlatformLog.h"
#include "Resources.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

bool Manager::getId(const QString &name, DpIdentifier &id)
{
    id = DpStore::instance()->idOf(name);
    return !id.isNull();
}

QString Manager::getName(const DpIdentifier &id)
{
    return DpStore::instance()->nameOf(id);
}

bool Manager::dpCreateElement(const QString &name, const Variable &initialValue, QString &error)
{
    return DpStore::instance()->createElement(name, initialValue, error);
}

bool Manager::dpSet(const QString &name, const Variable &value, QString &error)
{
    DynVar values;
    values.append(value);
    return dpSet(QStringList{name}, values, error);
}

bool Manager::dpSet(const QStringList &names, const DynVar &values, QString &error)
{
    return DpStore::instance()->set(names, values, error);
}

std::unique_ptr<Variable> Manager::dpGet(const QString &name)
{
    DpStore *store = DpStore::instance();
    const Variable *value = store->valueOf(store->idOf(name));
    return value ? value->cloneUnique() : nullptr;
}

bool Manager::dpConnect(const DpIdentList &ids, ManagerId, HotLinkWaitForAnswer *hotlink,
                        bool wantAnswer)
{
    QString error;
    if (DpStore::instance()->connect(ids, hotlink, wantAnswer, error))
        return true;
    PlatformLog::write(PlatformLog::Error, QStringLiteral("Manager::dpConnect: ") + error);
    return false;
}

bool Manager::dpDisconnect(const DpIdentList &ids, HotLinkWaitForAnswer *hotlink, ManagerId)
{
    return DpStore::instance()->disconnect(ids, hotlink);
}

bool Manager::loadDatapoints(const QString &fileName, QString &error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("%1: cannot be read: %2").arg(fileName, file.errorString());
        return false;
    }
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError || !document.isObject()) {
        error = QStringLiteral("%1: not a JSON object (%2 at offset %3)")
                    .arg(fileName, parseError.errorString()).arg(parseError.offset);
        return false;
    }
    if (!DpStore::instance()->load(document.object(), error)) {
        error = fileName + QLatin1String(": ") + error;
        return false;
    }
    return true;
}

bool Manager::loadProjectDatapoints(QString &error)
{
    const QString file = Resources::findFile(QStringLiteral("config/datapoints.json"));
    return file.isEmpty() || loadDatapoints(file, error);
}
