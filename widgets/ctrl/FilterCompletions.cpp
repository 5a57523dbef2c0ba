#include "FilterCompletions.h"

#include "DynVar.h"
#include "IntegerVar.h"
#include "MappingVar.h"
#include "TextVar.h"
#include "converter.h"

#include <QSet>

namespace {
const TextVar TypeKey(QStringLiteral("type"));
const TextVar ListKey(QStringLiteral("list"));
const TextVar MapKey(QStringLiteral("map"));

// CTRL turns any scalar into text where a text is expected; a script's list
// of numbers is a list of texts to the operator.
QString elementText(const Variable *element)
{
    if (!element)
        return QString();
    if (element->isA(TEXT_VAR))
        return static_cast<const TextVar *>(element)->getValue();
    return element->formatValue();
}

bool isTextLike(VariableType type)
{
    switch (type) {
    case TEXT_VAR:
    case INTEGER_VAR:
    case UINTEGER_VAR:
    case FLOAT_VAR:
    case BIT_VAR:
    case TIME_VAR:
        return true;
    default:
        return false;
    }
}
} // namespace

FilterCompletions::FilterCompletions(const MsgLoggingProducer *logger, const QString &property,
                                     const QStringList &systems)
    : MsgLoggingProducer(logger), m_property(property)
{
    for (const QString &system : systems)
        m_systemMap.insert(system, QStringList());
}

FilterCompletions::~FilterCompletions() = default;

void FilterCompletions::setFixedList(const QStringList &list)
{
    m_type = list.isEmpty() ? NoCompletions : SingleList;
    m_list = list;
}

bool FilterCompletions::dependsOnFilter(const QString &name) const
{
    return m_type == DependentList && m_masterList.contains(name);
}

QStringList FilterCompletions::findMissingSystems(const QStringList &systems) const
{
    QStringList missing;
    for (const QString &system : systems) {
        if (!m_systemMap.contains(system))
            missing.append(system);
    }
    return missing;
}

QStringList FilterCompletions::getCompletionsForSystems(const QStringList &systems) const
{
    QStringList result;
    QSet<QString> seen;
    for (const QString &system : systems) {
        const auto found = m_systemMap.constFind(system);
        if (found == m_systemMap.constEnd())
            continue;
        for (const QString &value : *found) {
            if (!seen.contains(value)) {
                seen.insert(value);
                result.append(value);
            }
        }
    }
    return result;
}

void FilterCompletions::addPendingSystems(const QStringList &systems)
{
    if (m_type != PerSystem && m_type != UnknownType)
        return;
    for (const QString &system : systems) {
        if (!m_systemMap.contains(system) && !m_pendingSystems.contains(system))
            m_pendingSystems.append(system);
    }
}

QStringList FilterCompletions::getPendingSystems() const
{
    if (m_type != PerSystem)
        return QStringList();
    return findMissingSystems(m_pendingSystems);
}

void FilterCompletions::requestStarted()
{
    if (m_requestStart.isValid()) {
        ASLOG(this, MsgLoggerEnums::Warning,
              QStringLiteral("call to fix request start for FilterCompletions with valid time, property ") +
                  m_property);
    }
    m_requestStart = QDateTime::currentDateTime();
}

void FilterCompletions::requestCompletedOrLost()
{
    m_requestStart = QDateTime();
}

void FilterCompletions::masterCallFailed(void *consumer)
{
    Q_UNUSED(consumer)
    m_type = NoCompletions;
    m_systemMap.clear();
    m_list.clear();
    m_masterList.clear();
    emit requestCompleted(nullptr, this);
}

void FilterCompletions::applyCtrlCallReturnValue(void *consumer, const Variable *result)
{
    requestCompletedOrLost();
    const int typeBefore = m_type;
    if (parseCtrlCallResult(result)) {
        // Slave answers belong to the consumer whose filter changed; master
        // answers are news for every consumer of the property.
        emit requestCompleted(typeBefore == DependentList ? consumer : nullptr, this);
    } else if (m_type == UnknownType) {
        m_type = NoCompletions;
    }
}

