#pragma once

#include "Constants.h"
#include "WildcardConfig.h"
#include "alarmmodel_export.h"

#include <QJsonObject>
#include <QSharedPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

// The filter of one alarm property: which property (its column id, here the
// value id), from which value source, and what its values must look like.
// The kinds below derive from it; filters are held by QSharedPointer<ValueFilter>
// and told apart by getKind() (or dynamic_cast).
//
// A filter that `isEmpty()` restricts nothing: rule sets ignore it.
//
// Some editor widgets derive from a kind (the widget is the filter it edits), so
// the accessors here avoid names of QWidget and keep their data private, under
// names of their own: name lookup ignores access, and the widget base's
// protected `m_wildcardConfig` must stay unambiguous in such an editor.
class ALARMMODEL_EXPORT ValueFilter
{
public:
    enum Kind : int {
        StringPatternKind = 0,
        TextKind = 1,
        NumbersKind = 2,
        DateKind = 3,
        SingleValueKind = 4,
        FixedKind = 5,
        FixedMultiKind = 6
    };

    ValueFilter(const WildcardConfig &config, const QString &valueId, Constants::ValueSource source,
                bool matchCase);
    ValueFilter(const ValueFilter &other) = default;
    ValueFilter &operator=(const ValueFilter &other) = default;
    virtual ~ValueFilter();

    virtual Kind getKind() const = 0;
    // A new filter of the same kind with the same content (never a widget, even
    // when called on an editor that derives from a kind).
    virtual QSharedPointer<ValueFilter> clone() const = 0;

    const QString &getValueId() const { return m_valueId; }
    Constants::ValueSource getSource() const { return m_source; }
    const WildcardConfig &getWildcardConfig() const { return m_filterWildcards; }
    void setWildcardConfig(const WildcardConfig &config);

    bool isMatchCase() const { return m_matchCase; }
    // Kinds that compile patterns recompile them.
    virtual void setMatchCase(bool matchCase);

    virtual bool isEmpty() const = 0;
    // A readable description for messages and tool tips, e.g.
    // "message (source 0): pattern 'a*;!ab'".
    QString toString() const;
    // The kind-specific part of toString().
    virtual QString describeContent() const = 0;

    // Whether one value of the property passes this filter (an empty filter
    // passes everything).
    virtual bool matches(const QVariant &value) const = 0;
    // The same answer for a value at hand unboxed: kinds that look at texts or
    // numbers override these to skip the QVariant.
    virtual bool matchesText(const QString &text) const { return matches(QVariant(text)); }
    virtual bool matchesInteger(int value) const { return matches(QVariant(value)); }
    virtual bool matchesDouble(double value) const { return matches(QVariant(value)); }

    // Same kind, property, source, case rule and content. The wildcard
    // configuration is not compared: it belongs to the screen, not to the filter.
    bool isEqual(const ValueFilter &other) const;
    bool operator==(const ValueFilter &other) const { return isEqual(other); }
    bool operator!=(const ValueFilter &other) const { return !isEqual(other); }

    // The JSON form: {"kind": "...", "valueId": "...", "source": "Alarm", "matchCase": b,
    // ...kind-specific fields}. See docs/filters.md.
    QJsonObject toJson() const;
    // Builds a filter of any kind from its JSON form; null with `error` set when
    // the object is malformed (an unknown kind, a bad regular expression, a number
    // rule that does not parse...).
    static QSharedPointer<ValueFilter> fromJson(const QJsonObject &object, const WildcardConfig &config,
                                                const QString &path, QString &error);

    // Value equality as filters use it: texts by `cs`, other values by value
    // (5 equals 5.0); two invalid values are equal.
    static bool valuesEqual(const QVariant &a, const QVariant &b, Qt::CaseSensitivity cs);

    static QString kindKey(Kind kind);
    static bool kindFromKey(const QString &key, Kind &kind);

protected:
    virtual bool isContentEqual(const ValueFilter &other) const = 0;
    virtual void writeContent(QJsonObject &object) const = 0;
    // Reads the kind-specific fields; on failure sets `error` and may leave the
    // filter half-filled (fromJson then drops it).
    virtual bool readContent(const QJsonObject &object, const QString &path, QString &error) = 0;
    // The keys of the common part, for the kinds' known-key checks.
    static QStringList commonKeys();

private:
    WildcardConfig m_filterWildcards;
    QString m_valueId;
    Constants::ValueSource m_source;
    bool m_matchCase;
};
