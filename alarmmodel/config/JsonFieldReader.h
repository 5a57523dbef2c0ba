#pragma once

#include "alarmmodel_export.h"

#include <QChar>
#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

// Reads typed fields of one JSON object for the configuration and filter
// readers, collecting the first error with the field's path
// ("filterWidget.noPanel must be a boolean").
//
// Every read leaves its target untouched when the field is absent (optional
// fields keep their defaults) or when an earlier read failed, so a reader can
// chain reads and check `ok()` once at the end.
class ALARMMODEL_EXPORT JsonFieldReader
{
public:
    // `path` names the object in messages ("" for the top level).
    JsonFieldReader(const QJsonObject &object, const QString &path, QString &error);

    // Parses a JSON text whose top level must be an object; on failure `error`
    // gives the line and offset of the fault.
    static bool parseObject(const QByteArray &text, QJsonObject &object, QString &error);

    bool ok() const { return m_ok; }
    bool has(const QString &key) const { return m_object.contains(key); }
    // The path of a field of this object, as used in messages.
    QString fieldPath(const QString &key) const;
    // Records an error (if none is recorded yet); always returns false.
    bool fail(const QString &message);

    bool readString(const QString &key, QString &out, bool required = false);
    bool readBool(const QString &key, bool &out, bool required = false);
    bool readInt(const QString &key, int &out, bool required = false);
    // A string of at most one character; "" gives a null QChar.
    bool readChar(const QString &key, QChar &out);
    bool readStringList(const QString &key, QStringList &out);
    bool readObject(const QString &key, QJsonObject &out, bool required = false);
    bool readArray(const QString &key, QJsonArray &out, bool required = false);
    // An object whose values are all arrays of strings.
    bool readStringListMap(const QString &key, QMap<QString, QStringList> &out);
    // A value source: its name ("Alarm") or its code as an integer.
    bool readValueSourceCode(const QString &key, int &out);
    // The name of a known source code, else the code itself.
    static QJsonValue valueSourceCodeToJson(int code);
    // A variant stored with its type kept: `key` holds the value, `key`+"Type"
    // the type name ("int", "QString", "QDateTime"...). See writeVariant.
    bool readVariant(const QString &key, QVariant &out);
    static void writeVariant(QJsonObject &object, const QString &key, const QVariant &value);
    // Fails when the object has a key not in `known`: a misspelt key in a
    // hand-written file is reported instead of being silently ignored.
    bool checkKnownKeys(const QStringList &known);

private:
    bool wrongType(const QString &key, const char *expected);

    QJsonObject m_object;
    QString m_path;
    QString &m_error;
    bool m_ok = true;
};
