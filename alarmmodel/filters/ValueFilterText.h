#pragma once

#include "TextMatcher.h"
#include "ValueFilter.h"
#include "ValueFilterTextItem.h"
#include "alarmmodel_export.h"

#include <QList>
#include <QVector>

// A text filter made of rules (ValueFilterTextItem), each an exact text, a
// wildcard pattern or a regular expression, including or excluding.
//
// Exact texts and wildcard patterns must match the whole value; a regular
// expression matches anywhere unless it anchors itself with ^ and $.
// A value passes when it matches at least one including rule (or there is
// none) and no excluding rule. A regular expression that the expression engine
// gives up on for a value hides nothing: it counts as matching when including
// and as not matching when excluding, and the first such case is logged.
class ALARMMODEL_EXPORT ValueFilterText : public ValueFilter
{
public:
    ValueFilterText(const WildcardConfig &config, const QString &valueId, Constants::ValueSource source,
                    bool matchCase);
    ValueFilterText(const ValueFilterText &other) = default;
    ValueFilterText &operator=(const ValueFilterText &other) = default;
    ~ValueFilterText() override;

    Kind getKind() const override { return TextKind; }
    QSharedPointer<ValueFilter> clone() const override;

    // Adds one rule. Refuses (false, `error` set when given, nothing added) an
    // empty text, an unknown method or an invalid regular expression.
    bool addItem(const QString &text, int method, bool exclude, QString *error = nullptr);
    bool addItem(const ValueFilterTextItem &item, QString *error = nullptr);
    const QList<ValueFilterTextItem> &getItems() const { return m_items; }
    void clearItems();

    void setMatchCase(bool matchCase) override;
    bool isEmpty() const override { return m_items.isEmpty(); }
    QString describeContent() const override;
    bool matches(const QVariant &value) const override;

protected:
    bool isContentEqual(const ValueFilter &other) const override;
    void writeContent(QJsonObject &object) const override;
    bool readContent(const QJsonObject &object, const QString &path, QString &error) override;

private:
    static bool compileItem(const ValueFilterTextItem &item, bool matchCase, TextMatcher &matcher,
                            QString *error);
    // The answer of rule `index`, an undecided one taken as hiding nothing.
    bool ruleMatches(int index, const QString &text) const;

    QList<ValueFilterTextItem> m_items;
    QVector<TextMatcher> m_matchers; // parallel to m_items
    mutable bool m_undecidedLogged = false;
};
