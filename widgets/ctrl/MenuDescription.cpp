#include "MenuDescription.h"

#include "IntegerVar.h"
#include "MappingVar.h"
#include "TextVar.h"
#include "converter.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace {
const QString TypeKey = QStringLiteral("type");
const QString LabelKey = QStringLiteral("label");
const QString EnabledKey = QStringLiteral("enabled");
const QString CheckedKey = QStringLiteral("checked");
const QString ValueKey = QStringLiteral("value");
const QString ItemsKey = QStringLiteral("items");

// A JSON value as the script author wrote it, for messages.
QString jsonText(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Array:
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    case QJsonValue::Object:
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    default:
        return QStringLiteral("null");
    }
}

// The integer part, kept inside the range of the value field.
int truncated(double value)
{
    const double part = std::trunc(value);
    if (!(part > std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (!(part < std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return static_cast<int>(part);
}
} // namespace

MenuDescription::MenuDescription(const MsgLoggingProducer *logger, const QString &function,
                                 const Variable *result)
    : MsgLoggingProducer(logger)
{
    if (!result) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("No return value from CTRL function ") + function);
        return;
    }
    if (!result->isA(MAPPING_VAR)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("The value returned by CTRL function ") + function + QStringLiteral(" is ") +
                  Variable::getTypeName(result->getType()) + QStringLiteral(", expected type is ") +
                  Variable::getTypeName(MAPPING_VAR));
        return;
    }
    const auto &map = *static_cast<const MappingVar *>(result);
    if (parseMenuPos(map, function) && parseMenu(map, function))
        m_valid = true;
}

MenuDescription::MenuDescription(const MenuDescription *parent, const QJsonValue &item)
    : MsgLoggingProducer(parent), m_parent(parent)
{
    if (!item.isObject()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("The item is not oject for ") + parentHierarchy());
        return;
    }
    const QJsonObject object = item.toObject();
    if (parseType(object) && parseCommon(object))
        m_valid = parseForType(object);
}

MenuDescription::~MenuDescription() = default;

QString MenuDescription::toString() const
{
    switch (m_type) {
    case Root:
        return QStringLiteral("root");
    case Label:
        return QStringLiteral("label(%1)").arg(m_label);
    case Separator:
        return QStringLiteral("separator");
    case Push:
        return QStringLiteral("push(%1)").arg(m_label);
    case Check:
        return QStringLiteral("check(%1)").arg(m_label);
    case Cascade:
        return QStringLiteral("cascade(%1)").arg(m_label);
    }
    return QString();
}

QString MenuDescription::parentHierarchy() const
{
    QString hierarchy;
    for (const MenuDescription *node = m_parent; node; node = node->m_parent)
        hierarchy.prepend(node->toString() + QStringLiteral(" - "));
    return hierarchy;
}

template <class ResultClass>
const ResultClass *MenuDescription::getMapValue(const MappingVar &map, const TextVar &key, VariableType expected,
                                                bool required, const QString &function) const
{
    if (!map.getAt(key)) {
        if (required) {
            ASLOG(this, MsgLoggerEnums::Error,
                  QStringLiteral("mapping returned by ") + function + QStringLiteral(" doesn't contain key '") +
                      key.getValue());
        }
        return nullptr;
    }
    QString error;
    const ResultClass *value = converter::getMapValue<ResultClass>(this, map, key, expected, error);
    if (!value) {
        const Variable *found = map.getAt(key);
        if (found->isA(MIXED_VAR))
            found = static_cast<const MixedVar *>(found)->getValue();
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("value for '") + key.getValue() + QStringLiteral("' key in mapping returned by ") +
                  function + QStringLiteral(" has a type ") +
                  Variable::getTypeName(found ? found->getType() : NO_VAR) + QStringLiteral(", expected ") +
                  Variable::getTypeName(expected));
    }
    return value;
}

bool MenuDescription::parseMenuPos(const MappingVar &map, const QString &function)
{
    const IntegerVar *x = getMapValue<IntegerVar>(map, TextVar(QStringLiteral("menuX")), INTEGER_VAR, true, function);
    if (!x)
        return false;
    const IntegerVar *y = getMapValue<IntegerVar>(map, TextVar(QStringLiteral("menuY")), INTEGER_VAR, true, function);
    if (!y)
        return false;
    m_menuX = x->getValue();
    m_menuY = y->getValue();
    return true;
}

