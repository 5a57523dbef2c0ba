#include "JsonFieldReader.h"

#include "Constants.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonValue>

#include <cmath>
#include <limits>

JsonFieldReader::JsonFieldReader(const QJsonObject &object, const QString &path, QString &error)
    : m_object(object), m_path(path), m_error(error)
{
}

QString JsonFieldReader::fieldPath(const QString &key) const
{
    return m_path.isEmpty() ? key : m_path + QLatin1Char('.') + key;
}

bool JsonFieldReader::fail(const QString &message)
{
    if (m_ok) {
        m_error = message;
        m_ok = false;
    }
    return false;
}

bool JsonFieldReader::wrongType(const QString &key, const char *expected)
{
    return fail(QStringLiteral("'%1' must be %2").arg(fieldPath(key), QLatin1String(expected)));
}

namespace {
// Looks up `key`; false (and no lookup) after an earlier failure or when absent.
bool present(bool ok, const QJsonObject &object, const QString &key, QJsonValue &value)
{
    if (!ok || !object.contains(key))
        return false;
    value = object.value(key);
    return true;
}
} // namespace

bool JsonFieldReader::readString(const QString &key, QString &out, bool required)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok && (!required || fail(QStringLiteral("'%1' is missing").arg(fieldPath(key))));
    if (!v.isString())
        return wrongType(key, "a string");
    out = v.toString();
    return true;
}

bool JsonFieldReader::readBool(const QString &key, bool &out, bool required)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok && (!required || fail(QStringLiteral("'%1' is missing").arg(fieldPath(key))));
    if (!v.isBool())
        return wrongType(key, "true or false");
    out = v.toBool();
    return true;
}

bool JsonFieldReader::readInt(const QString &key, int &out, bool required)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok && (!required || fail(QStringLiteral("'%1' is missing").arg(fieldPath(key))));
    const double d = v.toDouble();
    // The range is checked before converting: a double beyond int has no int
    // value to compare with (the conversion itself would be undefined).
    const bool inRange = d >= double(std::numeric_limits<int>::min()) && d <= double(std::numeric_limits<int>::max());
    if (!v.isDouble() || !inRange || d != std::trunc(d))
        return wrongType(key, "an integer");
    out = static_cast<int>(d);
    return true;
}

bool JsonFieldReader::readChar(const QString &key, QChar &out)
{
    QString s;
    if (!readString(key, s) || !has(key))
        return m_ok;
    if (s.size() > 1)
        return wrongType(key, "a single character or \"\"");
    out = s.isEmpty() ? QChar() : s.at(0);
    return true;
}

bool JsonFieldReader::readStringList(const QString &key, QStringList &out)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok;
    if (!v.isArray())
        return wrongType(key, "an array of strings");
    QStringList list;
    for (const QJsonValue &e : v.toArray()) {
        if (!e.isString())
            return wrongType(key, "an array of strings");
        list << e.toString();
    }
    out = list;
    return true;
}

bool JsonFieldReader::readObject(const QString &key, QJsonObject &out, bool required)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok && (!required || fail(QStringLiteral("'%1' is missing").arg(fieldPath(key))));
    if (!v.isObject())
        return wrongType(key, "an object");
    out = v.toObject();
    return true;
}

bool JsonFieldReader::readArray(const QString &key, QJsonArray &out, bool required)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok && (!required || fail(QStringLiteral("'%1' is missing").arg(fieldPath(key))));
    if (!v.isArray())
        return wrongType(key, "an array");
    out = v.toArray();
    return true;
}

bool JsonFieldReader::readStringListMap(const QString &key, QMap<QString, QStringList> &out)
{
    QJsonObject object;
    if (!readObject(key, object) || !has(key))
        return m_ok;
    QMap<QString, QStringList> map;
    JsonFieldReader inner(object, fieldPath(key), m_error);
    for (auto it = object.begin(); it != object.end(); ++it) {
        QStringList list;
        if (!inner.readStringList(it.key(), list))
            return fail(m_error);
        map.insert(it.key(), list);
    }
    out = map;
    return true;
}

bool JsonFieldReader::readVariant(const QString &key, QVariant &out)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok;
    QString typeName;
    if (!readString(key + QStringLiteral("Type"), typeName))
        return false;
    QVariant value = v.toVariant();
    if (typeName.isEmpty() || v.isNull()) {
        out = typeName.isEmpty() && !v.isNull() ? value : QVariant();
        return true;
    }
    const int type = QMetaType::type(typeName.toLatin1().constData());
    if (type == QMetaType::UnknownType)
        return fail(QStringLiteral("'%1' names an unknown type '%2'")
                        .arg(fieldPath(key + QStringLiteral("Type")), typeName));
    if (type == QMetaType::QDateTime) {
        value = QDateTime::fromString(v.toString(), Qt::ISODateWithMs);
        if (!value.toDateTime().isValid())
            return wrongType(key, "a date and time in ISO 8601 form");
    } else if (!value.convert(type)) {
        return fail(QStringLiteral("'%1' cannot be read as %2").arg(fieldPath(key), typeName));
    }
    out = value;
    return true;
}

void JsonFieldReader::writeVariant(QJsonObject &object, const QString &key, const QVariant &value)
{
    if (!value.isValid()) {
        object.insert(key, QJsonValue::Null);
        return;
    }
    object.insert(key + QStringLiteral("Type"), QString::fromLatin1(value.typeName()));
    if (value.userType() == QMetaType::QDateTime)
        object.insert(key, value.toDateTime().toString(Qt::ISODateWithMs));
    else
        object.insert(key, QJsonValue::fromVariant(value));
}

bool JsonFieldReader::checkKnownKeys(const QStringList &known)
{
    if (!m_ok)
        return false;
    for (auto it = m_object.begin(); it != m_object.end(); ++it) {
        if (!known.contains(it.key()))
            return fail(QStringLiteral("unknown key '%1' (expected one of: %2)")
                            .arg(fieldPath(it.key()), known.join(QStringLiteral(", "))));
    }
    return true;
}

bool JsonFieldReader::readValueSourceCode(const QString &key, int &out)
{
    QJsonValue v;
    if (!present(m_ok, m_object, key, v))
        return m_ok;
    Constants::ValueSource named = Constants::ValueSourceAlarm;
    if (v.isString() && Constants::valueSourceFromKey(v.toString(), named))
        out = named;
    else if (v.isDouble() && v.toDouble() == v.toInt())
        out = v.toInt();
    else
        return wrongType(key, "a value source name (Alarm, DpConfig, Derived) or an integer");
    return true;
}

QJsonValue JsonFieldReader::valueSourceCodeToJson(int code)
{
    const QString key = Constants::valueSourceKey(Constants::ValueSource(code));
    return key.isEmpty() ? QJsonValue(code) : QJsonValue(key);
}

bool JsonFieldReader::parseObject(const QByteArray &text, QJsonObject &object, QString &error)
{
    QJsonParseError parseError;
    const QJsonDocument doc = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        // The line makes the fault findable in a hand-edited file.
        const int line = text.left(parseError.offset).count('\n') + 1;
        error = QStringLiteral("malformed JSON at line %1 (offset %2): %3")
                    .arg(line)
                    .arg(parseError.offset)
                    .arg(parseError.errorString());
        return false;
    }
    if (!doc.isObject()) {
        error = QStringLiteral("the JSON text is not an object");
        return false;
    }
    object = doc.object();
    return true;
}