bool FilterCompletions::parseCtrlCallResult(const Variable *result)
{
    if (!result) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("No return value from CTRL function ") + m_function +
                  QStringLiteral(" for alarm property ") + m_property);
        return false;
    }
    if (!result->isA(MAPPING_VAR)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("The value returned by CTRL function ") + m_function +
                  QStringLiteral(" for alarm property ") + m_property + QStringLiteral(" is ") +
                  Variable::getTypeName(result->getType()) + QStringLiteral(", expected type is ") +
                  Variable::getTypeName(MAPPING_VAR));
        return false;
    }
    const auto &map = *static_cast<const MappingVar *>(result);
    if (m_type == DependentList)
        return parseList(map, m_list);
    // Nothing changes unless the whole answer is good.
    int type = m_type;
    if (!parseType(map, type))
        return false;
    QStringList list;
    switch (type) {
    case NoCompletions:
        m_list.clear();
        m_masterList.clear();
        break;
    case SingleList:
        if (!parseList(map, list))
            return false;
        m_list = list;
        break;
    case DependentList:
        if (!parseList(map, list))
            return false;
        m_masterList = list;
        break;
    default:
        if (!parseSysMap(map))
            return false;
        break;
    }
    m_type = type;
    return true;
}

bool FilterCompletions::parseType(const MappingVar &map, int &result)
{
    QString error;
    const IntegerVar *type = converter::getMapValue<IntegerVar>(this, map, TypeKey, INTEGER_VAR, error);
    if (!type)
        return printMapError(error);
    const int value = type->getValue();
    if (value < NoCompletions || value > PerSystem) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("unexpected type value ") + QString::number(value) +
                  QStringLiteral("returned by ") + m_function + QStringLiteral(" for alarm property ") +
                  m_property + QStringLiteral(", expected one of: ") + QStringLiteral("0, 1, 2"));
        return false;
    }
    result = value;
    return true;
}

bool FilterCompletions::parseList(const MappingVar &map, QStringList &target)
{
    QString error;
    const DynVar *list = converter::getMapValue<DynVar>(this, map, ListKey, DYN_VAR, error);
    if (!list)
        return printMapError(error);
    QStringList texts;
    texts.reserve(list->count());
    for (int i = 0; i < list->count(); ++i) {
        QString text = elementText(list->at(i));
        if (!text.isEmpty())
            texts.append(std::move(text));
    }
    target.swap(texts);
    return true;
}

bool FilterCompletions::parseSysMap(const MappingVar &map)
{
    QString error;
    const MappingVar *systems = converter::getMapValue<MappingVar>(this, map, MapKey, MAPPING_VAR, error);
    if (!systems)
        return printMapError(error);
    QMap<QString, QStringList> answered;
    for (int i = 0; i < systems->count(); ++i) {
        const Variable *key = systems->keyAt(i);
        if (!isTextLike(key->getType())) {
            ASLOG(this, MsgLoggerEnums::Error,
                  QStringLiteral("Map key is not TextVar, but rather ") + Variable::getTypeName(key->getType()));
            return false;
        }
        const QString system = elementText(key);
        // A key of another scalar type is looked up under its printed form.
        MappingVar printedKey;
        const MappingVar *lookIn = systems;
        if (!key->isA(TEXT_VAR)) {
            printedKey.setAt(TextVar(system), *systems->valueAt(i));
            lookIn = &printedKey;
        }
        const DynVar *values = converter::getMapValue<DynVar>(this, *lookIn, TextVar(system), DYN_VAR, error);
        if (!values)
            return printMapError(error);
        QStringList texts;
        texts.reserve(values->count());
        for (int v = 0; v < values->count(); ++v)
            texts.append(elementText(values->at(v)));
        answered.insert(system, texts);
    }
    for (auto it = answered.begin(); it != answered.end(); ++it)
        m_systemMap.insert(it.key(), it.value());
    return true;
}

bool FilterCompletions::printMapError(const QString &error) const
{
    ASLOG(this, MsgLoggerEnums::Error,
          QStringLiteral("mapping returned by ") + m_function + QStringLiteral(" for alarm property ") +
              m_property + QStringLiteral(": ") + error);
    return false;
}
