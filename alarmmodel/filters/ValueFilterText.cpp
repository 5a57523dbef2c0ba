#include "ValueFilterText.h"

#include "JsonFieldReader.h"

#include <QCoreApplication>

ValueFilterText::ValueFilterText(const WildcardConfig &config, const QString &valueId,
                                 Constants::ValueSource source, bool matchCase)
    : ValueFilter(config, valueId, source, matchCase)
{
}

ValueFilterText::~ValueFilterText() = default;

QSharedPointer<ValueFilter> ValueFilterText::clone() const
{
    return QSharedPointer<ValueFilter>(new ValueFilterText(*this));
}

bool ValueFilterText::compileItem(const ValueFilterTextItem &item, bool matchCase, TextMatcher &matcher,
                                  QString *error)
{
    if (item.getText().isEmpty()) {
        if (error)
            *error = QCoreApplication::translate("ValueFilterText", "empty pattern");
        return false;
    }
    if (item.getMethod() < ValueFilterTextItem::MethodExact ||
        item.getMethod() > ValueFilterTextItem::MethodRegularExpression) {
        if (error)
            *error = QCoreApplication::translate("ValueFilterText", "unknown match method %1").arg(item.getMethod());
        return false;
    }
    const auto method = TextMatcher::Method(item.getMethod());
    // Regular expressions search the value; texts and wildcards cover all of it.
    return matcher.setPattern(item.getText(), method, matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive,
                              method != TextMatcher::RegularExpression, error);
}

bool ValueFilterText::addItem(const QString &text, int method, bool exclude, QString *error)
{
    return addItem(ValueFilterTextItem(text, method, exclude), error);
}

bool ValueFilterText::addItem(const ValueFilterTextItem &item, QString *error)
{
    TextMatcher matcher;
    if (!compileItem(item, isMatchCase(), matcher, error))
        return false;
    m_items << item;
    m_matchers << matcher;
    return true;
}

void ValueFilterText::clearItems()
{
    m_items.clear();
    m_matchers.clear();
}

void ValueFilterText::setMatchCase(bool matchCase)
{
    if (matchCase == isMatchCase())
        return;
    ValueFilter::setMatchCase(matchCase);
    for (int i = 0; i < m_items.size(); ++i)
        compileItem(m_items.at(i), matchCase, m_matchers[i], nullptr); // valid once, valid always
}

QString ValueFilterText::describeContent() const
{
    static const char *const methodNames[] = {"exact", "wildcard", "regexp"};
    QStringList rules;
    for (const ValueFilterTextItem &item : m_items)
        rules << QStringLiteral("%1%2 '%3'")
                     .arg(item.isExclude() ? QStringLiteral("not ") : QString(),
                          QLatin1String(methodNames[item.getMethod()]), item.getText());
    return QStringLiteral("text rules [%1]").arg(rules.join(QStringLiteral(", ")));
}

bool ValueFilterText::ruleMatches(int index, const QString &text) const
{
    const ValueFilterTextItem &item = m_items.at(index);
    const TextMatcher::Answer answer = m_matchers.at(index).answer(text);
    if (answer != TextMatcher::Undecided)
        return answer == TextMatcher::Match;
    if (!m_undecidedLogged) {
        m_undecidedLogged = true;
        ASLOG(&getWildcardConfig(), MsgLoggerEnums::Warning,
              QStringLiteral("%1: the regular expression '%2' backtracks beyond the expression engine's limits on "
                             "a value of %3 characters; the rule hides nothing")
                  .arg(getValueId(), item.getText(), QString::number(text.size())));
    }
    return !item.isExclude();
}

bool ValueFilterText::matches(const QVariant &value) const
{
    const QString text = value.toString();
    bool hasInclude = false;
    bool included = false;
    for (int i = 0; i < m_items.size(); ++i) {
        if (m_items.at(i).isExclude()) {
            if (ruleMatches(i, text))
                return false;
        } else if (!included) {
            hasInclude = true;
            included = ruleMatches(i, text);
        }
    }
    return included || !hasInclude;
}

bool ValueFilterText::isContentEqual(const ValueFilter &other) const
{
    return m_items == static_cast<const ValueFilterText &>(other).m_items;
}

void ValueFilterText::writeContent(QJsonObject &object) const
{
    QJsonArray items;
    for (const ValueFilterTextItem &item : m_items)
        items << item.toJson();
    object.insert(QStringLiteral("items"), items);
}

bool ValueFilterText::readContent(const QJsonObject &object, const QString &path, QString &error)
{
    JsonFieldReader r(object, path, error);
    QJsonArray array;
    r.checkKnownKeys(commonKeys() << QStringLiteral("items"));
    if (!r.readArray(QStringLiteral("items"), array, true))
        return false;
    clearItems();
    for (int i = 0; i < array.size(); ++i) {
        const QString itemPath = r.fieldPath(QStringLiteral("items[%1]").arg(i));
        if (!array.at(i).isObject()) {
            error = QStringLiteral("'%1' must be an object").arg(itemPath);
            return false;
        }
        ValueFilterTextItem item;
        if (!ValueFilterTextItem::fromJson(array.at(i).toObject(), itemPath, item, error))
            return false;
        QString why;
        if (!addItem(item, &why)) {
            error = QStringLiteral("'%1': %2").arg(itemPath, why);
            return false;
        }
    }
    return true;
}