bool MenuDescription::parseMenu(const MappingVar &map, const QString &function)
{
    const TextVar *menu = getMapValue<TextVar>(map, TextVar(QStringLiteral("menu")), TEXT_VAR, true, function);
    if (!menu)
        return false;
    if (!menu->isValid()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("The menu description returned by ") + function + QStringLiteral(" is not valid text"));
        return false;
    }
    ASLOG(this, MsgLoggerEnums::Trace, menu->getValue());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(menu->getValue().toUtf8(), &error);
    if (error.error != QJsonParseError::NoError) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Failed to parse menu description returned by ") + function + QStringLiteral(": ") +
                  error.errorString());
        return false;
    }
    if (!document.isArray()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("the root of menu description, returned by ") + function +
                  QStringLiteral(", is not array"));
        return false;
    }
    for (const QJsonValue &item : document.array()) {
        auto child = QSharedPointer<MenuDescription>::create(this, item);
        if (child->isValid())
            m_items.append(child);
    }
    if (m_items.isEmpty()) {
        ASLOG(this, MsgLoggerEnums::Error, QStringLiteral("Empty menu returned by ") + function);
        return false;
    }
    return true;
}

bool MenuDescription::parseType(const QJsonObject &item)
{
    QString type;
    if (!getStringValue(item, TypeKey, type))
        return false;
    if (type == QLatin1String("label")) {
        m_type = Label;
    } else if (type == QLatin1String("separator")) {
        m_type = Separator;
    } else if (type == QLatin1String("push")) {
        m_type = Push;
    } else if (type == QLatin1String("check")) {
        m_type = Check;
    } else if (type == QLatin1String("cascade")) {
        m_type = Cascade;
    } else {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("Unexpected value '") + type + QStringLiteral("' of 'type' for ") + parentHierarchy());
        return false;
    }
    return true;
}

bool MenuDescription::parseCommon(const QJsonObject &item)
{
    if (m_type == Separator)
        return true;
    if (!getStringValue(item, LabelKey, m_label))
        return false;
    if (item.contains(EnabledKey)) {
        const QJsonValue enabled = item.value(EnabledKey);
        if (!enabled.isBool()) {
            ASLOG(this, MsgLoggerEnums::Error,
                  QStringLiteral("value of '") + EnabledKey + QStringLiteral("' is not bool for ") + parentHierarchy());
            return false;
        }
        m_enabled = enabled.toBool();
    }
    return true;
}

bool MenuDescription::parseForType(const QJsonObject &item)
{
    switch (m_type) {
    case Push:
        return parseValue(item);
    case Check:
        return parseForCheckButton(item);
    case Cascade:
        return parseForCascade(item);
    default:
        return true;
    }
}

bool MenuDescription::parseValue(const QJsonObject &item)
{
    if (!item.contains(ValueKey)) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("missing '") + ValueKey + QStringLiteral("' for ") + toString() + QStringLiteral(" at ") +
                  parentHierarchy());
        return false;
    }
    const QJsonValue value = item.value(ValueKey);
    if (!value.isDouble()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("the value of '") + ValueKey + QStringLiteral("' (") + jsonText(value) +
                  QStringLiteral(") is not number for ") + toString() + QStringLiteral(" at ") + parentHierarchy());
        return false;
    }
    m_value = truncated(value.toDouble());
    return true;
}

bool MenuDescription::parseForCheckButton(const QJsonObject &item)
{
    if (item.contains(CheckedKey)) {
        const QJsonValue checked = item.value(CheckedKey);
        if (!checked.isBool()) {
            ASLOG(this, MsgLoggerEnums::Error,
                  QStringLiteral("value of '") + CheckedKey + QStringLiteral("' is not bool for ") + parentHierarchy());
            return false;
        }
        m_checked = checked.toBool();
    }
    return parseValue(item);
}

bool MenuDescription::parseForCascade(const QJsonObject &item)
{
    if (!item.contains(ItemsKey))
        return true;
    const QJsonValue items = item.value(ItemsKey);
    if (!items.isArray()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("the value of '") + ItemsKey + QStringLiteral("' is not array for ") + toString() +
                  QStringLiteral(" at ") + parentHierarchy());
        return false;
    }
    bool allValid = true;
    for (const QJsonValue &child : items.toArray()) {
        auto node = QSharedPointer<MenuDescription>::create(this, child);
        allValid = allValid && node->isValid();
        m_items.append(node);
    }
    return allValid;
}

bool MenuDescription::getStringValue(const QJsonObject &item, const QString &key, QString &result) const
{
    const auto found = item.constFind(key);
    if (found == item.constEnd()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("JSON object does not contain '") + key + QStringLiteral("' for ") + parentHierarchy());
        return false;
    }
    if (!found->isString()) {
        ASLOG(this, MsgLoggerEnums::Error,
              QStringLiteral("The value of '") + key + QStringLiteral("' is not string for ") + parentHierarchy());
        return false;
    }
    result = found->toString();
    return true;
}
